// The panels page by name: the three panel lists follow the roster and its selection, the double
// click rules, the door status grid after a status refresh, the panel search with its countdown
// in PrBar, and the counter buttons. What the operations do behind the buttons is their own tests'.

#include "support/StationWindow.h"
#include "ui/common/MessageBox.h"
#include "ui/doors/CountersBox.h"
#include "ui/live/DoorStatusGrid.h"
#include "ui/panels/PanelsPage.h"

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableWidget>

using namespace Qt::StringLiterals;

namespace {
void doubleClickRow(QTableWidget* grid, int row)
{
    const QRect rect = grid->visualItemRect(grid->item(row, 1));
    // A view takes a double click only on the row the button went down on.
    QTest::mousePress(grid->viewport(), Qt::LeftButton, {}, rect.center());
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, rect.center());
}
} // namespace

class PanelsPageTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        MessageBox::clearShownTexts();
        MessageBox::setDefaultAnswer(QMessageBox::No);
    }

    void listsShowTheRosterAndShareItsSelection()
    {
        StationWindow f;
        QVERIFY(f.sim().addPanel(1, 0x12AB));
        QVERIFY(f.sim().addPanel(2, 0x00C4));
        f.sim().addRow(9, 0, QString(), 0); // never identified: listed, but no walk reaches it
        QVERIFY(f.open());

        auto* grid = f.find<QTableWidget>(u"FlexPanel"_s);
        QCOMPARE(grid->rowCount(), 3);
        QCOMPARE(grid->item(0, 0)->text(), u"12AB"_s);
        QCOMPARE(grid->item(1, 0)->text(), u"00C4"_s);
        QCOMPARE(grid->item(0, 2)->text(), u"Panel 1"_s);
        for (const QString& name : { u"FlexPanelGate"_s, u"FlexPanelVisitor"_s })
            QCOMPARE(f.find<QTableWidget>(name)->rowCount(), 3);

        grid->setCurrentCell(1, 2);
        QCOMPARE(f.pages().roster().selectedPosition(), 2);
        QCOMPARE(f.find<QTableWidget>(u"FlexPanelGate"_s)->currentRow(), 1);
        f.find<QTableWidget>(u"FlexPanelVisitor"_s)->setCurrentCell(0, 0);
        QCOMPARE(grid->currentRow(), 0);
    }

    void doubleClickOpensOnlyReachablePanels()
    {
        StationWindow f;
        QVERIFY(f.sim().addPanel(1));
        QVERIFY(f.sim().addPanel(2));
        f.sim().makeClient({ 2 });
        QVERIFY(f.open());
        QSignalSpy opened(&f.pages(), &MainPages::panelOpened);
        auto* grid = f.find<QTableWidget>(u"FlexPanel"_s);

        doubleClickRow(grid, 0);
        QCOMPARE(MessageBox::lastShownText(), u"Bu panele Client üzerinden erişilemez!"_s);
        QCOMPARE(opened.count(), 0);

        MessageBox::clearShownTexts();
        doubleClickRow(grid, 1);
        QVERIFY(MessageBox::shownTexts().isEmpty());
        QCOMPARE(opened.count(), 1);
        QCOMPARE(opened.at(0).at(0).toInt(), 2);
    }

    void statusRefreshFillsTheDoorGrid()
    {
        StationWindow f;
        SimPanel* p1 = f.sim().addPanel(1);
        f.sim().addRow(5, 0x1005, u"127.0.0.1"_s, StationFixture::deadPort()); // answers nothing
        p1->modify([](SimPanelState& s) {
            s.doorStates[1] = 1;
            s.lineStates[3] = 0;
        });
        QVERIFY(f.open());
        auto* grid = f.find<QTableWidget>(u"grdDoorStatus"_s);
        QCOMPARE(grid->item(0, 1)->text(), u"Bilinmiyor"_s);

        QVERIFY(f.click(u"cmdRefreshStatus"_s));
        QTRY_COMPARE(grid->item(0, 1)->data(Qt::UserRole).toInt(), 0);
        QCOMPARE(grid->item(0, 0)->text(), u"\u20661 - On\u2069"_s);
        QCOMPARE(grid->item(1, 0)->text(), u"\u20665 - Off\u2069"_s);
        QCOMPARE(grid->item(0, 1)->text(), u"Kapalı"_s);
        QCOMPARE(grid->item(0, 2)->text(), u"Açık"_s);
        QCOMPARE(grid->item(0, 4)->data(Qt::UserRole + 1).toInt(), 0);
        // The silent panel stays unknown.
        QCOMPARE(grid->item(1, 1)->background().color(), DoorStatusGrid::connectionColour(3));
    }

    void searchReplacesTheListAfterItsCountdown()
    {
        StationWindow f;
        QVERIFY(f.sim().addPanel(1));
        QVERIFY(f.sim().addPanel(2));
        f.sim().addRow(30, 0x1030, u"127.0.0.1"_s, StationFixture::deadPort());
        QVERIFY(f.open());
        QSignalSpy range(f.progressBar(), &QProgressBar::valueChanged);
        QSignalSpy replaced(f.pages().panelsPage(), &PanelsPage::panelsReplaced);

        // Yes to both (the questions are the search's own tests): the search, then the list of panels found.
        MessageBox::setDefaultAnswer(QMessageBox::Yes);
        QVERIFY(f.click(u"cmdSearchPanel"_s));
        QVERIFY(!f.find<QPushButton>(u"cmdSearchPanel"_s)->isEnabled());
        QVERIFY(f.waitIdle());
        QCOMPARE(replaced.count(), 1);
        QCOMPARE(f.progressBar()->maximum(), 3);
        QVERIFY(!range.isEmpty());
        QVERIFY(!f.progressBar()->isVisible());
        QCOMPARE(f.find<QTableWidget>(u"FlexPanelGate"_s)->rowCount(), 2);
        QCOMPARE(f.find<QTableWidget>(u"grdDoorStatus"_s)->rowCount(), 2);
    }

    void counterButtonsReachThePanel()
    {
        StationWindow f;
        SimPanel* p1 = f.sim().addPanel(1);
        p1->seedRecords(5);
        QVERIFY(f.open());

        MessageBox::setNextAnswer(QMessageBox::Yes);
        QVERIFY(f.click(u"cmdReadCounter"_s));
        QVERIFY(f.waitIdle());
        QCOMPARE(f.find<QLabel>(u"lblRecordCounter"_s)->text(), u"5"_s);

        // The counters' refusals of empty lists are the operation's own test; here the group
        // list offered is read again and its choice reaches the panel.
        f.sim().addGroup(4, u"Misafir"_s);
        f.pages().panelsPage()->counters()->refreshGroups();
        MessageBox::clearShownTexts();
        MessageBox::setNextAnswer(QMessageBox::Yes);
        QVERIFY(f.click(u"cmdEraseMaxIn"_s));
        QVERIFY(f.waitIdle());
        QVERIFY(MessageBox::shownTexts().first().startsWith(u"'Misafir'"_s));
        QCOMPARE(p1->requestCount("MS"), 1);
    }
};

QTEST_MAIN(PanelsPageTest)
#include "tst_PanelsPage.moc"
