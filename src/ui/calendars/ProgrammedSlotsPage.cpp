#include "ui/calendars/ProgrammedSlotsPage.h"

#include "operations/configuration/ProgrammedSlotRepository.h"
#include "operations/configuration/ProgrammedSlotTransfer.h"
#include "operations/panels/PanelRoster.h"
#include "store/RightsCheck.h"
#include "store/Translate.h"
#include "ui/calendars/frmTimeZoneCalendar.h"
#include "ui/common/Caption.h"
#include "ui/common/MessageBox.h"
#include "ui/main/PanelWorkerBridge.h"
#include "ui/main/WindowOperator.h"

#include <QDebug>
#include <QEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
const QStringList kDays
    = { u"Pazartesi"_s, u"Salı"_s, u"Çarşamba"_s, u"Perşembe"_s, u"Cuma"_s, u"Cumartesi"_s, u"Pazar"_s };
// Grid columns: slot, active, start, end, doors 1-8, relays 1-8.
constexpr int kActive = 1;
constexpr int kStart = 2;
constexpr int kEnd = 3;
constexpr int kDoors = 4;
constexpr int kRelays = 12;
constexpr int kColumns = 20;

QStandardItem* check(bool on)
{
    auto* item = new QStandardItem;
    item->setCheckable(true);
    item->setEditable(false);
    item->setCheckState(on ? Qt::Checked : Qt::Unchecked);
    return item;
}
} // namespace

ProgrammedSlotsPage::ProgrammedSlotsPage(const PageServices& services, PanelWorkerBridge& bridge, PanelRoster& roster,
                                         QWidget* parent)
    : QWidget(parent)
    , m_services(services)
    , m_bridge(bridge)
    , m_roster(roster)
{
    setObjectName(u"tabProgRelay"_s);
    m_days = new QTabBar(this);
    m_days->setObjectName(u"TabRingDays"_s);
    for (int day = 0; day < kDays.size(); ++day)
        m_days->addTab(QString());
    connect(m_days, &QTabBar::currentChanged, this, [this] {
        m_copy->setEnabled(weekday() != 1);
        reload();
    });

    m_model = new QStandardItemModel(0, kColumns, this);
    m_grid = new QTableView(this);
    m_grid->setObjectName(u"grdProgRelay"_s);
    m_grid->setModel(m_model);
    m_grid->verticalHeader()->setVisible(false);

    m_copy = addButton(u"cmdCopyFromMonday"_s, u"Pazartesiden Kopyala"_s);
    QPushButton* update = addButton(u"cmdUpdateZilTakvimi"_s, u"Kaydet"_s);
    QPushButton* refresh = addButton(u"cmdRefreshZilTakvimi"_s, u"Yenile"_s);
    QPushButton* send = addButton(u"cmdSendCalendar"_s, u"Seçilen Panele Gönder"_s);
    QPushButton* receive = addButton(u"cmdReceiveCalendar"_s, u"Seçilen Panelden Al"_s);
    QPushButton* calendars = addButton(u"cmdGroupCalendar"_s, u"Geçiş Grup Takvimleri"_s);
    m_copy->setEnabled(false);
    connect(m_copy, &QPushButton::clicked, this, &ProgrammedSlotsPage::copyFromMonday);
    connect(update, &QPushButton::clicked, this, &ProgrammedSlotsPage::store);
    connect(refresh, &QPushButton::clicked, this, &ProgrammedSlotsPage::reload);
    connect(calendars, &QPushButton::clicked, this, &ProgrammedSlotsPage::openGroupCalendars);
    m_bridge.guard(send);
    m_bridge.guard(receive);
    connect(send, &QPushButton::clicked, this,
            [this] { m_bridge.run([](OperationContext& c) { ProgrammedSlotTransfer(c).send(); }); });
    connect(receive, &QPushButton::clicked, this, [this] {
        m_bridge.run([](OperationContext& c) { ProgrammedSlotTransfer(c).receive(); }, [this] { reload(); });
    });

    m_selectedPanel = new QLabel(this);
    m_selectedPanel->setObjectName(u"lblRingDaysPanel"_s);
    connect(&m_roster, &PanelRoster::selectionChanged, this, [this] {
        showSelectedPanel();
        reload();
    });
    connect(&m_roster, &PanelRoster::reloaded, this, &ProgrammedSlotsPage::showSelectedPanel);

    auto* buttons = new QVBoxLayout;
    buttons->addWidget(m_selectedPanel);
    for (QPushButton* b : { m_copy, update, refresh, send, receive, calendars })
        buttons->addWidget(b);
    buttons->addStretch();
    auto* main = new QVBoxLayout;
    main->addWidget(m_days);
    main->addWidget(m_grid, 1);
    auto* layout = new QHBoxLayout(this);
    layout->addLayout(main, 1);
    layout->addLayout(buttons);

    retranslate();
    showSelectedPanel();
    reload();
}

ProgrammedSlotsPage* ProgrammedSlotsPage::install(QTabWidget* tabs, const PageServices& services,
                                                  PanelWorkerBridge& bridge, PanelRoster& roster)
{
    auto* page = new ProgrammedSlotsPage(services, bridge, roster);
    tabs->addTab(page, QString());
    setCaption(page, u"Programlı kapı işlemleri"_s);
    return page;
}

QPushButton* ProgrammedSlotsPage::addButton(const QString& name, const QString& turkish)
{
    auto* button = new QPushButton(this);
    button->setObjectName(name);
    setCaption(button, turkish);
    return button;
}

int ProgrammedSlotsPage::weekday() const
{
    return m_days->currentIndex() + 1;
}

void ProgrammedSlotsPage::showWeekday(int weekday)
{
    m_days->setCurrentIndex(weekday - 1);
}

int ProgrammedSlotsPage::panelNumber() const
{
    const std::optional<PanelEntry> entry = m_roster.selectedEntry();
    return entry ? entry->panelNumber : 0;
}

void ProgrammedSlotsPage::captionGrid()
{
    QStringList headers{ Translate(u"Zaman Dilimi"_s), Translate(u"Aktif"_s), Translate(u"Saat 1"_s),
                         Translate(u"Saat 2"_s) };
    for (int i = 1; i <= 8; ++i)
        headers << Translate(u"Cihaz"_s) + u' ' + QString::number(i);
    for (int i = 1; i <= 8; ++i)
        headers << Translate(u"Röle"_s) + u' ' + QString::number(i);
    m_model->setHorizontalHeaderLabels(headers);
}

void ProgrammedSlotsPage::reload()
{
    m_model->removeRows(0, m_model->rowCount());
    m_slots.clear();
    const int panel = panelNumber();
    if (panel <= 0)
        return;
    ProgrammedSlotRepository repository(*m_services.db);
    const ProgrammedSlotRepository::Result made = repository.ensurePanel(panel);
    if (!made.ok)
        qWarning().noquote() << "programmed slots:" << made.error;
    QString error;
    m_slots = repository.day(panel, weekday(), &error);
    if (!error.isEmpty())
        qWarning().noquote() << "programmed slots:" << error;
    for (const ProgrammedSlot& slot : std::as_const(m_slots)) {
        auto* number = new QStandardItem;
        number->setData(slot.slot, Qt::DisplayRole);
        number->setEditable(false);
        QList<QStandardItem*> row{ number, check(slot.active), new QStandardItem(slot.start.toString(u"HH:mm"_s)),
                                   new QStandardItem(slot.end.toString(u"HH:mm"_s)) };
        for (const bool door : slot.doors)
            row << check(door);
        for (const bool relay : slot.relays)
            row << check(relay);
        m_model->appendRow(row);
    }
    m_grid->resizeColumnsToContents();
}

bool ProgrammedSlotsPage::gridSlots(QList<ProgrammedSlot>* slotList)
{
    QList<ProgrammedSlot> result = m_slots;
    for (int row = 0; row < result.size() && row < m_model->rowCount(); ++row) {
        ProgrammedSlot& slot = result[row];
        const auto checked = [&](int column) { return m_model->item(row, column)->checkState() == Qt::Checked; };
        slot.active = checked(kActive);
        slot.start = QTime::fromString(m_model->item(row, kStart)->text().trimmed(), u"H:mm"_s);
        slot.end = QTime::fromString(m_model->item(row, kEnd)->text().trimmed(), u"H:mm"_s);
        if (!slot.start.isValid() || !slot.end.isValid()) {
            MessageBox::warning(this, Message(u"Geçersiz saat!"_s));
            m_grid->setCurrentIndex(m_model->index(row, slot.start.isValid() ? kEnd : kStart));
            return false;
        }
        for (int i = 0; i < 8; ++i) {
            slot.doors[i] = checked(kDoors + i);
            slot.relays[i] = checked(kRelays + i);
        }
    }
    *slotList = result;
    return true;
}

bool ProgrammedSlotsPage::store()
{
    QList<ProgrammedSlot> slotList;
    if (panelNumber() <= 0 || !gridSlots(&slotList))
        return false;
    if (!checkAdministratorRights(*m_services.session, *m_services.op))
        return false;
    const ProgrammedSlotRepository::Result result
        = ProgrammedSlotRepository(*m_services.db).store(panelNumber(), slotList);
    if (!result.ok) {
        if (!result.error.isEmpty())
            qWarning().noquote() << "programmed slots:" << result.error;
        MessageBox::warning(this, result.message);
        return false;
    }
    reload();
    return true;
}

void ProgrammedSlotsPage::copyFromMonday()
{
    if (weekday() == 1 || panelNumber() <= 0)
        return;
    if (!checkAdministratorRights(*m_services.session, *m_services.op))
        return;
    const ProgrammedSlotRepository::Result result
        = ProgrammedSlotRepository(*m_services.db).copyFromMonday(panelNumber(), weekday());
    if (!result.ok)
        MessageBox::warning(this, result.message);
    reload();
}

void ProgrammedSlotsPage::openGroupCalendars()
{
    auto* window = new frmTimeZoneCalendar(m_services, m_bridge, this);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->show();
}

void ProgrammedSlotsPage::showSelectedPanel()
{
    const std::optional<PanelEntry> entry = m_roster.selectedEntry();
    const QString panel = entry ? QString::number(entry->panelNumber) + u" - "_s + entry->name.trimmed() : u"-"_s;
    setCaption(m_selectedPanel, u"Seçilen Panel"_s, u": "_s + panel);
}

void ProgrammedSlotsPage::retranslate()
{
    for (int day = 0; day < kDays.size(); ++day)
        m_days->setTabText(day, Translate(kDays.at(day)));
    captionGrid();
}

void ProgrammedSlotsPage::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QWidget::changeEvent(event);
}
