#include "ui/configuration/TimeGroupsPage.h"

#include "operations/configuration/TimeGroupRepository.h"
#include "operations/configuration/TimeGroupTransfer.h"
#include "operations/panels/PanelRoster.h"
#include "store/Clock.h"
#include "store/CodeTable.h"
#include "store/RightsCheck.h"
#include "store/Translate.h"
#include "ui/common/Caption.h"
#include "ui/common/MessageBox.h"
#include "ui/configuration/TimeGroupPicker.h"
#include "ui/configuration/frmTimeGroupSettings.h"
#include "ui/main/PanelWorkerBridge.h"
#include "ui/main/WindowOperator.h"

#include <QComboBox>
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
const QString kNumber = u"Zaman Grup No"_s;
const QString kName = u"Zaman Grup Adi"_s;
const QString kType = u"Geçiş Sınırlama Tipi"_s;
const QString kListEmpty = u"Zaman grup listesi boş!"_s;

QLabel* label(QWidget* parent, const QString& name, const QString& turkish)
{
    auto* l = new QLabel(parent);
    l->setObjectName(name);
    setCaption(l, turkish);
    return l;
}
} // namespace

TimeGroupsPage::TimeGroupsPage(const PageServices& services, PanelWorkerBridge& bridge, PanelRoster& roster,
                               QWidget* parent)
    : QWidget(parent)
    , m_services(services)
    , m_bridge(bridge)
    , m_roster(roster)
{
    setObjectName(u"tabTimeGroups"_s);

    m_model = new QStandardItemModel(0, 3, this);
    m_grid = new QTableView(this);
    m_grid->setObjectName(u"datTimeGroups"_s);
    m_grid->setModel(m_model);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->verticalHeader()->setVisible(false);
    m_grid->horizontalHeader()->setStretchLastSection(true);
    connect(m_grid->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &TimeGroupsPage::showCurrentRow);

    m_number = new QLineEdit(this);
    m_number->setObjectName(u"txtTimeGroupNo"_s);
    m_name = new QLineEdit(this);
    m_name->setObjectName(u"txtTimeGroupName"_s);
    m_type = new QComboBox(this);
    m_type->setObjectName(u"cmbTimeGroupType"_s);
    auto* fields = new QGridLayout;
    fields->addWidget(label(this, u"lblTimeGroupNo"_s, kNumber), 0, 0);
    fields->addWidget(m_number, 0, 1);
    fields->addWidget(label(this, u"lblTimeGroupName"_s, kName), 1, 0);
    fields->addWidget(m_name, 1, 1);
    fields->addWidget(label(this, u"lblTimeGroupType"_s, kType), 2, 0);
    fields->addWidget(m_type, 2, 1);
    fields->setColumnStretch(1, 1);

    m_newButton = addButton(u"cmdAddNewTimeGroup"_s, u"Yeni"_s);
    QPushButton* next = addButton(u"cmdLastTimeGroup"_s, u"Sıradaki No"_s);
    QPushButton* update = addButton(u"cmdUpdateTimeGroup"_s, u"Kaydet"_s);
    QPushButton* remove = addButton(u"cmdDeleteTimeGroup"_s, u"Sil"_s);
    QPushButton* search = addButton(u"cmdFindTimeGroup"_s, u"Ara"_s);
    QPushButton* settings = addButton(u"cmdTimeGroupSettings"_s, u"Zaman Bölge Tipi Ayarları"_s);
    connect(m_newButton, &QPushButton::clicked, this, &TimeGroupsPage::toggleNewEntry);
    connect(next, &QPushButton::clicked, this, &TimeGroupsPage::proposeNumber);
    connect(update, &QPushButton::clicked, this, &TimeGroupsPage::store);
    connect(remove, &QPushButton::clicked, this, &TimeGroupsPage::remove);
    connect(search, &QPushButton::clicked, this, &TimeGroupsPage::find);
    connect(settings, &QPushButton::clicked, this, &TimeGroupsPage::openSettings);

    QPushButton* sendSelected = addButton(u"cmdSendTimeGroups"_s, u"Seçilen Panele Gönder"_s);
    QPushButton* sendAll = addButton(u"cmdSendTimeGroupsAllPanels"_s, u"Tüm Panellere Gönder"_s);
    QPushButton* erase = addButton(u"cmdEraseAllTimeGroups"_s, u"Zaman Grup Hafızasını Sil"_s);
    m_bridge.runOnClick(sendSelected, [](OperationContext& c) { TimeGroupTransfer(c).send(PanelTarget::Selected); });
    m_bridge.runOnClick(sendAll, [](OperationContext& c) { TimeGroupTransfer(c).send(PanelTarget::All); });
    m_bridge.runOnClick(erase, [](OperationContext& c) { TimeGroupTransfer(c).erase(); });

    m_selectedPanel = new QLabel(this);
    m_selectedPanel->setObjectName(u"lblSelectedPanel"_s);
    connect(&m_roster, &PanelRoster::selectionChanged, this, &TimeGroupsPage::showSelectedPanel);
    connect(&m_roster, &PanelRoster::reloaded, this, &TimeGroupsPage::showSelectedPanel);

    auto* editing = new QVBoxLayout;
    for (QPushButton* b : { m_newButton, next, update, remove, search, settings })
        editing->addWidget(b);
    editing->addStretch();
    auto* panels = new QVBoxLayout;
    panels->addWidget(m_selectedPanel);
    for (QPushButton* b : { sendSelected, sendAll, erase })
        panels->addWidget(b);
    panels->addStretch();
    auto* main = new QVBoxLayout;
    main->addWidget(m_grid, 1);
    main->addLayout(fields);
    auto* layout = new QHBoxLayout(this);
    layout->addLayout(main, 1);
    layout->addLayout(editing);
    layout->addLayout(panels);

    captionGrid();
    loadTypes();
    showSelectedPanel();
    reload();
}

TimeGroupsPage* TimeGroupsPage::install(QTabWidget* tabs, const PageServices& services, PanelWorkerBridge& bridge,
                                        PanelRoster& roster)
{
    auto* page = new TimeGroupsPage(services, bridge, roster);
    tabs->addTab(page, QString());
    setCaption(page, u"Zaman Grupları"_s);
    return page;
}

QPushButton* TimeGroupsPage::addButton(const QString& name, const QString& turkish)
{
    auto* button = new QPushButton(this);
    button->setObjectName(name);
    setCaption(button, turkish);
    return button;
}

void TimeGroupsPage::captionGrid()
{
    m_model->setHorizontalHeaderLabels({ Translate(kNumber), Translate(kName), Translate(kType) });
}

void TimeGroupsPage::loadTypes()
{
    const QVariant chosen = m_type->currentData();
    m_type->clear();
    QString error;
    for (const CodeTable::Row& type : CodeTable(CodeTable::Kind::RestrictionTypes).rows(*m_services.db, &error))
        m_type->addItem(Translate(type.name.trimmed()), type.code);
    if (!error.isEmpty())
        qWarning().noquote() << "restriction types:" << error;
    if (chosen.isValid())
        m_type->setCurrentIndex(m_type->findData(chosen));
}

void TimeGroupsPage::reload()
{
    const int keep = m_newEntry ? 0 : current().record.number;
    QString error;
    m_rows = TimeGroupRepository(*m_services.db).list(&error);
    if (!error.isEmpty())
        qWarning().noquote() << "time groups:" << error;
    m_model->removeRows(0, m_model->rowCount());
    for (const TimeGroupRow& row : std::as_const(m_rows)) {
        auto* number = new QStandardItem;
        number->setData(row.record.number, Qt::DisplayRole);
        const int type = m_type->findData(row.record.restrictionType);
        auto* typeName
            = new QStandardItem(type >= 0 ? m_type->itemText(type) : QString::number(row.record.restrictionType));
        m_model->appendRow({ number, new QStandardItem(row.name), typeName });
    }
    m_grid->resizeColumnsToContents();
    if (!selectNumber(keep) && !m_rows.isEmpty())
        m_grid->setCurrentIndex(m_model->index(0, 0));
    if (m_rows.isEmpty() && !m_newEntry)
        showRow(TimeGroupRow());
}

bool TimeGroupsPage::selectNumber(int number)
{
    for (int row = 0; row < m_rows.size(); ++row) {
        if (m_rows.at(row).record.number == number) {
            m_grid->setCurrentIndex(m_model->index(row, 0));
            showCurrentRow();
            return true;
        }
    }
    return false;
}

int TimeGroupsPage::currentGridRow() const
{
    const QModelIndex at = m_grid->currentIndex();
    return at.isValid() && at.row() < m_rows.size() ? at.row() : -1;
}

void TimeGroupsPage::showCurrentRow()
{
    // While a new time group is entered the fields belong to it.
    if (m_newEntry)
        return;
    const int row = currentGridRow();
    showRow(row >= 0 ? m_rows.at(row) : TimeGroupRow());
}

void TimeGroupsPage::showRow(const TimeGroupRow& row)
{
    m_current = row;
    m_number->setText(row.record.number > 0 ? QString::number(row.record.number) : QString());
    m_name->setText(row.name);
    int type = m_type->findData(row.record.restrictionType);
    if (type < 0) {
        m_type->addItem(QString::number(row.record.restrictionType), row.record.restrictionType);
        type = m_type->count() - 1;
    }
    m_type->setCurrentIndex(type);
}

TimeGroupRow TimeGroupsPage::current() const
{
    TimeGroupRow row = m_current;
    if (m_newEntry) {
        bool ok = false;
        const int number = m_number->text().trimmed().toInt(&ok);
        row.record.number = ok ? number : 0;
    }
    row.name = m_name->text();
    if (m_type->currentIndex() >= 0)
        row.record.restrictionType = m_type->currentData().toInt();
    return row;
}

void TimeGroupsPage::setNewEntry(bool on)
{
    m_newEntry = on;
    setCaption(m_newButton, on ? u"Vazgeç"_s : u"Yeni"_s);
    // The number is the key of a stored time group; only a new one takes a typed number.
    m_number->setReadOnly(!on);
    if (on) {
        showRow(TimeGroupRow());
        m_number->setFocus();
    } else {
        showCurrentRow();
    }
}

void TimeGroupsPage::toggleNewEntry()
{
    setNewEntry(!m_newEntry);
}

void TimeGroupsPage::proposeNumber()
{
    const TimeGroupRepository::Result next = TimeGroupRepository(*m_services.db).nextNumber();
    if (!next.ok) {
        MessageBox::warning(this, next.message);
        return;
    }
    if (!m_newEntry)
        setNewEntry(true);
    m_number->setText(QString::number(next.number));
}

bool TimeGroupsPage::store()
{
    if (!m_newEntry && currentGridRow() < 0) {
        MessageBox::warning(this, Message(kListEmpty));
        return false;
    }
    if (!checkAdministratorRights(*m_services.session, *m_services.op))
        return false;
    const TimeGroupRow row = current();
    const TimeGroupRepository repository(*m_services.db);
    const TimeGroupRepository::Result result = m_newEntry ? repository.add(row) : repository.update(row);
    if (!result.ok) {
        if (!result.error.isEmpty())
            qWarning().noquote() << "time group" << row.record.number << result.error;
        MessageBox::warning(this, result.message);
        return false;
    }
    setNewEntry(false);
    reload();
    selectNumber(row.record.number);
    Q_EMIT timeGroupsChanged();
    return true;
}

void TimeGroupsPage::remove()
{
    if (m_newEntry) {
        // Nothing stored yet: the entry is given up.
        setNewEntry(false);
        return;
    }
    const int row = currentGridRow();
    if (row < 0) {
        MessageBox::warning(this, Message(kListEmpty));
        return;
    }
    if (MessageBox::question(this, TimeGroupRepository::deleteQuestion()) != QMessageBox::Yes)
        return;
    if (!checkAdministratorRights(*m_services.session, *m_services.op))
        return;
    const TimeGroupRepository::Result result = TimeGroupRepository(*m_services.db).remove(m_rows.at(row).record.number);
    if (!result.ok) {
        if (!result.error.isEmpty())
            qWarning().noquote() << "time group" << result.number << result.error;
        MessageBox::warning(this, result.message);
    }
    reload();
    Q_EMIT timeGroupsChanged();
}

void TimeGroupsPage::find()
{
    const int current = !m_newEntry && currentGridRow() >= 0 ? m_rows.at(currentGridRow()).record.number : 0;
    const std::optional<TimeGroupRepository::Entry> chosen = pickTimeGroup(this, *m_services.db, current);
    if (!chosen)
        return;
    if (m_newEntry)
        setNewEntry(false);
    selectNumber(chosen->number);
}

void TimeGroupsPage::openSettings()
{
    if (!m_newEntry && currentGridRow() < 0) {
        MessageBox::warning(this, Message(kListEmpty));
        return;
    }
    const TimeGroupRow row = current();
    QString typeName;
    for (const CodeTable::Row& type : CodeTable(CodeTable::Kind::RestrictionTypes).rows(*m_services.db)) {
        if (type.code == row.record.restrictionType)
            typeName = type.name;
    }
    const QDateTime now = (m_services.clock ? *m_services.clock : Clock::system()).now();
    frmTimeGroupSettings dialog(row, typeName, now.date(), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    m_current.record = dialog.row().record;
    // A stored time group takes the settings at once; a new one takes them with its first store.
    if (!m_newEntry)
        store();
}

void TimeGroupsPage::showSelectedPanel()
{
    const std::optional<PanelEntry> entry = m_roster.selectedEntry();
    const QString panel = entry ? QString::number(entry->panelNumber) + u" - "_s + entry->name.trimmed() : u"-"_s;
    setCaption(m_selectedPanel, u"Seçilen Panel"_s, u": "_s + panel);
}

void TimeGroupsPage::retranslate()
{
    captionGrid();
    loadTypes();
    for (int row = 0; row < m_rows.size(); ++row) {
        const int type = m_type->findData(m_rows.at(row).record.restrictionType);
        if (type >= 0)
            m_model->item(row, 2)->setText(m_type->itemText(type));
    }
    m_grid->resizeColumnsToContents();
}

void TimeGroupsPage::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QWidget::changeEvent(event);
}
