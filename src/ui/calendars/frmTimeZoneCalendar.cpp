#include "ui/calendars/frmTimeZoneCalendar.h"

#include "operations/configuration/GroupCalendarRepository.h"
#include "operations/configuration/GroupCalendarTransfer.h"
#include "operations/configuration/GroupRepository.h"
#include "store/RightsCheck.h"
#include "store/Translate.h"
#include "ui/common/Caption.h"
#include "ui/common/MessageBox.h"
#include "ui/main/PanelWorkerBridge.h"
#include "ui/main/WindowOperator.h"

#include <QComboBox>
#include <QDateEdit>
#include <QDebug>
#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>
#include <QTimeEdit>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
QLabel* label(QWidget* parent, const QString& name, const QString& turkish)
{
    auto* l = new QLabel(parent);
    l->setObjectName(name);
    setCaption(l, turkish);
    return l;
}

QPushButton* button(QWidget* parent, const QString& name, const QString& turkish)
{
    auto* b = new QPushButton(parent);
    b->setObjectName(name);
    setCaption(b, turkish);
    return b;
}

QString groupText(qint32 number, const QString& name)
{
    return number > 0 ? QString::number(number) + u" - "_s + name : QString();
}
} // namespace

frmTimeZoneCalendar::frmTimeZoneCalendar(const PageServices& services, PanelWorkerBridge& bridge, QWidget* parent)
    : QDialog(parent)
    , m_services(services)
    , m_bridge(bridge)
{
    setObjectName(u"frmTimeZoneCalendar"_s);
    setCaption(this, u"Geçiş Grubu Takvimi"_s);

    m_model = new QStandardItemModel(0, 10, this);
    m_grid = new QTableView(this);
    m_grid->setObjectName(u"datTimeZoneCalendar"_s);
    m_grid->setModel(m_model);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->verticalHeader()->setVisible(false);
    connect(m_grid->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &frmTimeZoneCalendar::showCurrentRow);

    m_number = new QLineEdit(this);
    m_number->setObjectName(u"txtZoneCalendarNo"_s);
    m_name = new QLineEdit(this);
    m_name->setObjectName(u"txtZoneCalendarName"_s);
    m_type = new QComboBox(this);
    m_type->setObjectName(u"cmbZoneCalendarType"_s);
    m_type->addItem(QString(), GroupCalendarRepository::betweenDates());
    m_type->addItem(QString(), GroupCalendarRepository::betweenHours());
    connect(m_type, &QComboBox::currentIndexChanged, this, &frmTimeZoneCalendar::typeChosen);
    for (int i = 0; i < 3; ++i) {
        m_groups[i] = new QComboBox(this);
        m_groups[i]->setObjectName(u"cmbGroup"_s + QString::number(i + 1));
    }
    for (int i = 0; i < 2; ++i) {
        m_dates[i] = new QDateEdit(this);
        m_dates[i]->setObjectName(u"DTPicker"_s + QString::number(i + 1));
        m_dates[i]->setDisplayFormat(u"dd/MM/yyyy"_s);
        m_dates[i]->setCalendarPopup(true);
        m_times[i] = new QTimeEdit(this);
        m_times[i]->setObjectName(u"dtTime"_s + QString::number(i + 1));
        m_times[i]->setDisplayFormat(u"HH:mm"_s);
    }

    auto* fields = new QGridLayout;
    int row = 0;
    const auto addRow = [&](QLabel* l, QWidget* a, QWidget* b = nullptr) {
        fields->addWidget(l, row, 0);
        fields->addWidget(a, row, 1);
        if (b)
            fields->addWidget(b, row, 2);
        ++row;
    };
    addRow(label(this, u"lblZoneCalendarNo"_s, u"Geçiş Grup Takvimi No:"_s), m_number);
    addRow(label(this, u"lblZoneCalendarName"_s, u"Geçiş Grup Takvimi Adı:"_s), m_name);
    addRow(label(this, u"lblZoneCalendarType"_s, u"Geçiş Grup Takvimi Tipi:"_s), m_type);
    addRow(label(this, u"lblGroup1"_s, u"Geçiş Grubu 1:"_s), m_groups[0]);
    addRow(label(this, u"lblSwitch1"_s, u"Tarih 1 / Saat 1:"_s), m_dates[0], m_times[0]);
    addRow(label(this, u"lblGroup2"_s, u"Geçiş Grubu 2:"_s), m_groups[1]);
    addRow(label(this, u"lblSwitch2"_s, u"Tarih 2 / Saat 2:"_s), m_dates[1], m_times[1]);
    addRow(label(this, u"lblGroup3"_s, u"Geçiş Grubu 3:"_s), m_groups[2]);
    fields->setColumnStretch(1, 1);

    QPushButton* update = button(this, u"cmdUpdatePG"_s, u"Kaydet"_s);
    QPushButton* remove = button(this, u"cmdDeletePG"_s, u"Sil"_s);
    QPushButton* refresh = button(this, u"cmdRefreshPG"_s, u"Yenile"_s);
    QPushButton* sendSelected = button(this, u"cmdSendCalendarSelectedPanel"_s, u"Seçilen Panele Gönder"_s);
    QPushButton* sendAll = button(this, u"cmdSendCalendarZoneAllPanels"_s, u"Tüm Panellere Gönder"_s);
    QPushButton* close = button(this, u"cmdClose"_s, u"Kapat"_s);
    connect(update, &QPushButton::clicked, this, &frmTimeZoneCalendar::store);
    connect(remove, &QPushButton::clicked, this, &frmTimeZoneCalendar::remove);
    connect(refresh, &QPushButton::clicked, this, &frmTimeZoneCalendar::reload);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    const auto sendOnClick = [this](QPushButton* b, PanelTarget target) {
        m_bridge.guard(b);
        connect(b, &QPushButton::clicked, this, [this, target] {
            m_bridge.run([target](OperationContext& c) { GroupCalendarTransfer(c).send(target); });
        });
    };
    sendOnClick(sendSelected, PanelTarget::Selected);
    sendOnClick(sendAll, PanelTarget::All);

    auto* buttons = new QHBoxLayout;
    for (QPushButton* b : { update, remove, refresh, sendSelected, sendAll })
        buttons->addWidget(b);
    buttons->addStretch();
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_grid, 1);
    layout->addLayout(fields);
    layout->addLayout(buttons);
    resize(900, 560);

    retranslate();
    reload();
    typeChosen();
}

void frmTimeZoneCalendar::captionGrid()
{
    m_model->setHorizontalHeaderLabels({ Translate(u"Grup Takvimi No"_s), Translate(u"Grup Takvimi Adi"_s),
                                         Translate(u"Grup Takvimi Tipi"_s), Translate(u"Grup 1"_s),
                                         Translate(u"Tarih 1"_s), Translate(u"Saat 1"_s), Translate(u"Grup 2"_s),
                                         Translate(u"Tarih 2"_s), Translate(u"Saat 2"_s), Translate(u"Grup 3"_s) });
}

void frmTimeZoneCalendar::loadGroups()
{
    QString error;
    const QList<GroupRepository::Row> groups = GroupRepository(*m_services.db).list(&error);
    if (!error.isEmpty())
        qWarning().noquote() << "groups:" << error;
    for (QComboBox* combo : m_groups) {
        const QVariant chosen = combo->currentData();
        combo->clear();
        combo->addItem(QString(), 0);
        for (const GroupRepository::Row& group : groups)
            combo->addItem(groupText(group.number, group.name.trimmed()), group.number);
        combo->setCurrentIndex(qMax(0, combo->findData(chosen)));
    }
}

void frmTimeZoneCalendar::reload()
{
    const int keep = m_number->text().toInt();
    loadGroups();
    QString error;
    m_rows = GroupCalendarRepository(*m_services.db).list(&error);
    if (!error.isEmpty())
        qWarning().noquote() << "group calendars:" << error;
    m_model->removeRows(0, m_model->rowCount());
    for (const GroupCalendarRow& row : std::as_const(m_rows)) {
        const GroupCalendarRecord& c = row.record;
        const bool hours = GroupCalendarRepository::isBetweenHours(c.typeText);
        const auto date = [hours](const QDate& d) { return hours ? QString() : d.toString(u"dd/MM/yyyy"_s); };
        auto* number = new QStandardItem;
        number->setData(c.number, Qt::DisplayRole);
        m_model->appendRow({ number, new QStandardItem(row.name), new QStandardItem(Translate(c.typeText)),
                             new QStandardItem(groupText(c.group1, row.groupName1)), new QStandardItem(date(c.date1)),
                             new QStandardItem(c.time1.toString(u"HH:mm"_s)),
                             new QStandardItem(groupText(c.group2, row.groupName2)), new QStandardItem(date(c.date2)),
                             new QStandardItem(c.time2.toString(u"HH:mm"_s)),
                             new QStandardItem(groupText(c.group3, row.groupName3)) });
    }
    m_grid->resizeColumnsToContents();
    for (int i = 0; i < m_rows.size(); ++i) {
        if (m_rows.at(i).record.number == keep || (keep == 0 && i == 0)) {
            m_grid->setCurrentIndex(m_model->index(i, 0));
            break;
        }
    }
}

void frmTimeZoneCalendar::showCurrentRow()
{
    const QModelIndex at = m_grid->currentIndex();
    if (at.isValid() && at.row() < m_rows.size())
        showRow(m_rows.at(at.row()));
}

void frmTimeZoneCalendar::showRow(const GroupCalendarRow& row)
{
    const GroupCalendarRecord& c = row.record;
    m_number->setText(c.number > 0 ? QString::number(c.number) : QString());
    m_name->setText(row.name);
    m_type->setCurrentIndex(GroupCalendarRepository::isBetweenHours(c.typeText) ? 1 : 0);
    const qint32 groups[3] = { c.group1, c.group2, c.group3 };
    for (int i = 0; i < 3; ++i)
        m_groups[i]->setCurrentIndex(qMax(0, m_groups[i]->findData(groups[i])));
    const QDate today = QDate::currentDate();
    m_dates[0]->setDate(c.date1.isValid() ? c.date1 : today);
    m_dates[1]->setDate(c.date2.isValid() ? c.date2 : today);
    m_times[0]->setTime(c.time1.isValid() ? c.time1 : QTime(0, 0));
    m_times[1]->setTime(c.time2.isValid() ? c.time2 : QTime(0, 0));
}

GroupCalendarRow frmTimeZoneCalendar::current() const
{
    GroupCalendarRow row;
    GroupCalendarRecord& c = row.record;
    bool ok = false;
    c.number = m_number->text().trimmed().toInt(&ok);
    if (!ok)
        c.number = 0;
    row.name = m_name->text();
    c.typeText = m_type->currentData().toString();
    c.group1 = m_groups[0]->currentData().toInt();
    c.group2 = m_groups[1]->currentData().toInt();
    c.group3 = m_groups[2]->currentData().toInt();
    c.time1 = m_times[0]->time();
    c.time2 = m_times[1]->time();
    // Between hours the dates play no part and are not kept.
    if (!GroupCalendarRepository::isBetweenHours(c.typeText)) {
        c.date1 = m_dates[0]->date();
        c.date2 = m_dates[1]->date();
    }
    return row;
}

void frmTimeZoneCalendar::typeChosen()
{
    const bool dates = !GroupCalendarRepository::isBetweenHours(m_type->currentData().toString());
    for (QDateEdit* date : m_dates)
        date->setEnabled(dates);
}

bool frmTimeZoneCalendar::store()
{
    if (!checkAdministratorRights(*m_services.session, *m_services.op))
        return false;
    const GroupCalendarRow row = current();
    const GroupCalendarRepository repository(*m_services.db);
    QString error;
    const bool stored = repository.find(row.record.number, &error).has_value();
    const GroupCalendarRepository::Result result = stored ? repository.update(row) : repository.add(row);
    if (!result.ok) {
        if (!result.error.isEmpty())
            qWarning().noquote() << "group calendar" << row.record.number << result.error;
        MessageBox::warning(this, result.message);
        return false;
    }
    reload();
    return true;
}

void frmTimeZoneCalendar::remove()
{
    const QModelIndex at = m_grid->currentIndex();
    if (!at.isValid() || at.row() >= m_rows.size())
        return;
    if (!checkAdministratorRights(*m_services.session, *m_services.op))
        return;
    const GroupCalendarRepository::Result result
        = GroupCalendarRepository(*m_services.db).remove(m_rows.at(at.row()).record.number);
    if (!result.ok)
        MessageBox::warning(this, result.message);
    m_number->clear();
    reload();
}

void frmTimeZoneCalendar::retranslate()
{
    setCaption(m_type, 0, GroupCalendarRepository::betweenDates());
    setCaption(m_type, 1, GroupCalendarRepository::betweenHours());
    captionGrid();
    for (int row = 0; row < m_rows.size() && row < m_model->rowCount(); ++row)
        m_model->item(row, 2)->setText(Translate(m_rows.at(row).record.typeText));
    m_grid->resizeColumnsToContents();
}

void frmTimeZoneCalendar::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QDialog::changeEvent(event);
}
