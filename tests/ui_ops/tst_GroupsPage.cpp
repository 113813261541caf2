// The access groups page by name: new-entry mode with one row per panel in use, doors, time groups
// and zones edited in the detail grid through their pickers, storing, the titles, deleting after
// the question, the daily permission request, and the send and erase buttons against simulated
// panels. The rules behind the buttons are the repository's and the transfer's tests.

#include "ShippedLanguage.h"
#include "WindowDriver.h"
#include "operations/configuration/GroupRepository.h"
#include "operations/configuration/TimeGroupRepository.h"
#include "operations/configuration/ZoneRepository.h"
#include "support/StationWindow.h"
#include "ui/common/MessageBox.h"
#include "ui/configuration/GroupDetailGrid.h"
#include "ui/configuration/GroupsPage.h"
#include "ui/main/LanguageSwitch.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace {
TimeGroupRow timeGroup(int number, const QString& name)
{
    TimeGroupRow row;
    row.record.number = number;
    row.name = name;
    return row;
}
} // namespace

class GroupsPageTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        MessageBox::clearShownTexts();
        MessageBox::setDefaultAnswer(QMessageBox::No);
        LanguageSwitch::apply(0);
    }

    void groupsAreEnteredEditedInTheGridAndDeleted();
    void sendAndEraseReachTheSelectedPanelOrAll();
};

void GroupsPageTest::groupsAreEnteredEditedInTheGridAndDeleted()
{
    StationWindow f;
    f.sim().addRow(1, 0x1201, u"127.0.0.1"_s, 4101);
    f.sim().addRow(2, 0x1202, u"127.0.0.1"_s, 4102);
    f.sim().addRow(3, 0, u"127.0.0.1"_s, 4103); // a slot not in use
    QVERIFY(TimeGroupRepository(f.db()).add(timeGroup(5, u"Mesai"_s)).ok);
    QVERIFY(ZoneRepository(f.db()).add({ 3, u"Otopark"_s }).ok);
    QVERIFY(f.open());
    auto* page = f.find<GroupsPage>(u"tabGroups"_s);
    auto* master = f.find<QTableView>(u"datGroupsMaster"_s);
    auto* detail = f.find<GroupDetailGrid>(u"datGroupsDetail"_s);
    auto* number = f.find<QLineEdit>(u"txtGroupNo"_s);
    auto* name = f.find<QLineEdit>(u"txtGroupName"_s);
    QCOMPARE(master->model()->rowCount(), 0);

    // New entry: one row per panel in use, edited in the grid, stored with the group.
    QVERIFY(f.click(u"cmdAddNewGroup"_s));
    QCOMPARE(f.find<QPushButton>(u"cmdAddNewGroup"_s)->text(), u"Vazgeç"_s);
    QCOMPARE(detail->model()->rowCount(), 2);
    QVERIFY(f.click(u"cmdLastGroupNo"_s));
    QCOMPARE(number->text(), u"1"_s);
    name->setText(u"Ofis"_s);
    f.find<QLineEdit>(u"txtAccessCount"_s)->setText(u"300"_s);
    f.find<QCheckBox>(u"chkAntiPassbackOff"_s)->setChecked(true);
    WindowDriver::choosePickerRow(0);
    QVERIFY(f.click(u"cmdSelectMaxInCountZone"_s));
    QCOMPARE(f.find<QLineEdit>(u"txtMaxInCountZone"_s)->text(), u"3"_s);
    QAbstractItemModel* cells = detail->model();
    QVERIFY(cells->setData(cells->index(0, GroupDetailGrid::FirstDoor + 1), Qt::Checked, Qt::CheckStateRole));
    QString title;
    WindowDriver::choosePickerRow(0, &title);
    detail->pick(cells->index(0, GroupDetailGrid::FirstTimeGroup + 1));
    QCOMPARE(title, u"Zaman Grup Arama"_s);
    WindowDriver::choosePickerRow(0, &title);
    detail->pick(cells->index(1, GroupDetailGrid::FirstZone + 3));
    QCOMPARE(title, u"Global Bölge Seçimi"_s);
    QCOMPARE(cells->index(0, GroupDetailGrid::FirstTimeGroup + 1).data().toString(), u"Mesai"_s);
    QCOMPARE(cells->index(1, GroupDetailGrid::FirstZone + 3).data().toString(), u"Otopark"_s);
    QVERIFY(f.click(u"cmdUpdateGroup"_s));
    QCOMPARE(MessageBox::shownTexts(), QStringList{});
    QCOMPARE(f.find<QPushButton>(u"cmdAddNewGroup"_s)->text(), u"Yeni"_s);

    const GroupRepository groups(f.db());
    const GroupMasterRow stored = groups.find(1).value_or(GroupMasterRow{});
    QCOMPARE(stored.accessCount, 300);
    QCOMPARE(stored.insideCountZone, 3);
    QVERIFY(stored.antiPassbackOff);
    QList<GroupDetailRow> rows = groups.details(1);
    QCOMPARE(rows.at(0).doors, (std::array<bool, 4>{ false, true, false, false }));
    QCOMPARE(rows.at(0).doorTimeGroups, (std::array<int, 4>{ 0, 5, 0, 0 }));
    QCOMPARE(rows.at(1).doorZones, (std::array<int, 4>{ 1, 1, 1, 3 }));
    QCOMPARE(f.find<QLabel>(u"lblGroupDetailTitle"_s)->text(), u"\"Ofis\" Geçiş Grubu İçin Kapı ve Geçiş Ayarları"_s);

    // The grid's edits alone: a door closed, a time group taken away.
    QVERIFY(cells->setData(cells->index(0, GroupDetailGrid::FirstDoor + 1), Qt::Unchecked, Qt::CheckStateRole));
    QVERIFY(cells->setData(cells->index(1, GroupDetailGrid::FirstDoor), Qt::Checked, Qt::CheckStateRole));
    detail->setCurrentIndex(cells->index(0, GroupDetailGrid::FirstTimeGroup + 1));
    QTest::keyClick(detail, Qt::Key_Delete);
    QVERIFY(f.click(u"cmdUpdateAllGroups"_s));
    rows = groups.details(1);
    QCOMPARE(rows.at(0).doors, (std::array<bool, 4>{}));
    QCOMPARE(rows.at(1).doors, (std::array<bool, 4>{ true, false, false, false }));

    // The daily permission window is asked for the group of the master grid.
    QSignalSpy daily(page, &GroupsPage::dailyPermissionRequested);
    QVERIFY(f.click(u"cmdDailyPermission"_s));
    QCOMPARE(daily.size(), 1);
    QCOMPARE(daily.at(0).at(0).toInt(), 1);

    // The search moves to the chosen group; deleting asks first.
    GroupMasterRow last;
    last.number = 1280;
    last.name = u"Son"_s;
    QVERIFY(groups.add(last).ok);
    page->reload();
    WindowDriver::choosePickerRow(1, &title);
    QVERIFY(f.click(u"cmdFindGroup"_s));
    QCOMPARE(title, u"Grup Arama"_s);
    QCOMPARE(number->text(), u"1280"_s);
    QVERIFY(f.click(u"cmdDeleteGroup"_s));
    QVERIFY(groups.find(1280));
    MessageBox::setNextAnswer(QMessageBox::Yes);
    QVERIFY(f.click(u"cmdDeleteGroup"_s));
    QVERIFY(!groups.find(1280));
    QCOMPARE(master->model()->rowCount(), 1);

    // Without administrator rights nothing is stored.
    f.sim().session().logOut();
    MessageBox::clearShownTexts();
    name->setText(u"Gizli"_s);
    QVERIFY(f.click(u"cmdUpdateGroup"_s));
    QVERIFY(MessageBox::shownTexts().contains(u"Yetki hatası, Yönetici şifresi gerekli!"_s));
    QCOMPARE(groups.find(1)->name, u"Ofis"_s);
}

void GroupsPageTest::sendAndEraseReachTheSelectedPanelOrAll()
{
    ShippedLanguage shipped;
    QVERIFY2(shipped.isReady(), qPrintable(shipped.error()));

    StationWindow f;
    SimPanel* p1 = f.sim().addPanel(1);
    SimPanel* p2 = f.sim().addPanel(2);
    GroupRepository groups(f.db());
    GroupMasterRow ofis;
    ofis.number = 4;
    ofis.name = u"Ofis"_s;
    QList<GroupDetailRow> rows = groups.freshDetails();
    rows[0].doors = { true, true, false, false };
    QVERIFY(groups.add(ofis, rows).ok);
    QVERIFY(f.open());
    auto* tabs = f.find<QTabWidget>(u"tabMain"_s);
    auto* page = f.find<GroupsPage>(u"tabGroups"_s);
    tabs->setCurrentWidget(page);

    MessageBox::setNextAnswer(QMessageBox::Yes);
    QVERIFY(f.click(u"cmdSendZoneSelectedPanel"_s));
    QVERIFY(f.waitIdle());
    p1->inspect([](const SimPanelState& s) { QCOMPARE(s.groups.keys(), QList<int>{ 4 }); });
    QCOMPARE(p2->totalRequests(), 0);

    MessageBox::setNextAnswer(QMessageBox::Yes);
    QVERIFY(f.click(u"cmdSendTimeZoneAllPanels"_s));
    QVERIFY(f.waitIdle());
    p2->inspect([](const SimPanelState& s) { QCOMPARE(s.groups.keys(), QList<int>{ 4 }); });

    MessageBox::clearShownTexts();
    MessageBox::setNextAnswer(QMessageBox::Yes);
    QVERIFY(f.click(u"cmdEraseAllGroups"_s));
    QVERIFY(f.waitIdle());
    QCOMPARE(MessageBox::shownTexts().last(), u"İşlem başarı ile tamamlandı!"_s);
    p1->inspect([](const SimPanelState& s) { QVERIFY(s.groups.isEmpty()); });

    // Captions follow the language.
    for (const int language : { 0, 1, 2 }) {
        LanguageSwitch::apply(language);
        QCOMPARE(f.find<QLabel>(u"lblGroupDetailTitle"_s)->text().endsWith(u"Door and Access Settings of the Group"_s),
                 language == 1);
        ShippedLanguage::screenshot(&f.window(), u"groups-page-"_s + QString::number(language));
    }
}

QTEST_MAIN(GroupsPageTest)
#include "tst_GroupsPage.moc"
