#include "ui/configuration/GroupsPage.h"

#include "operations/configuration/GroupRepository.h"
#include "operations/configuration/GroupTransfer.h"
#include "operations/panels/PanelRoster.h"
#include "store/RightsCheck.h"
#include "store/Translate.h"
#include "ui/common/Caption.h"
#include "ui/common/MessageBox.h"
#include "ui/configuration/GlobalZonePicker.h"
#include "ui/configuration/GroupDetailGrid.h"
#include "ui/configuration/GroupPicker.h"
#include "ui/main/PanelWorkerBridge.h"
#include "ui/main/WindowOperator.h"

#include <QCheckBox>
#include <QDebug>
#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTableView>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
const QString kNumber = u"Grup No"_s;
const QString kName = u"Grup Adi"_s;
const QString kListEmpty = u"Geçiş grup listesi boş!"_s;
const QString kBadNumber = u"Grup numarası 1-1280 arasında sayısal bir ifade olmalıdır!"_s;

QLabel* label(QWidget* parent, const QString& name, const QString& turkish)
{
    auto* l = new QLabel(parent);
    l->setObjectName(name);
    setCaption(l, turkish);
    return l;
}

QLineEdit* field(QWidget* parent, const QString& name)
{
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(name);
    return edit;
}

QCheckBox* check(QWidget* parent, const QString& name, const QString& turkish)
{
    auto* box = new QCheckBox(parent);
    box->setObjectName(name);
    setCaption(box, turkish);
    return box;
}

// Counters that are not numbers are kept as 0; what a panel cannot take is fitted when sent.
int number(const QLineEdit* edit)
{
    return edit->text().trimmed().toInt();
}
} // namespace

GroupsPage::GroupsPage(const PageServices& services, PanelWorkerBridge& bridge, PanelRoster& roster, QWidget* parent)
    : QWidget(parent)
    , m_services(services)
    , m_bridge(bridge)
    , m_roster(roster)
{
    setObjectName(u"tabGroups"_s);

    m_model = new QStandardItemModel(0, 2, this);
    m_grid = new QTableView(this);
    m_grid->setObjectName(u"datGroupsMaster"_s);
    m_grid->setModel(m_model);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->verticalHeader()->setVisible(false);
    m_grid->horizontalHeader()->setStretchLastSection(true);
    connect(m_grid->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &GroupsPage::showCurrentRow);

    m_number = field(this, u"txtGroupNo"_s);
    m_name = field(this, u"txtGroupName"_s);
    m_accessCount = field(this, u"txtAccessCount"_s);
    m_accessCountZone = field(this, u"txtAccessCountZone"_s);
    m_insideCount = field(this, u"txtMaxInCount"_s);
    m_insideCountZone = field(this, u"txtMaxInCountZone"_s);
    m_dailyApproval = check(this, u"chkDailyApproval"_s, u"Günlük Onay Gerekli"_s);
    m_repeatBlockOff = check(this, u"chkRepeatBlockOff"_s, u"Mükerrer Engelleme Geçersiz"_s);
    m_localCapacityOff = check(this, u"chkLocalCapacityOff"_s, u"Lokal Kapasite Geçersiz"_s);
    m_clearInsideAtNight = check(this, u"chkClearInsideAtNight"_s, u"Gece İçerdeki Kişi Sayısını Sil"_s);
    m_antiPassbackOff = check(this, u"chkAntiPassbackOff"_s, u"Antipassback Geçersiz"_s);
    QPushButton* accessZone = addButton(u"cmdSelectAccessCountZone"_s, u"Seç"_s);
    QPushButton* insideZone = addButton(u"cmdSelectMaxInCountZone"_s, u"Seç"_s);
    connect(accessZone, &QPushButton::clicked, this, [this] { pickZone(m_accessCountZone); });
    connect(insideZone, &QPushButton::clicked, this, [this] { pickZone(m_insideCountZone); });

    auto* fields = new QGridLayout;
    fields->addWidget(label(this, u"lblGroupNo"_s, kNumber), 0, 0);
    fields->addWidget(m_number, 0, 1);
    fields->addWidget(label(this, u"lblGroupName"_s, kName), 0, 2);
    fields->addWidget(m_name, 0, 3, 1, 2);
    fields->addWidget(label(this, u"lblAccessCount"_s, u"Grup Geçiş Sayısı"_s), 1, 0);
    fields->addWidget(m_accessCount, 1, 1);
    fields->addWidget(label(this, u"lblAccessCountZone"_s, u"Global Bölge"_s), 1, 2);
    fields->addWidget(m_accessCountZone, 1, 3);
    fields->addWidget(accessZone, 1, 4);
    fields->addWidget(label(this, u"lblMaxInCount"_s, u"Grup İçerdeki Kişi Sayısı"_s), 2, 0);
    fields->addWidget(m_insideCount, 2, 1);
    fields->addWidget(label(this, u"lblMaxInCountZone"_s, u"Global Bölge"_s), 2, 2);
    fields->addWidget(m_insideCountZone, 2, 3);
    fields->addWidget(insideZone, 2, 4);
    auto* switches = new QGridLayout;
    switches->addWidget(m_dailyApproval, 0, 0);
    switches->addWidget(m_repeatBlockOff, 0, 1);
    switches->addWidget(m_localCapacityOff, 0, 2);
    switches->addWidget(m_clearInsideAtNight, 1, 0);
    switches->addWidget(m_antiPassbackOff, 1, 1);

    m_detail = new GroupDetailGrid(*m_services.db, this);
    m_detailTitle = new QLabel(this);
    m_detailTitle->setObjectName(u"lblGroupDetailTitle"_s);
    m_detailRow = new QLabel(this);
    m_detailRow->setObjectName(u"lblGroupDetailRow"_s);
    connect(m_detail, &GroupDetailGrid::currentDetailChanged, this, &GroupsPage::showDetailTitle);

    m_newButton = addButton(u"cmdAddNewGroup"_s, u"Yeni"_s);
    QPushButton* next = addButton(u"cmdLastGroupNo"_s, u"Sıradaki No"_s);
    QPushButton* update = addButton(u"cmdUpdateGroup"_s, u"Kaydet"_s);
    QPushButton* updateAll = addButton(u"cmdUpdateAllGroups"_s, u"Kapı Ayarlarını Kaydet"_s);
    QPushButton* remove = addButton(u"cmdDeleteGroup"_s, u"Sil"_s);
    QPushButton* search = addButton(u"cmdFindGroup"_s, u"Ara"_s);
    QPushButton* select = addButton(u"cmdSelectGroup"_s, u"Seç"_s);
    QPushButton* refresh = addButton(u"cmdRefreshGroup"_s, u"Yenile"_s);
    QPushButton* daily = addButton(u"cmdDailyPermission"_s, u"Günlük İzin"_s);
    connect(m_newButton, &QPushButton::clicked, this, &GroupsPage::toggleNewEntry);
    connect(next, &QPushButton::clicked, this, &GroupsPage::proposeNumber);
    connect(update, &QPushButton::clicked, this, &GroupsPage::store);
    connect(updateAll, &QPushButton::clicked, this, &GroupsPage::storeDetails);
    connect(remove, &QPushButton::clicked, this, &GroupsPage::remove);
    connect(search, &QPushButton::clicked, this, &GroupsPage::find);
    connect(select, &QPushButton::clicked, this, &GroupsPage::selectGroupNumber);
    connect(refresh, &QPushButton::clicked, this, &GroupsPage::refresh);
    connect(daily, &QPushButton::clicked, this, &GroupsPage::requestDailyPermission);

    QPushButton* sendSelected = addButton(u"cmdSendZoneSelectedPanel"_s, u"Seçilen Panele Gönder"_s);
    QPushButton* sendAll = addButton(u"cmdSendTimeZoneAllPanels"_s, u"Tüm Panellere Gönder"_s);
    QPushButton* erase = addButton(u"cmdEraseAllGroups"_s, u"Grup Hafızasını Sil"_s);
    m_bridge.runOnClick(sendSelected, [](OperationContext& c) { GroupTransfer(c).send(PanelTarget::Selected); });
    m_bridge.runOnClick(sendAll, [](OperationContext& c) { GroupTransfer(c).send(PanelTarget::All); });
    m_bridge.runOnClick(erase, [](OperationContext& c) { GroupTransfer(c).erase(); });

    m_selectedPanel = new QLabel(this);
    m_selectedPanel->setObjectName(u"lblGroupsSelectedPanel"_s);
    connect(&m_roster, &PanelRoster::selectionChanged, this, &GroupsPage::showSelectedPanel);
    connect(&m_roster, &PanelRoster::reloaded, this, [this] {
        showSelectedPanel();
        // A panel stored elsewhere may have a new name, doors or serial in the detail rows.
        if (!m_newEntry)
            showCurrentRow();
    });

    auto* editing = new QVBoxLayout;
    for (QPushButton* b : { m_newButton, next, update, updateAll, remove, search, select, refresh, daily })
        editing->addWidget(b);
    editing->addSpacing(12);
    editing->addWidget(m_selectedPanel);
    for (QPushButton* b : { sendSelected, sendAll, erase })
        editing->addWidget(b);
    editing->addStretch();
    auto* top = new QHBoxLayout;
    top->addWidget(m_grid, 1);
    auto* master = new QVBoxLayout;
    master->addLayout(fields);
    master->addLayout(switches);
    master->addStretch();
    top->addLayout(master, 2);
    auto* main = new QVBoxLayout;
    main->addLayout(top, 2);
    main->addWidget(m_detailTitle);
    main->addWidget(m_detail, 3);
    main->addWidget(m_detailRow);
    auto* layout = new QHBoxLayout(this);
    layout->addLayout(main, 1);
    layout->addLayout(editing);

    retranslate();
    showSelectedPanel();
    reload();
}

GroupsPage* GroupsPage::install(QTabWidget* tabs, const PageServices& services, PanelWorkerBridge& bridge,
                                PanelRoster& roster)
{
    auto* page = new GroupsPage(services, bridge, roster);
    tabs->addTab(page, QString());
    setCaption(page, u"Geçiş Grupları"_s);
    return page;
}

QPushButton* GroupsPage::addButton(const QString& name, const QString& turkish)
{
    auto* button = new QPushButton(this);
    button->setObjectName(name);
    setCaption(button, turkish);
    return button;
}

void GroupsPage::reload()
{
    const int keep = m_newEntry ? 0 : currentNumber();
    QString error;
    m_rows = GroupRepository(*m_services.db).masters(&error);
    if (!error.isEmpty())
        qWarning().noquote() << "groups:" << error;
    m_model->removeRows(0, m_model->rowCount());
    for (const GroupMasterRow& row : std::as_const(m_rows)) {
        auto* number = new QStandardItem;
        number->setData(row.number, Qt::DisplayRole);
        m_model->appendRow({ number, new QStandardItem(row.name.trimmed()) });
    }
    m_grid->resizeColumnsToContents();
    if (!selectNumber(keep) && !m_rows.isEmpty())
        m_grid->setCurrentIndex(m_model->index(0, 0));
    if (m_rows.isEmpty() && !m_newEntry)
        showCurrentRow();
}

bool GroupsPage::selectNumber(int number)
{
    for (int row = 0; row < m_rows.size(); ++row) {
        if (m_rows.at(row).number == number) {
            m_grid->setCurrentIndex(m_model->index(row, 0));
            showCurrentRow();
            return true;
        }
    }
    return false;
}

int GroupsPage::currentGridRow() const
{
    const QModelIndex at = m_grid->currentIndex();
    return at.isValid() && at.row() < m_rows.size() ? at.row() : -1;
}

int GroupsPage::currentNumber() const
{
    const int row = currentGridRow();
    return row >= 0 ? m_rows.at(row).number : 0;
}

void GroupsPage::showCurrentRow()
{
    // While a new group is entered the fields and the detail grid belong to it.
    if (m_newEntry)
        return;
    const int row = currentGridRow();
    showMaster(row >= 0 ? m_rows.at(row) : GroupMasterRow());
    QString error;
    m_detail->setRows(row >= 0 ? GroupRepository(*m_services.db).details(m_rows.at(row).number, &error)
                               : QList<GroupDetailRow>());
    if (!error.isEmpty())
        qWarning().noquote() << "group details:" << error;
}

void GroupsPage::showMaster(const GroupMasterRow& row)
{
    m_number->setText(row.number > 0 ? QString::number(row.number) : QString());
    m_name->setText(row.name.trimmed());
    m_accessCount->setText(QString::number(row.accessCount));
    m_accessCountZone->setText(QString::number(row.accessCountZone));
    m_insideCount->setText(QString::number(row.insideCount));
    m_insideCountZone->setText(QString::number(row.insideCountZone));
    m_dailyApproval->setChecked(row.dailyApprovalRequired);
    m_repeatBlockOff->setChecked(row.repeatedAccessBlockOff);
    m_localCapacityOff->setChecked(row.localCapacityOff);
    m_clearInsideAtNight->setChecked(row.clearInsideCountAtNight);
    m_antiPassbackOff->setChecked(row.antiPassbackOff);
    showDetailTitle();
}

void GroupsPage::showDetailTitle()
{
    const QString name = m_name->text().trimmed();
    m_detailTitle->setText(u"\""_s + name + u"\" "_s + Translate(u"Geçiş Grubu İçin Kapı ve Geçiş Ayarları"_s));
    const GroupDetailRow* detail = m_detail->currentDetail();
    if (!detail) {
        m_detailRow->clear();
        return;
    }
    QStringList doors;
    for (int door = 0; door < 4; ++door)
        doors << GroupDetailGrid::doorName(*detail, door);
    m_detailRow->setText(Translate(u"Grup"_s) + u": \""_s + name + u"\", "_s + Translate(u"Panel:"_s) + u' '
                         + QString::number(detail->panelNo) + u" ("_s + doors.join(u", "_s) + u')');
}

GroupMasterRow GroupsPage::typedMaster(bool* numberOk) const
{
    GroupMasterRow row;
    if (m_newEntry) {
        row.number = m_number->text().trimmed().toInt(numberOk);
    } else {
        row.number = currentNumber();
        *numberOk = true;
    }
    // The counting period is not on the page; it stays as stored.
    if (const int at = currentGridRow(); !m_newEntry && at >= 0)
        row.countPeriod = m_rows.at(at).countPeriod;
    row.name = m_name->text();
    row.accessCount = number(m_accessCount);
    row.accessCountZone = number(m_accessCountZone);
    row.insideCount = number(m_insideCount);
    row.insideCountZone = number(m_insideCountZone);
    row.dailyApprovalRequired = m_dailyApproval->isChecked();
    row.repeatedAccessBlockOff = m_repeatBlockOff->isChecked();
    row.localCapacityOff = m_localCapacityOff->isChecked();
    row.clearInsideCountAtNight = m_clearInsideAtNight->isChecked();
    row.antiPassbackOff = m_antiPassbackOff->isChecked();
    return row;
}

void GroupsPage::setNewEntry(bool on)
{
    m_newEntry = on;
    setCaption(m_newButton, on ? u"Vazgeç"_s : u"Yeni"_s);
    // The number is the key of a stored group; only a new one takes a typed number.
    m_number->setReadOnly(!on);
    if (on) {
        GroupMasterRow fresh;
        showMaster(fresh);
        QString error;
        m_detail->setRows(GroupRepository(*m_services.db).freshDetails(&error));
        m_number->setFocus();
    } else {
        showCurrentRow();
    }
}

void GroupsPage::toggleNewEntry()
{
    if (!checkAdministratorRights(*m_services.session, *m_services.op))
        return;
    setNewEntry(!m_newEntry);
}

void GroupsPage::proposeNumber()
{
    const GroupRepository::Result next = GroupRepository(*m_services.db).nextNumber();
    if (!next.ok) {
        MessageBox::warning(this, next.message);
        return;
    }
    if (!m_newEntry)
        setNewEntry(true);
    m_number->setText(QString::number(next.number));
}

bool GroupsPage::store()
{
    if (!m_newEntry && currentGridRow() < 0) {
        MessageBox::warning(this, Message(kListEmpty));
        return false;
    }
    if (!checkAdministratorRights(*m_services.session, *m_services.op))
        return false;
    bool numberOk = false;
    const GroupMasterRow row = typedMaster(&numberOk);
    if (!numberOk || !GroupRepository::inRange(row.number)) {
        MessageBox::warning(this, Message(kBadNumber));
        return false;
    }
    const GroupRepository repository(*m_services.db);
    const QList<GroupDetailRow> details = m_detail->rows();
    const GroupRepository::Result result = m_newEntry ? repository.add(row, details) : repository.update(row, details);
    if (!result.ok) {
        if (!result.error.isEmpty())
            qWarning().noquote() << "group" << row.number << result.error;
        MessageBox::warning(this, result.message);
        return false;
    }
    setNewEntry(false);
    reload();
    selectNumber(row.number);
    Q_EMIT groupsChanged();
    return true;
}

bool GroupsPage::storeDetails()
{
    if (m_newEntry)
        return store();
    if (currentGridRow() < 0) {
        MessageBox::warning(this, Message(kListEmpty));
        return false;
    }
    if (!checkAdministratorRights(*m_services.session, *m_services.op))
        return false;
    const GroupRepository::Result result = GroupRepository(*m_services.db).storeDetails(m_detail->rows());
    if (!result.ok) {
        if (!result.error.isEmpty())
            qWarning().noquote() << "group details:" << result.error;
        MessageBox::warning(this, result.message);
        return false;
    }
    showCurrentRow();
    return true;
}

void GroupsPage::remove()
{
    if (m_newEntry) {
        // Nothing stored yet: the entry is given up.
        setNewEntry(false);
        return;
    }
    const int number = currentNumber();
    if (number == 0) {
        MessageBox::warning(this, Message(kListEmpty));
        return;
    }
    if (!checkAdministratorRights(*m_services.session, *m_services.op))
        return;
    if (MessageBox::question(this, GroupRepository::deleteQuestion()) != QMessageBox::Yes)
        return;
    const GroupRepository::Result result = GroupRepository(*m_services.db).remove(number);
    if (!result.ok) {
        if (!result.error.isEmpty())
            qWarning().noquote() << "group" << number << result.error;
        MessageBox::warning(this, result.message);
    }
    reload();
    Q_EMIT groupsChanged();
}

void GroupsPage::find()
{
    const std::optional<GroupRepository::Row> chosen
        = pickGroup(this, *m_services.db, m_newEntry ? 0 : currentNumber());
    if (!chosen)
        return;
    if (m_newEntry)
        setNewEntry(false);
    selectNumber(chosen->number);
}

void GroupsPage::selectGroupNumber()
{
    const std::optional<GroupRepository::Row> chosen = pickGroup(this, *m_services.db, currentNumber());
    if (chosen)
        m_number->setText(QString::number(chosen->number));
}

void GroupsPage::refresh()
{
    if (m_newEntry)
        setNewEntry(false);
    reload();
    showCurrentRow();
}

void GroupsPage::requestDailyPermission()
{
    const int number = m_newEntry ? 0 : currentNumber();
    if (number == 0) {
        MessageBox::warning(this, Message(kListEmpty));
        return;
    }
    Q_EMIT dailyPermissionRequested(number);
}

void GroupsPage::pickZone(QLineEdit* field)
{
    const std::optional<ZoneRepository::Row> chosen = pickGlobalZone(this, *m_services.db, number(field));
    if (chosen)
        field->setText(QString::number(chosen->number));
}

void GroupsPage::showSelectedPanel()
{
    const std::optional<PanelEntry> entry = m_roster.selectedEntry();
    const QString panel = entry ? QString::number(entry->panelNumber) + u" - "_s + entry->name.trimmed() : u"-"_s;
    setCaption(m_selectedPanel, u"Seçilen Panel"_s, u": "_s + panel);
}

void GroupsPage::retranslate()
{
    m_model->setHorizontalHeaderLabels({ Translate(kNumber), Translate(kName) });
    m_grid->resizeColumnsToContents();
    m_detail->retranslate();
    showDetailTitle();
}

void GroupsPage::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QWidget::changeEvent(event);
}
