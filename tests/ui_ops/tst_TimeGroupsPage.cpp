// The time groups page and frmTimeGroupSettings by name: new-entry mode, storing, deleting after
// the question, the search, the controls of each restriction type, and the send and erase buttons
// against simulated panels. The rules behind the buttons are the repository's tests.

#include "ShippedLanguage.h"
#include "WindowDriver.h"
#include "operations/configuration/TimeGroupRepository.h"
#include "store/CodeTable.h"
#include "support/StationWindow.h"
#include "ui/common/MessageBox.h"
#include "ui/configuration/TimeGroupsPage.h"
#include "ui/configuration/frmTimeGroupSettings.h"
#include "ui/main/LanguageSwitch.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QFocusEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QTableView>
#include <QTimeEdit>

using namespace Qt::StringLiterals;

namespace {
// The panes of the settings dialog that are shown, by their titles.
QStringList shownPanes(const QDialog& dialog)
{
    QStringList titles;
    for (const QGroupBox* pane : dialog.findChildren<QGroupBox*>()) {
        if (pane->isVisibleTo(&dialog))
            titles << pane->title();
    }
    titles.sort();
    return titles;
}

TimeGroupRow named(int number, const QString& name, int type = 0)
{
    TimeGroupRow row;
    row.record.number = number;
    row.record.restrictionType = type;
    row.name = name;
    return row;
}
} // namespace

class TimeGroupsPageTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        MessageBox::clearShownTexts();
        MessageBox::setDefaultAnswer(QMessageBox::No);
        LanguageSwitch::apply(0);
    }

    void timeGroupsAreEnteredStoredFoundAndDeleted();
    void theSettingsShowTheControlsOfTheType();
    void theSettingsAreStoredWithTheTimeGroup();
    void sendAndEraseReachTheSelectedPanelOrAll();
    void captionsFollowTheLanguage();
};

void TimeGroupsPageTest::timeGroupsAreEnteredStoredFoundAndDeleted()
{
    StationWindow f;
    QVERIFY(f.open());
    auto* page = f.find<TimeGroupsPage>(u"tabTimeGroups"_s);
    auto* grid = f.find<QTableView>(u"datTimeGroups"_s);
    auto* number = f.find<QLineEdit>(u"txtTimeGroupNo"_s);
    auto* name = f.find<QLineEdit>(u"txtTimeGroupName"_s);
    auto* type = f.find<QComboBox>(u"cmbTimeGroupType"_s);
    QCOMPARE(grid->model()->rowCount(), 0);
    QCOMPARE(f.find<QPushButton>(u"cmdAddNewTimeGroup"_s)->text(), u"Yeni"_s);

    QVERIFY(f.click(u"cmdDeleteTimeGroup"_s));
    QCOMPARE(MessageBox::shownTexts(), QStringList{ u"Zaman grup listesi boş!"_s });

    // New entry: the number proposed, name and type typed, stored.
    QVERIFY(f.click(u"cmdAddNewTimeGroup"_s));
    QCOMPARE(f.find<QPushButton>(u"cmdAddNewTimeGroup"_s)->text(), u"Vazgeç"_s);
    QVERIFY(f.click(u"cmdLastTimeGroup"_s));
    QCOMPARE(number->text(), u"1"_s);
    name->setText(u"Öğle Arası"_s);
    type->setCurrentIndex(type->findData(3));
    QVERIFY(f.click(u"cmdUpdateTimeGroup"_s));
    QCOMPARE(f.find<QPushButton>(u"cmdAddNewTimeGroup"_s)->text(), u"Yeni"_s);
    const TimeGroupRepository repository(f.db());
    QCOMPARE(repository.find(1).value_or(TimeGroupRow{}).record.restrictionType, 3);
    QCOMPARE(grid->model()->index(0, 2).data().toString(), u"İki Saat Arası Geçiş"_s);

    // A name changed on the current time group is stored in place.
    name->setText(u"Öğle"_s);
    QVERIFY(f.click(u"cmdUpdateTimeGroup"_s));
    QCOMPARE(repository.find(1)->name, u"Öğle"_s);

    // The search moves to the chosen number; deleting asks first, No keeps it.
    QVERIFY(repository.add(named(12, u"Grup 12"_s)).ok);
    page->reload();
    QString title;
    WindowDriver::choosePickerRow(1, &title);
    QVERIFY(f.click(u"cmdFindTimeGroup"_s));
    QCOMPARE(title, u"Zaman Grup Arama"_s);
    QCOMPARE(number->text(), u"12"_s);
    QVERIFY(f.click(u"cmdDeleteTimeGroup"_s));
    QVERIFY(repository.find(12));
    MessageBox::setNextAnswer(QMessageBox::Yes);
    QVERIFY(f.click(u"cmdDeleteTimeGroup"_s));
    QVERIFY(!repository.find(12));
    QCOMPARE(grid->model()->rowCount(), 1);

    // Without administrator rights nothing is stored.
    f.sim().session().logOut();
    MessageBox::clearShownTexts();
    name->setText(u"Gizli"_s);
    QVERIFY(f.click(u"cmdUpdateTimeGroup"_s));
    QVERIFY(MessageBox::shownTexts().contains(u"Yetki hatası, Yönetici şifresi gerekli!"_s));
    QVERIFY(!repository.numberOf(u"Gizli"_s));
}

void TimeGroupsPageTest::theSettingsShowTheControlsOfTheType()
{
    StationWindow f;
    QVERIFY(f.open());
    QMap<int, QString> names;
    for (const CodeTable::Row& row : CodeTable(CodeTable::Kind::RestrictionTypes).rows(f.db()))
        names.insert(row.code, row.name);
    const QString dates = u"İki Tarih Arası"_s;
    const QString hours = u"İki Saat Arası"_s;
    const QString weekly = u"Haftalık Plan"_s;
    const QString dayHours = u"Haftalık Plan + Her Gün Ayrı Saat Sınırı"_s;
    const QString monthly = u"Aylık Plan"_s;
    const QString extra = u"İlave Saat Kontrolü (Her Gün İçin Geçerli)"_s;
    const QList<std::pair<int, QStringList>> expected = {
        { 0, {} },
        { 1, { dates } },
        { 3, { hours } },
        { 5, { weekly } },
        { 6, { dayHours } },
        { 8, { monthly } },
        { 9, { weekly, extra } },
        { 13, { dayHours, extra } },
        { 10, { u"Çoklu Saat Modu"_s } },
        { 11, { u"Çoklu Saat Modu (6'lı Saat)"_s } },
    };
    for (const auto& [type, panes] : expected) {
        frmTimeGroupSettings dialog(named(1, u"T"_s, type), names.value(type), QDate(2016, 1, 31));
        QCOMPARE(dialog.findChild<QLabel*>(u"lblTimeGroupType"_s)->text(), names.value(type));
        QCOMPARE(shownPanes(dialog), panes);
        QCOMPARE(dialog.findChild<QLabel*>(u"lblNoRestriction"_s)->isVisibleTo(&dialog), panes.isEmpty());
        // Each day's hours only where the type gives them.
        QCOMPARE(dialog.findChild<QTimeEdit*>(u"tmDayStart3"_s)->isVisibleTo(&dialog), type == 6 || type == 13);
    }

    // Select all, then cancel all, leaves every day of the month unchecked.
    TimeGroupRow row = named(2, u"Ay"_s, 8);
    row.record.monthDays[4] = true;
    frmTimeGroupSettings dialog(row, names.value(8), QDate(2016, 1, 31));
    QVERIFY(dialog.findChild<QCheckBox*>(u"chkMonFields4"_s)->isChecked());
    WindowDriver::click(&dialog, u"cmdSelectAll"_s);
    QVERIFY(dialog.row().record.monthDays[30]);
    WindowDriver::click(&dialog, u"cmdCancelAll"_s);
    QVERIFY(!dialog.findChild<QCheckBox*>(u"chkMonFields30"_s)->isChecked());

    // The pickers write the day into their fields; the track bars write the hours.
    dialog.findChild<QDateEdit*>(u"dtStart"_s)->setDate(QDate(2024, 2, 29));
    QCOMPARE(dialog.findChild<QLineEdit*>(u"txtStartDate"_s)->text(), u"29/02/2024"_s);
    QCOMPARE(dialog.row().record.startDate, QDate(2024, 2, 29));
    dialog.findChild<QSlider*>(u"TBarHInsert"_s)->setValue(5);
    QCOMPARE(dialog.row().record.extraHours, 5);

    // The six-hour track bar writes into the hour entered last.
    frmTimeGroupSettings six(named(3, u"Altı"_s, 11), names.value(11), QDate(2016, 1, 31));
    auto* bar = six.findChild<QSlider*>(u"TBarInsertSixHour"_s);
    bar->setValue(6);
    QFocusEvent focus(QEvent::FocusIn, Qt::TabFocusReason);
    QApplication::sendEvent(six.findChild<QSpinBox*>(u"txtSixHour2"_s), &focus);
    bar->setValue(17);
    QCOMPARE(six.row().record.hours, (std::array<qint32, 6>{ 6, 0, 17, 0, 0, 0 }));
}

void TimeGroupsPageTest::theSettingsAreStoredWithTheTimeGroup()
{
    StationWindow f;
    QVERIFY(TimeGroupRepository(f.db()).add(named(4, u"Hafta"_s, 6)).ok);
    QVERIFY(f.open());
    auto* page = f.find<TimeGroupsPage>(u"tabTimeGroups"_s);
    QVERIFY(page->selectNumber(4));

    // A stored time group takes what the dialog hands back at once.
    WindowDriver::whenModal([](QDialog* dialog) {
        dialog->findChild<QCheckBox*>(u"chkWeekDay0"_s)->setChecked(true);
        dialog->findChild<QCheckBox*>(u"chkWeekDay4"_s)->setChecked(true);
        dialog->findChild<QTimeEdit*>(u"tmDayEnd4"_s)->setTime(QTime(12, 30));
        WindowDriver::click(dialog, u"cmdOK"_s);
    });
    QVERIFY(f.click(u"cmdTimeGroupSettings"_s));
    TimeGroupRecord stored = TimeGroupRepository(f.db()).find(4)->record;
    QCOMPARE(stored.weekdays, (std::array<bool, 7>{ true, false, false, false, true, false, false }));
    QCOMPARE(stored.weekdayEnd[4], QTime(12, 30));

    // Cancel changes nothing.
    WindowDriver::whenModal([](QDialog* dialog) {
        dialog->findChild<QCheckBox*>(u"chkWeekDay0"_s)->setChecked(false);
        WindowDriver::click(dialog, u"cmdCancel"_s);
    });
    QVERIFY(f.click(u"cmdTimeGroupSettings"_s));
    QVERIFY(TimeGroupRepository(f.db()).find(4)->record.weekdays[0]);

    // A new time group keeps the settings until it is stored.
    QVERIFY(f.click(u"cmdAddNewTimeGroup"_s));
    f.find<QLineEdit>(u"txtTimeGroupNo"_s)->setText(u"9"_s);
    f.find<QLineEdit>(u"txtTimeGroupName"_s)->setText(u"Yemekhane"_s);
    auto* type = f.find<QComboBox>(u"cmbTimeGroupType"_s);
    type->setCurrentIndex(type->findData(10));
    WindowDriver::whenModal([](QDialog* dialog) {
        dialog->findChild<QTimeEdit*>(u"txtStartTime1"_s)->setTime(QTime(12, 15));
        dialog->findChild<QSlider*>(u"TBarHInsert"_s)->setValue(2);
        WindowDriver::click(dialog, u"cmdOK"_s);
    });
    QVERIFY(f.click(u"cmdTimeGroupSettings"_s));
    QVERIFY(!TimeGroupRepository(f.db()).find(9));
    QVERIFY(f.click(u"cmdUpdateTimeGroup"_s));
    stored = TimeGroupRepository(f.db()).find(9)->record;
    QCOMPARE(stored.startTimes[1], QTime(12, 15));
    QCOMPARE(stored.extraHours, 2);
}

void TimeGroupsPageTest::sendAndEraseReachTheSelectedPanelOrAll()
{
    StationWindow f;
    SimPanel* p1 = f.sim().addPanel(1);
    SimPanel* p2 = f.sim().addPanel(2);
    QVERIFY(TimeGroupRepository(f.db()).add(named(3, u"Mesai"_s, 3)).ok);
    QVERIFY(f.open());

    // The questions and the messages are the transfer's own tests; here each button reaches its panels.
    MessageBox::setNextAnswer(QMessageBox::Yes);
    QVERIFY(f.click(u"cmdSendTimeGroups"_s));
    QVERIFY(f.waitIdle());
    QCOMPARE(p1->requestCount("NG"), 1);
    QCOMPARE(p2->totalRequests(), 0);

    MessageBox::setNextAnswer(QMessageBox::Yes);
    QVERIFY(f.click(u"cmdSendTimeGroupsAllPanels"_s));
    QVERIFY(f.waitIdle());
    p2->inspect([](const SimPanelState& s) { QCOMPARE(s.timeGroups.keys(), QList<int>{ 3 }); });

    MessageBox::setNextAnswer(QMessageBox::Yes);
    QVERIFY(f.click(u"cmdEraseAllTimeGroups"_s));
    QVERIFY(f.waitIdle());
    p1->inspect([](const SimPanelState& s) { QVERIFY(s.timeGroups.isEmpty()); });
    p2->inspect([](const SimPanelState& s) { QCOMPARE(s.timeGroups.size(), 1); });
}

void TimeGroupsPageTest::captionsFollowTheLanguage()
{
    ShippedLanguage shipped;
    QVERIFY2(shipped.isReady(), qPrintable(shipped.error()));
    StationWindow f;
    TimeGroupRow plan = named(1, u"Hafta İçi"_s, 13);
    plan.record.weekdays = { true, true, true, true, true, false, false };
    plan.record.extraWindow = true;
    plan.record.extraStart = QTime(22, 0);
    plan.record.extraEnd = QTime(23, 30);
    QVERIFY(TimeGroupRepository(f.db()).add(plan).ok);
    QVERIFY(f.open());
    auto* tabs = f.find<QTabWidget>(u"tabMain"_s);
    auto* page = f.find<TimeGroupsPage>(u"tabTimeGroups"_s);
    tabs->setCurrentWidget(page);
    for (const int language : { 0, 1, 2 }) {
        LanguageSwitch::apply(language);
        QCOMPARE(f.find<QTableView>(u"datTimeGroups"_s)->model()->headerData(0, Qt::Horizontal).toString()
                     == u"Time Group No"_s,
                 language == 1);
        ShippedLanguage::screenshot(&f.window(), u"timegroups-page-"_s + QString::number(language));
        WindowDriver::whenModal([&](QDialog* dialog) {
            QCOMPARE(dialog->windowTitle() == u"Time Zone Type Settings"_s, language == 1);
            // Times read left to right in Arabic too.
            QCOMPARE(dialog->findChild<QTimeEdit*>(u"tmExtraStart"_s)->text(), u"22:00"_s);
            ShippedLanguage::screenshot(dialog, u"timegroups-settings-"_s + QString::number(language));
            WindowDriver::click(dialog, u"cmdCancel"_s);
        });
        QVERIFY(f.click(u"cmdTimeGroupSettings"_s));
    }
}

QTEST_MAIN(TimeGroupsPageTest)
#include "tst_TimeGroupsPage.moc"
