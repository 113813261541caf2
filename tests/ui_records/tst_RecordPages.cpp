// The record pages by their controls' names, against simulated panels that push their passages
// and status frames to a live monitor on loopback: live rows appended without reading the table
// again, chkRefreshAtOnce, the panels' alarm messages and the alarm reset, the live monitor
// settings, the offline record button and the monitor grid's double click.

#include "operations/live/LiveRules.h"
#include "operations/records/RecordRow.h"
#include "operations/station/Station.h"
#include "support/StationWindow.h"
#include "ui/common/MessageBox.h"
#include "ui/common/PanelTargetBox.h"
#include "ui/live/LivePassageModel.h"
#include "ui/live/MonitorPage.h"
#include "ui/live/PanelLiveGrid.h"
#include "ui/live/frmMonitorSetup.h"
#include "ui/main/MainPages.h"
#include "ui/main/PanelWorkerBridge.h"
#include "ui/main/frmMain.h"
#include "ui/records/AccessRecordModel.h"
#include "ui/records/AccessRecordsPage.h"
#include "ui/records/PassageColumns.h"
#include "ui/records/RecordPages.h"
#include "ui/records/RecordRetrievalBox.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTableView>
#include <QTableWidget>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {
constexpr qint64 kUnknownCard = 9999000001;

SimPanelState simState(SimPanel* panel)
{
    SimPanelState state;
    panel->inspect([&](const SimPanelState& s) { state = s; });
    return state;
}

const QString kNoRights = u"Yetki hatası, Yönetici şifresi gerekli!"_s;

} // namespace

class RecordPagesTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        MessageBox::clearShownTexts();
        MessageBox::setDefaultAnswer(QMessageBox::No);
        m_f = std::make_unique<StationWindow>(true);
        QVERIFY2(m_f->open(), qPrintable(m_f->error()));
        m_panel = m_f->addPanel(4);
        QVERIFY(m_panel);
    }

    void cleanup()
    {
        m_f.reset();
        m_panel = nullptr;
    }

    void liveRowsAppearAtOnceOrOnRefresh()
    {
        LivePassageModel* monitor = m_f->monitorPage().model();
        AccessRecordModel* records = m_f->accessPage().model();
        auto* grid = m_f->find<QTableView>(u"grdMonitor"_s);
        QSignalSpy recordsReset(records, &QAbstractItemModel::modelReset);

        m_panel->presentCard(2, kUnknownCard);
        QTRY_COMPARE(monitor->rowCount(), 1);
        m_panel->pressExitButton(3);
        QTRY_COMPARE(monitor->rowCount(), 2);
        QCOMPARE(monitor->passage(1).record.code, PassageCode::ButtonTrigger);
        QCOMPARE(monitor->index(0, PassageColumns::Event).data().toString(), u"Tanımsız Kart"_s);
        // The grid stays on the newest passage.
        QCOMPARE(grid->currentIndex().row(), 1);

        // On top of the access records without reading the table again.
        QTRY_COMPARE(records->rowCount(), 2);
        QCOMPARE(recordsReset.size(), 0);
        QCOMPARE(records->passage(0).record.recordNo, monitor->passage(1).record.recordNo);

        // The panel's row tells that its link is up and when its last passage came.
        auto* panels = m_f->find<PanelLiveGrid>(u"grdMonitorPanels"_s);
        const int row = panels->rowOf(4);
        QCOMPARE(panels->item(row, PanelLiveGrid::Link)->text(), u"Bağlı"_s);
        QCOMPARE(panels->item(row, PanelLiveGrid::LastRecord)->text(),
                 panels->lastRecordOf(4).toString(u"dd/MM/yyyy HH:mm:ss"_s));

        // Without chkRefreshAtOnce new rows wait for cmdRefresh.
        auto* atOnce = m_f->find<QCheckBox>(u"chkRefreshAtOnce"_s);
        auto* waiting = m_f->find<QLabel>(u"lblWaitingRecords"_s);
        atOnce->setChecked(false);
        m_panel->presentCard(1, kUnknownCard + 1);
        m_panel->presentCard(1, kUnknownCard + 2);
        QTRY_COMPARE(monitor->rowCount(), 4);
        QCOMPARE(records->rowCount(), 2);
        QCOMPARE(waiting->text(), u"Bekleyen yeni kayıt: 2"_s);
        QVERIFY(m_f->click(u"cmdRefresh"_s));
        QCOMPARE(records->rowCount(), 4);
        QCOMPARE(waiting->text(), QString());
        // Rows left waiting are read when the box is set again, so the grid has no gap.
        m_panel->presentCard(2, kUnknownCard + 3);
        QTRY_COMPARE(monitor->rowCount(), 5);
        QCOMPARE(records->rowCount(), 4);
        atOnce->setChecked(true);
        QCOMPARE(records->rowCount(), 5);
    }

    void fireMessageAndAlarmReset()
    {
        auto* panels = m_f->find<PanelLiveGrid>(u"grdMonitorPanels"_s);
        m_panel->setAlarm(true, true);
        QTRY_COMPARE(panels->item(panels->rowOf(4), PanelLiveGrid::Note)->text(), u"Yangın"_s);
        const QString question = u"Sistemdeki panellerin alarm-yangın durumları iptal edilecek. Onaylıyor musunuz?"_s;

        // Declined: nothing is sent.
        MessageBox::setNextAnswer(QMessageBox::No);
        QVERIFY(m_f->click(u"cmdClearFireAlarm"_s));
        QCOMPARE(MessageBox::lastShownText(), question);

        // Confirmed without administrator rights: refused.
        m_f->sim().session().logInAsOperator(u"ali"_s);
        MessageBox::setNextAnswer(QMessageBox::Yes);
        QVERIFY(m_f->click(u"cmdClearFireAlarm"_s));
        QCOMPARE(MessageBox::lastShownText(), kNoRights);

        // Confirmed by an administrator: the datagram reaches the panel, which reports back. By
        // then a datagram of the refused reset would have arrived before it: there is one only.
        m_f->sim().session().logInAsAdministrator(u"admin"_s);
        MessageBox::setNextAnswer(QMessageBox::Yes);
        QVERIFY(m_f->click(u"cmdClearFireAlarm"_s));
        QTRY_VERIFY(!simState(m_panel).fire);
        QTRY_COMPARE(panels->noteOf(4), QString());
        QCOMPARE(m_panel->requestCount("AS"), 1);
    }

    void monitorSettingsStoredAndApplied()
    {
        // Without rights the form does not open.
        m_f->sim().session().logOut();
        QVERIFY(!m_f->monitorPage().openMonitorSetup());
        QCOMPARE(MessageBox::lastShownText(), kNoRights);

        m_f->sim().session().logInAsAdministrator(u"admin"_s);
        QTimer::singleShot(0, this, [&] {
            auto* form = m_f->window().findChild<frmMonitorSetup*>();
            form->findChild<QCheckBox*>(u"chkNoUnknown"_s)->setChecked(true);
            form->findChild<QCheckBox*>(u"chkNoDenied"_s)->setChecked(true);
            form->findChild<QPushButton*>(u"cmOk"_s)->click();
        });
        QSignalSpy changed(&m_f->monitorPage(), &MonitorPage::monitorRulesChanged);
        QVERIFY(m_f->click(u"cmdMonitorSetup"_s));
        QCOMPARE(changed.size(), 1);
        const LiveRules stored = LiveRules::read(m_f->db());
        QVERIFY(stored.dropUnknown && stored.dropDenied);

        // The monitor follows at once: an unknown card leaves no row, the exit button after it does.
        m_panel->presentCard(1, kUnknownCard);
        m_panel->pressExitButton(2);
        LivePassageModel* monitor = m_f->monitorPage().model();
        QTRY_COMPARE(monitor->rowCount(), 1);
        QCOMPARE(monitor->passage(0).record.code, PassageCode::ButtonTrigger);

        // Opened again, the form shows what is stored.
        frmMonitorSetup again(m_f->db());
        QVERIFY(again.findChild<QCheckBox*>(u"chkNoUnknown"_s)->isChecked());
    }

    void readDataStoresShowsAndListsWhatWasKeptApart()
    {
        // A noisy line: the records are read and one stray piece is kept apart (what a download
        // stores, erases and tells is the retrieval's own test).
        m_panel->seedRecords(25, QDateTime(QDate(2024, 5, 6), QTime(7, 30)));
        SimFault noise;
        noise.mode = SimFault::Mode::Noise;
        noise.codes = { "DD" };
        m_panel->setFault(noise);
        m_f->find<PanelTargetBox>(u"opsPanelOptionRBox"_s)->setIndex(0);
        m_f->find<QCheckBox>(u"chkClearRAM"_s)->setChecked(true);
        auto* readData = m_f->find<QPushButton>(u"cmdReadData"_s);
        QSignalSpy progress(m_f->progressBar(), &QProgressBar::valueChanged);
        MessageBox::setNextAnswer(QMessageBox::Yes);
        QVERIFY(m_f->click(u"cmdReadData"_s));
        // The button waits while the worker runs; the window goes on.
        QVERIFY(!readData->isEnabled());
        QVERIFY(m_f->waitIdle());
        QTRY_VERIFY(readData->isEnabled());
        QVERIFY(!progress.isEmpty());
        // The erase asked for was passed on (and not done, the line being noisy).
        const QString told = MessageBox::shownTexts().join(u" | "_s);
        QVERIFY2(told.contains(u"Offline Kayıtlar Silinemedi!"_s) && told.contains(u"Alınan kayıt: 25,"_s),
                 qPrintable(told));
        // The access-record grid was read again, and the box lists the piece kept apart.
        QCOMPARE(m_f->accessPage().model()->rowCount(), 25);
        QVERIFY(m_f->click(u"cmdUnreadRecords"_s));
        auto* list = m_f->find<QTableWidget>(u"grdUnreadRecords"_s);
        QCOMPARE(list->rowCount(), 1);
        QCOMPARE(list->item(0, 0)->text(), u"4"_s);
        QCOMPARE(list->item(0, 2)->text(), u"Kayıt dışı metin"_s);
        list->window()->close();
    }

    void monitorGridFollowsTheNewestPassage()
    {
        m_f->mainWindow().tabMain()->setCurrentWidget(&m_f->monitorPage());
        auto* grid = m_f->find<QTableView>(u"grdMonitor"_s);
        QScrollBar* bar = grid->verticalScrollBar();
        qint64 recordNo = 0;
        const auto batch = [&](int count) {
            QList<RecordRow> rows;
            for (int i = 0; i < count; ++i) {
                RecordRow row;
                row.recordNo = ++recordNo;
                row.panelId = 4;
                row.door = 1;
                row.time = QDateTime(QDate(2026, 12, 31), QTime(23, 59, 58));
                rows << row;
            }
            m_f->monitorPage().addPassages(rows);
            QCoreApplication::processEvents();
        };
        // Batch after batch, well past one screen: the newest passage stays in view.
        for (int round = 0; round < 8; ++round) {
            batch(25);
            QTRY_COMPARE(bar->value(), bar->maximum());
        }
        QCOMPARE(grid->currentIndex().row(), 199);
        // Scrolled up to read, the operator is left there; back at the bottom, it follows again.
        bar->setValue(0);
        batch(25);
        QCOMPARE(bar->value(), 0);
        bar->setValue(bar->maximum());
        batch(25);
        QTRY_COMPARE(bar->value(), bar->maximum());
        QCOMPARE(grid->currentIndex().row(), 249);
    }

    void doubleClickClearsThePanelAlarm()
    {
        auto* grid = m_f->find<QTableView>(u"grdMonitor"_s);
        m_panel->presentCard(1, kUnknownCard);
        QTRY_COMPARE(grid->model()->rowCount(), 1);
        m_panel->setAlarm(true, false);

        auto doubleClick = [&] {
            const QRect rect = grid->visualRect(grid->model()->index(0, PassageColumns::Time));
            // A click first, as a hand does: the view takes a double click only on the row it saw pressed.
            QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, rect.center());
            QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, rect.center());
        };
        m_f->sim().session().logOut();
        doubleClick();
        QCOMPARE(MessageBox::lastShownText(), kNoRights);
        QVERIFY(!m_f->bridge().busy());
        QVERIFY(simState(m_panel).alarm);

        m_f->sim().session().logInAsAdministrator(u"admin"_s);
        doubleClick();
        QVERIFY(m_f->waitIdle());
        QTRY_VERIFY(!simState(m_panel).alarm);
        QCOMPARE(MessageBox::lastShownText(), u"İşlem başarı ile tamamlandı!"_s);
        // The selection in the panel list is left as it was.
        QCOMPARE(m_f->sim().roster().selectedPosition(), 1);
    }

    void installedIntoTheMainWindow()
    {
        // The offline record box sits beside the record target choice it reads.
        QCOMPARE(m_f->pages().recordPages()->retrievalBox()->parentWidget(),
                 m_f->find<PanelTargetBox>(u"opsPanelOptionRBox"_s)->parentWidget());

        // Two panels are told to push to one port, a third to another: the commoner one is
        // where the station listens in the field.
        m_f->sim().addRow(5, 0x1005, u"127.0.0.1"_s, StationFixture::deadPort());
        m_f->sim().addRow(6, 0x1006, u"127.0.0.1"_s, StationFixture::deadPort());
        // Two free ports, chosen by the system.
        const quint16 lone = StationFixture::deadPort();
        quint16 common = StationFixture::deadPort();
        while (common == lone)
            common = StationFixture::deadPort();
        const QString setPort = u"UPDATE \"PanelSettings\" SET \"Panel Remote TCP Port\" = ? WHERE \"Panel ID\" = ?"_s;
        QVERIFY(m_f->db().exec(setPort, { int(lone), 4 }));
        QVERIFY(m_f->db().exec(setPort, { int(common), 5 }));
        QVERIFY(m_f->db().exec(setPort, { int(common), 6 }));
        Station& station = m_f->sim().station();
        station.network().livePortFromPanels = true;
        QString error;
        QVERIFY2(m_f->pages().recordPages()->startMonitor(&error), qPrintable(error));
        QCOMPARE(station.live().tcpPort(), common);
    }

private:
    std::unique_ptr<StationWindow> m_f;
    SimPanel* m_panel = nullptr;
};

QTEST_MAIN(RecordPagesTest)
#include "tst_RecordPages.moc"
