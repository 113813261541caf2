// The ring-day page, frmTimeZoneCalendar and frmDailyPermission by name, against simulated panels.

#include "ShippedLanguage.h"
#include "WindowDriver.h"
#include "operations/configuration/DailyPermissionRepository.h"
#include "operations/configuration/GroupCalendarRepository.h"
#include "operations/configuration/ProgrammedSlotRepository.h"
#include "support/StationWindow.h"
#include "ui/calendars/ProgrammedSlotsPage.h"
#include "ui/calendars/frmDailyPermission.h"
#include "ui/calendars/frmTimeZoneCalendar.h"
#include "ui/common/MessageBox.h"
#include "ui/main/LanguageSwitch.h"

#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <QTimeEdit>

using namespace Qt::StringLiterals;

namespace {
QStandardItemModel* modelOf(StationWindow& f, const QString& grid)
{
    auto* view = f.find<QTableView>(grid);
    return view ? qobject_cast<QStandardItemModel*>(view->model()) : nullptr;
}
} // namespace

class CalendarWindowsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // The shipped table, so that the other languages show what the operator would see.
        QVERIFY2(m_shipped.isReady(), qPrintable(m_shipped.error()));
    }

    void init()
    {
        MessageBox::clearShownTexts();
        MessageBox::setDefaultAnswer(QMessageBox::No);
        LanguageSwitch::apply(0);
    }

    void theRingDayPageEditsCopiesAndSendsSlots();
    void groupCalendarsAreEnteredAndSent();
    void theDailyListApprovesAndSendsAGroup();

private:
    ShippedLanguage m_shipped;
};

void CalendarWindowsTest::theRingDayPageEditsCopiesAndSendsSlots()
{
    StationWindow f;
    SimPanel* panel = f.sim().addPanel(1);
    QVERIFY(f.open());
    auto* days = f.find<QTabBar>(u"TabRingDays"_s);
    auto* copy = f.find<QPushButton>(u"cmdCopyFromMonday"_s);
    QStandardItemModel* grid = modelOf(f, u"grdProgRelay"_s);
    QVERIFY(!copy->isEnabled());

    // Monday's first slot: on 08:00-08:15 with door 1 and door 5 (kept, never sent).
    grid->item(0, 1)->setCheckState(Qt::Checked);
    grid->item(0, 2)->setText(u"08:00"_s);
    grid->item(0, 3)->setText(u"8:15"_s);
    grid->item(0, 4)->setCheckState(Qt::Checked);
    grid->item(0, 8)->setCheckState(Qt::Checked);
    QVERIFY(f.click(u"cmdUpdateZilTakvimi"_s));
    const ProgrammedSlotRepository programme(f.db());
    ProgrammedSlot monday = programme.day(1, 1).at(0);
    QVERIFY(monday.active && monday.doors[4] && !monday.doors[1]);
    QCOMPARE(monday.end, QTime(8, 15));

    // A time that does not exist is refused and nothing is stored.
    grid->item(1, 1)->setCheckState(Qt::Checked);
    grid->item(2, 2)->setText(u"25:10"_s);
    QVERIFY(f.click(u"cmdUpdateZilTakvimi"_s));
    QCOMPARE(MessageBox::lastShownText(), u"Geçersiz saat!"_s);
    QVERIFY(!programme.day(1, 1).at(1).active);

    // Copy from Monday (its rules are the repository's tests) shows on the day's grid.
    days->setCurrentIndex(2);
    QVERIFY(f.click(u"cmdCopyFromMonday"_s));
    QCOMPARE(grid->item(0, 8)->checkState(), Qt::Checked);

    MessageBox::clearShownTexts();
    MessageBox::setNextAnswer(QMessageBox::Yes);
    QVERIFY(f.click(u"cmdSendCalendar"_s));
    QVERIFY(f.waitIdle());
    panel->inspect([](const SimPanelState& s) { QVERIFY(s.programmedSlots.value(101).active); });
    auto* tabs = f.find<QTabWidget>(u"tabMain"_s);
    tabs->setCurrentWidget(f.find<ProgrammedSlotsPage>(u"tabProgRelay"_s));
    ShippedLanguage::screenshot(&f.window(), u"ring-days"_s);
}

void CalendarWindowsTest::groupCalendarsAreEnteredAndSent()
{
    StationWindow f;
    SimPanel* p1 = f.sim().addPanel(1);
    SimPanel* p2 = f.sim().addPanel(2);
    f.sim().addGroup(1, u"Gündüz"_s);
    f.sim().addGroup(2, u"Gece"_s);
    QVERIFY(f.open());

    QVERIFY(f.click(u"cmdGroupCalendar"_s));
    auto* window = f.find<frmTimeZoneCalendar>(u"frmTimeZoneCalendar"_s);
    auto* type = f.find<QComboBox>(u"cmbZoneCalendarType"_s);
    auto* date1 = f.find<QDateEdit>(u"DTPicker1"_s);
    QVERIFY(date1->isEnabled());
    type->setCurrentIndex(type->findText(u"İki Saat Arası"_s));
    QVERIFY(!date1->isEnabled());

    f.find<QLineEdit>(u"txtZoneCalendarNo"_s)->setText(u"3"_s);
    f.find<QLineEdit>(u"txtZoneCalendarName"_s)->setText(u"Vardiya"_s);
    auto* group1 = f.find<QComboBox>(u"cmbGroup1"_s);
    group1->setCurrentIndex(group1->findData(2));
    f.find<QTimeEdit>(u"dtTime1"_s)->setTime(QTime(7, 30));
    QVERIFY(f.click(u"cmdUpdatePG"_s));
    const GroupCalendarRecord stored = GroupCalendarRepository(f.db()).find(3).value_or(GroupCalendarRow{}).record;
    QCOMPARE(stored.typeText, u"İki Saat Arası"_s);
    QCOMPARE(stored.time1, QTime(7, 30));
    QCOMPARE(modelOf(f, u"datTimeZoneCalendar"_s)->item(0, 3)->text(), u"2 - Gece"_s);

    MessageBox::setNextAnswer(QMessageBox::Yes);
    QVERIFY(f.click(u"cmdSendCalendarZoneAllPanels"_s));
    QVERIFY(f.waitIdle());
    for (SimPanel* p : { p1, p2 })
        p->inspect([](const SimPanelState& s) { QVERIFY(s.calendars.contains(3)); });
    for (const int language : { 0, 1, 2 }) {
        LanguageSwitch::apply(language);
        ShippedLanguage::screenshot(window, u"group-calendars-"_s + QString::number(language));
    }
    LanguageSwitch::apply(0);
    QVERIFY(WindowDriver::clickEnabled(window, u"cmdClose"_s));
}

void CalendarWindowsTest::theDailyListApprovesAndSendsAGroup()
{
    StationWindow f;
    SimPanel* panel = f.sim().addPanel(1);
    f.sim().addGroup(7, u"Taşeron"_s);
    f.sim().addUser(21, 5021, 7);
    f.sim().addUser(22, 5022, 7);
    QVERIFY(f.open());

    QVERIFY(!f.pages().openDailyPermission(0));
    QCOMPARE(MessageBox::lastShownText(), u"Grup numarası 0'dan büyük olmalıdır"_s);

    frmDailyPermission* window = f.pages().openDailyPermission(7);
    QCOMPARE(window->windowTitle(), u"'Taşeron' Grubu İçin Günlük Geçiş Onay Listesi"_s);
    QStandardItemModel* grid = modelOf(f, u"grdDailyPerm"_s);

    // All at once, without a question, straight into the database.
    MessageBox::clearShownTexts();
    QVERIFY(WindowDriver::clickEnabled(window, u"cmdAllSign"_s));
    QVERIFY(MessageBox::shownTexts().isEmpty());
    QCOMPARE(grid->item(1, 4)->text(), u"Evet"_s);
    DailyPermissionRepository approvals(f.db());
    QVERIFY(approvals.members(7).at(1).approved);

    // An unticked member is stored before the send, which goes to the selected panel.
    grid->item(1, 4)->setCheckState(Qt::Unchecked);
    MessageBox::setNextAnswer(QMessageBox::Yes);
    QVERIFY(WindowDriver::clickEnabled(window, u"cmdSend"_s));
    QVERIFY(f.waitIdle());
    QVERIFY(!approvals.members(7).at(1).approved);
    panel->inspect([](const SimPanelState& s) { QCOMPARE(s.dailyApproved, QSet<int>{ 21 }); });

    QVERIFY(WindowDriver::clickEnabled(window, u"cmdAllCancel"_s));
    QVERIFY(!approvals.members(7).at(0).approved);
    for (const int language : { 0, 1, 2 }) {
        LanguageSwitch::apply(language);
        QCOMPARE(window->windowTitle() == u"'Taşeron' Group Daily Permission List"_s, language == 1);
        QCOMPARE(grid->item(0, 4)->text() == u"No"_s, language == 1);
        ShippedLanguage::screenshot(window, u"daily-permission-"_s + QString::number(language));
    }
    LanguageSwitch::apply(0);
    QVERIFY(WindowDriver::clickEnabled(window, u"cmdClose"_s));
}

QTEST_MAIN(CalendarWindowsTest)
#include "tst_CalendarWindows.moc"
