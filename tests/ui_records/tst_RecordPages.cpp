// The record pages by their controls' names, against simulated panels that push their passages
// and status frames to a live monitor on loopback: live rows appended without reading the table
// again, chkRefreshAtOnce, the panels' alarm messages and the alarm reset, the live monitor
// settings, the offline record button and the monitor grid's double click.

#include "operations/live/LiveRules.h"
#include "operations/records/RecordBackfill.h"
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
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTableView>
#include <QTableWidget>
#include <QTimer>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
constexpr qint64 kUnknownCard = 9999000001;

bool simFire(SimPanel* panel)
{
    bool fire = false;
    panel->inspect([&](const SimPanelState& s) { fire = s.fire; });
    return fire;
}

bool simAlarm(SimPanel* panel)
{
    bool alarm = false;
    panel->inspect([&](const SimPanelState& s) { alarm = s.alarm; });
    return alarm;
}

QList<PassageCode> codesOf(const LivePassageModel& model)
{
    QList<PassageCode> codes;
    for (int row = 0; row < model.rowCount(); ++row)
        codes << model.passage(row).record.code;
    return codes;
}

const QString kNoRights = u"Yetki hatası, Yönetici şifresi gerekli!"_s;

// The box layout, among the nested layouts of `layout`, that holds `widget`, and its index there.
QBoxLayout* boxHolding(QLayout* layout, QWidget* widget, int* index)
{
    if (!layout)
        return nullptr;
    if (auto* box = qobject_cast<QBoxLayout*>(layout); box && box->indexOf(widget) >= 0) {
        *index = box->indexOf(widget);
        return box;
    }
    for (int i = 0; i < layout->count(); ++i) {
        if (QBoxLayout* found = boxHolding(layout->itemAt(i)->layout(), widget, index))
            return found;
    }
    return nullptr;
}
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

    void livePassagesAppendWithoutRequery()
    {
        LivePassageModel* monitor = m_f->monitorPage().model();
        AccessRecordModel* records = m_f->accessPage().model();
        auto* grid = m_f->find<QTableView>(u"grdMonitor"_s);
        QVERIFY(grid && grid->model() == monitor);
        QSignalSpy monitorInserted(monitor, &QAbstractItemModel::rowsInserted);
        QSignalSpy monitorReset(monitor, &QAbstractItemModel::modelReset);
        QSignalSpy recordsInserted(records, &QAbstractItemModel::rowsInserted);
        QSignalSpy recordsReset(records, &QAbstractItemModel::modelReset);

        m_panel->presentCard(2, kUnknownCard);
        QTRY_COMPARE(monitor->rowCount(), 1);
        m_panel->pressExitButton(3);
        QTRY_COMPARE(monitor->rowCount(), 2);

        QCOMPARE(monitorReset.size(), 0);
        QCOMPARE(monitorInserted.size(), 2);
        QCOMPARE(codesOf(*monitor), (QList<PassageCode>{ PassageCode::UnknownCard, PassageCode::ButtonTrigger }));
        const PassageRow& last = monitor->passage(1);
        QCOMPARE(last.record.panelId, 4);
        QCOMPARE(last.record.door, 3);
        QVERIFY(last.record.recordNo > monitor->passage(0).record.recordNo);
        QCOMPARE(monitor->index(0, PassageColumns::Event).data().toString(), u"Tanımsız Kart"_s);
        // The grid stays on the newest passage.
        QCOMPARE(grid->currentIndex().row(), 1);

        // Stored, and on top of the access records without reading the table again.
        QCOMPARE(m_f->storedPassages(), 2);
        QTRY_COMPARE(records->rowCount(), 2);
        QCOMPARE(recordsReset.size(), 0);
        QVERIFY(recordsInserted.size() >= 1);
        QCOMPARE(records->passage(0).record.recordNo, last.record.recordNo);

        // The panel's row tells that its link is up and when its last passage came.
        auto* panels = m_f->find<PanelLiveGrid>(u"grdMonitorPanels"_s);
        QVERIFY(panels);
        const int row = panels->rowOf(4);
        QVERIFY(row >= 0);
        QCOMPARE(panels->item(row, PanelLiveGrid::Link)->text(), u"Bağlı"_s);
        QVERIFY(panels->lastRecordOf(4).isValid());
        QCOMPARE(panels->item(row, PanelLiveGrid::LastRecord)->text(),
                 panels->lastRecordOf(4).toString(u"dd/MM/yyyy HH:mm:ss"_s));
    }

    void refreshAtOnceOrOnRefresh()
    {
        auto* atOnce = m_f->find<QCheckBox>(u"chkRefreshAtOnce"_s);
        auto* waiting = m_f->find<QLabel>(u"lblWaitingRecords"_s);
        QVERIFY(atOnce && waiting);
        QVERIFY(atOnce->isChecked());
        AccessRecordModel* records = m_f->accessPage().model();
        LivePassageModel* monitor = m_f->monitorPage().model();

        atOnce->setChecked(false);
        m_panel->presentCard(1, kUnknownCard);
        m_panel->presentCard(1, kUnknownCard + 1);
        QTRY_COMPARE(monitor->rowCount(), 2);
        QCOMPARE(records->rowCount(), 0);
        QCOMPARE(m_f->accessPage().waitingRows(), 2);
        QCOMPARE(waiting->text(), u"Bekleyen yeni kayıt: 2"_s);

        QVERIFY(m_f->click(u"cmdRefresh"_s));
        QCOMPARE(records->rowCount(), 2);
        QCOMPARE(waiting->text(), QString());

        // Rows left waiting are read when the box is set again, so the grid has no gap.
        m_panel->presentCard(2, kUnknownCard + 2);
        QTRY_COMPARE(monitor->rowCount(), 3);
        QCOMPARE(records->rowCount(), 2);
        atOnce->setChecked(true);
        QCOMPARE(records->rowCount(), 3);

        QSignalSpy reset(records, &QAbstractItemModel::modelReset);
        m_panel->presentCard(3, kUnknownCard + 3);
        QTRY_COMPARE(records->rowCount(), 4);
        QCOMPARE(reset.size(), 0);
        QCOMPARE(records->passage(0).record.cardId, kUnknownCard + 3);
    }

    void fireMessageAndAlarmReset()
    {
        auto* panels = m_f->find<PanelLiveGrid>(u"grdMonitorPanels"_s);
        QVERIFY(panels);
        m_panel->setAlarm(true, true);
        QTRY_COMPARE(panels->noteOf(4), u"Yangın"_s);
        // The same frame set the panel's doors in the door status table.
        QVERIFY(m_f->sim().roster().doorStatus().cell(1, 1) != DoorStatusTable::Cell());
        QCOMPARE(panels->item(panels->rowOf(4), PanelLiveGrid::Note)->text(), u"Yangın"_s);
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
        QTRY_VERIFY(!simFire(m_panel));
        QVERIFY(!simAlarm(m_panel));
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
        bool formSeen = false;
        QTimer::singleShot(0, this, [&] {
            auto* form = m_f->window().findChild<frmMonitorSetup*>();
            if (!form)
                return;
            formSeen = true;
            auto* noUnknown = form->findChild<QCheckBox*>(u"chkNoUnknown"_s);
            auto* noDenied = form->findChild<QCheckBox*>(u"chkNoDenied"_s);
            auto* ok = form->findChild<QPushButton*>(u"cmOk"_s);
            if (!noUnknown || !noDenied || !ok) {
                form->reject();
                return;
            }
            noUnknown->setChecked(true);
            noDenied->setChecked(true);
            ok->click();
        });
        QSignalSpy changed(&m_f->monitorPage(), &MonitorPage::monitorRulesChanged);
        QVERIFY(m_f->click(u"cmdMonitorSetup"_s));
        QVERIFY(formSeen);
        QCOMPARE(changed.size(), 1);
        const LiveRules stored = LiveRules::read(m_f->db());
        QVERIFY(stored.dropUnknown);
        QVERIFY(stored.dropDenied);
        QVERIFY(!stored.dropAntiPassback);

        // The monitor follows at once: an unknown card leaves no row, the exit button after it does.
        m_panel->presentCard(1, kUnknownCard);
        m_panel->pressExitButton(2);
        LivePassageModel* monitor = m_f->monitorPage().model();
        QTRY_COMPARE(monitor->rowCount(), 1);
        QCOMPARE(codesOf(*monitor), QList<PassageCode>{ PassageCode::ButtonTrigger });
        QCOMPARE(m_f->storedPassages(), 1);

        // Opened again, the form shows what is stored; Cancel changes nothing.
        frmMonitorSetup again(m_f->db());
        QVERIFY(again.findChild<QCheckBox*>(u"chkNoUnknown"_s)->isChecked());
        QVERIFY(!again.findChild<QCheckBox*>(u"chkNoAntipassback"_s)->isChecked());
        again.findChild<QCheckBox*>(u"chkNoAntipassback"_s)->setChecked(true);
        again.reject();
        QVERIFY(!LiveRules::read(m_f->db()).dropAntiPassback);
    }

    void readDataImportsAndErases()
    {
        m_panel->seedRecords(25, QDateTime(QDate(2024, 5, 6), QTime(7, 30)));
        auto* target = m_f->find<PanelTargetBox>(u"opsPanelOptionRBox"_s);
        auto* clearRam = m_f->find<QCheckBox>(u"chkClearRAM"_s);
        auto* readData = m_f->find<QPushButton>(u"cmdReadData"_s);
        QVERIFY(target && clearRam && readData);
        target->setIndex(0);
        clearRam->setChecked(true);
        AccessRecordModel* records = m_f->accessPage().model();
        QSignalSpy busy(&m_f->bridge(), &PanelWorkerBridge::busyChanged);
        QSignalSpy progress(m_f->progressBar(), &QProgressBar::valueChanged);

        // The operator says No: nothing is read.
        MessageBox::setNextAnswer(QMessageBox::No);
        QVERIFY(m_f->click(u"cmdReadData"_s));
        QVERIFY(m_f->waitIdle());
        QCOMPARE(m_f->storedPassages(), 0);
        QCOMPARE(m_panel->recordCount(), 25);

        MessageBox::clearShownTexts();
        MessageBox::setNextAnswer(QMessageBox::Yes);
        QVERIFY(m_f->click(u"cmdReadData"_s));
        // The button waits while the worker runs; the window goes on.
        QVERIFY(!readData->isEnabled());
        QVERIFY(m_f->waitIdle());
        QTRY_VERIFY(readData->isEnabled());
        QVERIFY(busy.size() >= 2);
        QVERIFY(!progress.isEmpty());
        QCOMPARE(m_f->storedPassages(), 25);
        QCOMPARE(m_panel->recordCount(), 0);
        QVERIFY2(MessageBox::shownTexts().join(u'|').contains(
                     u"İşlem Tamamlandı, Offline Kayıtlar Silindi... Panel:4\nAlınan kayıt: 25, eklenen: 25,"_s),
                 qPrintable(MessageBox::shownTexts().join(u" | "_s)));
        // The access-record grid was read again.
        QCOMPARE(records->rowCount(), 25);
        QCOMPARE(records->passage(0).record.time, QDateTime(QDate(2024, 5, 6), QTime(7, 30, 24)));
    }

    void noisyDownloadIsToldAndListed()
    {
        m_panel->seedRecords(5, QDateTime(QDate(2024, 5, 6), QTime(7, 30)));
        SimFault noise;
        noise.mode = SimFault::Mode::Noise;
        noise.codes = { "DD" };
        m_panel->setFault(noise);
        m_f->find<PanelTargetBox>(u"opsPanelOptionRBox"_s)->setIndex(0);
        m_f->find<QCheckBox>(u"chkClearRAM"_s)->setChecked(true);
        MessageBox::clearShownTexts();
        MessageBox::setNextAnswer(QMessageBox::Yes);
        QVERIFY(m_f->click(u"cmdReadData"_s));
        QVERIFY(m_f->waitIdle());
        QTRY_VERIFY(m_f->find<QPushButton>(u"cmdReadData"_s)->isEnabled());
        // Every record is stored, the panel keeps them, and the operator is told what was kept apart.
        QCOMPARE(m_f->storedPassages(), 5);
        QCOMPARE(m_panel->recordCount(), 5);
        QVERIFY2(MessageBox::shownTexts().join(u'|').contains(
                     u"İşlem başarı ile tamamlandı!\nFakat Offline Kayıtlar Silinemedi!\n"
                     u"1 kayıt okunamadı; ayrı tutuldu.\nKayıt dışı metin: 1\nAlınan kayıt: 5,"_s),
                 qPrintable(MessageBox::shownTexts().join(u" | "_s)));

        QVERIFY(m_f->click(u"cmdUnreadRecords"_s));
        auto* list = m_f->find<QTableWidget>(u"grdUnreadRecords"_s);
        QVERIFY(list);
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
        QVERIFY(bar->maximum() > 0);
        QCOMPARE(grid->currentIndex().row(), 199);
        // Scrolled up to read, the operator is left there; back at the bottom, it follows again.
        bar->setValue(0);
        batch(25);
        QCOMPARE(bar->value(), 0);
        bar->setValue(bar->maximum());
        batch(25);
        QTRY_COMPARE(bar->value(), bar->maximum());
        QCOMPARE(grid->currentIndex().row(), 249);

        // The moment of a passage fits its column on one line.
        QVERIFY(!grid->wordWrap());
        const QString moment = grid->model()->index(0, PassageColumns::Time).data().toString();
        QCOMPARE(moment, u"31/12/2026 23:59:58"_s);
        QVERIFY(grid->columnWidth(PassageColumns::Time) > grid->fontMetrics().horizontalAdvance(moment));
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
        QVERIFY(simAlarm(m_panel));

        m_f->sim().session().logInAsAdministrator(u"admin"_s);
        doubleClick();
        QVERIFY(m_f->waitIdle());
        QTRY_VERIFY(!simAlarm(m_panel));
        QCOMPARE(MessageBox::lastShownText(), u"İşlem başarı ile tamamlandı!"_s);
        // The selection in the panel list is left as it was.
        QCOMPARE(m_f->sim().roster().selectedPosition(), 1);
    }

    void installedIntoTheMainWindow()
    {
        // The offline record box sits right after the record target choice it reads.
        auto* target = m_f->find<PanelTargetBox>(u"opsPanelOptionRBox"_s);
        QWidget* box = m_f->pages().recordPages()->retrievalBox();
        QVERIFY(target && box);
        QCOMPARE(box->parentWidget(), target->parentWidget());
        int at = -1;
        QBoxLayout* layout = boxHolding(target->parentWidget()->layout(), target, &at);
        QVERIFY(layout);
        QCOMPARE(layout->indexOf(box), at + 1);

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
        // Started again, the monitor fetches what the panels stored meanwhile.
        QVERIFY(station.backfill());
        QSignalSpy fetched(station.backfill(), &RecordBackfill::panelFetched);
        QTRY_COMPARE(fetched.size(), 1);
        QCOMPARE(fetched.at(0).at(0).toInt(), 4);
    }

private:
    std::unique_ptr<StationWindow> m_f;
    SimPanel* m_panel = nullptr;
};

QTEST_MAIN(RecordPagesTest)
#include "tst_RecordPages.moc"
