// Passages fetched from a panel's memory: the retrieval the operator or the daily run starts, and
// the back-fill of the gaps a broken live link leaves; nothing lost, nothing stored twice, a
// panel erased only once what it held is stored.
#include "operations/live/LiveMonitor.h"
#include "operations/panels/PanelWorker.h"
#include "operations/records/RecordBackfill.h"
#include "operations/records/RecordErasures.h"
#include "operations/records/RecordFetch.h"
#include "operations/records/RecordRetrieval.h"
#include "operations/records/UnreadRecordStore.h"
#include "support/FaultOf.h"
#include "support/ReadyStation.h"

#include <QSignalSpy>
#include <QTest>
#include <atomic>
#include <mutex>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

const QDateTime First(QDate(2016, 1, 30), QTime(8, 0, 0));

SimRecord passage(int user, int second)
{
    return { .userId = user, .time = QDateTime(QDate(2016, 1, 31), QTime(10, 0, second), Qt::UTC) };
}

// "door direction code user time" of each passage of a person, in order; strangers' cards only
// counted.
QStringList texts(const QList<SimRecord>& records, int* strangers = nullptr)
{
    QStringList out;
    for (const SimRecord& r : records) {
        if (r.userId == 0 && strangers)
            ++*strangers;
        else
            out << u"%1 %2 %3 %4 %5"_s.arg(r.door)
                       .arg(storedNumber(r.direction))
                       .arg(storedNumber(r.code))
                       .arg(r.userId)
                       .arg(QDateTime(r.time.date(), r.time.time()).toString(u"yyyy-MM-dd HH:mm:ss"_s));
    }
    out.sort();
    return out;
}

// The same of every stored passage.
QStringList storedTexts(StationFixture& f)
{
    QStringList out;
    for (const QVariantList& row :
         f.db().rows(u"SELECT \"Kapi ID\", \"Gecis Tipi\", \"Kod\", \"ID\", \"Tarih\" FROM \"AccessDatas\""_s))
        out << u"%1 %2 %3 %4 %5"_s.arg(row[0].toInt())
                   .arg(row[1].toInt())
                   .arg(row[2].toInt())
                   .arg(row[3].toInt())
                   .arg(Database::dateTime(row[4]).toString(u"yyyy-MM-dd HH:mm:ss"_s));
    out.sort();
    return out;
}

// Users 1-40 at the panel, holding cards 5001-5040, in group 1.
void addPanelUsers(SimPanel* panel)
{
    for (int id = 1; id <= 40; ++id) {
        SimUser user;
        user.id = id;
        user.card = 5000 + id;
        user.group = 1;
        panel->putUser(user);
    }
}

// Answers Yes to the question and pulls the selected panel's records (or every panel's).
RecordRetrieval::Result pull(StationFixture& f, bool erase, PanelTarget target = PanelTarget::Selected)
{
    f.op().yes();
    return RecordRetrieval::run(f.context(), { target, erase, false, {} });
}

} // namespace

class RecordRetrievalTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsRecordsThenErasesAfterCommit();
    void brokenStreamOrFailedStoreNeverErases();
    void emptyPanelAndBadPanelNumber();
    void eraseIsNotedUnlessAnotherAnswerCame();
    void allPanelsAndScheduledCancel();
    void passagesMadeDuringTheRetrievalAreNeverErasedUnstored();
    void shortOrNoisyStreamsAreKeptAndNeverErased();
    void busyPanelPulledWithEraseLosesNothing_data() { TestDatabases::addEngineRows(); }
    void busyPanelPulledWithEraseLosesNothing();
    void liveGapsAreBackFilledExactlyOnce();

private:
    static int rows(StationFixture& f, int panel)
    {
        return f.db().scalar(u"SELECT COUNT(*) FROM \"AccessDatas\" WHERE \"Panel ID\" = ?"_s, { panel }).toInt();
    }
};

void RecordRetrievalTest::keepsRecordsThenErasesAfterCommit()
{
    KX_READY_STATION(f);
    SimPanel* panel = f.addPanel(1);
    QVERIFY(panel);
    for (int id = 1; id <= 5; ++id)
        f.addUser(id, 1000 + id);
    panel->seedRecords(50, First);

    pull(f, false);
    QCOMPARE(f.op().questions(), QStringList{ u"Panelden Offline Kayıtları Almak İstiyor musunuz?"_s });
    // The ending says what came and what was added.
    QCOMPARE(f.op().lastTold(),
             u"İşlem başarı ile tamamlandı!\nOffline Kayıtları Silmeyi Unutmayın!\n"
             u"Alınan kayıt: 50, eklenen: 50, zaten kayıtlı: 0, ayrı tutulan: 0"_s);
    QCOMPARE(rows(f, 1), 50);
    QCOMPARE(panel->requestCount("EM"), 0);
    // The card number comes from the user; users the station does not know have none.
    QCOMPARE(f.db().scalar(u"SELECT MAX(\"Kart ID\") FROM \"AccessDatas\" WHERE \"ID\" = 3"_s).toLongLong(), 1003);
    QCOMPARE(f.db().scalar(u"SELECT MAX(\"Kart ID\") FROM \"AccessDatas\" WHERE \"ID\" = 30"_s).toLongLong(), 0);

    f.op().clearRecords();
    pull(f, true);
    QCOMPARE(f.op().lastTold(),
             u"İşlem Tamamlandı, Offline Kayıtlar Silindi... Panel:1\n"
             u"Alınan kayıt: 50, eklenen: 0, zaten kayıtlı: 50, ayrı tutulan: 0"_s);
    QCOMPARE(panel->recordCount(), 0);
    QCOMPARE(rows(f, 1), 50);
}

void RecordRetrievalTest::brokenStreamOrFailedStoreNeverErases()
{
    KX_READY_STATION(f);
    SimPanel* panel = f.addPanel(1);
    panel->seedRecords(50, First);

    SimFault cut = faultOf(SimFault::Mode::CutStream, "DD");
    cut.cutAfter = 20;
    panel->setFault(cut);
    pull(f, true);
    // What came before the cut is counted in the ending.
    QVERIFY2(f.op().lastTold().startsWith(u"Offline Kayıtlar Alınamadı... Panel:1\nAlınan kayıt: "_s),
             qPrintable(f.op().lastTold()));
    // The whole records before the cut are kept; the panel keeps everything.
    QVERIFY(rows(f, 1) >= 19 && rows(f, 1) <= 20);
    QCOMPARE(panel->requestCount("EM"), 0);
    panel->setFault(SimFault());

    // A store that fails takes nothing and erases nothing.
    QVERIFY(f.db().exec(u"ALTER TABLE \"AccessDatas\" RENAME TO \"AccessDatasAway\""_s));
    f.op().clearRecords();
    pull(f, true);
    QVERIFY(f.op().lastTold().startsWith(u"Offline Kayıtlar Alınamadı... Panel:1\n"_s));
    QCOMPARE(panel->requestCount("EM"), 0);
    QVERIFY(f.db().exec(u"ALTER TABLE \"AccessDatasAway\" RENAME TO \"AccessDatas\""_s));

    // Once it works, the rest comes in and only then is the panel erased.
    pull(f, true);
    QCOMPARE(rows(f, 1), 50);
    QCOMPARE(panel->recordCount(), 0);
}

void RecordRetrievalTest::passagesMadeDuringTheRetrievalAreNeverErasedUnstored()
{
    KX_READY_STATION(f);
    SimPanel* panel = f.addPanel(1);
    panel->seedRecords(50, First);

    // A passage is made at the panel right after each download of the first two: after the
    // stream ended and before the station's next request.
    int downloads = 0;
    bool downloadSent = false;
    int made = 0;
    int passagesToMake = 2;
    f.setSendHook([&](const QByteArray& frame) {
        if (downloadSent && made < passagesToMake)
            panel->addRecord(passage(1, ++made));
        downloadSent = frame.startsWith("%DD");
        downloads += downloadSent ? 1 : 0;
    });
    RecordRetrieval::Result result = pull(f, true);
    QCOMPARE(made, 2);
    QCOMPARE(downloads, 3);
    QCOMPARE(result.panelsErased, 1);
    QCOMPARE(rows(f, 1), 52);
    QCOMPARE(panel->recordCount(), 0);

    // A panel that never stands still is left unerased after a bounded number of downloads,
    // and everything it made is stored all the same.
    panel->seedRecords(10, First.addDays(2));
    made = 0;
    downloads = 0;
    passagesToMake = 100;
    f.op().clearRecords();
    result = pull(f, true);
    QCOMPARE(downloads, RecordRetrieval::MaxFetchRounds);
    QCOMPARE(panel->requestCount("EM"), 1);
    QVERIFY2(f.op().lastTold().startsWith(u"İşlem başarı ile tamamlandı!\nFakat Offline Kayıtlar Silinemedi!\n"
                                          u"Panelin kayıt sayısı değişti, kayıtlar silinmedi.\nAlınan kayıt: "_s),
             qPrintable(f.op().lastTold()));
    QCOMPARE(panel->recordCount(), 10 + made);
    QCOMPARE(rows(f, 1), 52 + 10 + made - 1); // the last passage came after the last download
}

void RecordRetrievalTest::shortOrNoisyStreamsAreKeptAndNeverErased()
{
    KX_READY_STATION(f);
    SimPanel* panel = f.addPanel(1);
    panel->seedRecords(20, First);

    // The panel announces 20 records and sends 19, with a proper end: not erased.
    f.setSendHook([&](const QByteArray& frame) {
        if (frame.startsWith("%DD"))
            panel->modify([](SimPanelState& state) {
                // The oldest record is lost: a smaller memory drops it.
                state.records.setCapacity(state.records.count() - 1);
                state.records.setCapacity(SimRecordMemory::kCapacity);
            });
    });
    RecordRetrieval::Result result = pull(f, true);
    QCOMPARE(panel->requestCount("EM"), 0);
    QCOMPARE(
        f.op().lastTold(),
        u"İşlem başarı ile tamamlandı!\nFakat Offline Kayıtlar Silinemedi!\n"
        u"Panelin bildirdiğinden az kayıt alındı.\nAlınan kayıt: 19, eklenen: 19, zaten kayıtlı: 0, ayrı tutulan: 0"_s);
    QCOMPARE(rows(f, 1), 19);
    f.setSendHook({});

    // Noise before the stream: every record is stored, the noise is kept for the operator, and
    // the panel is not erased.
    panel->setFault(faultOf(SimFault::Mode::Noise, "DD"));
    f.op().clearRecords();
    result = pull(f, true);
    QCOMPARE(panel->requestCount("EM"), 0);
    QCOMPARE(f.op().lastTold(),
             u"İşlem başarı ile tamamlandı!\nFakat Offline Kayıtlar Silinemedi!\n"
             u"1 kayıt okunamadı; ayrı tutuldu.\nKayıt dışı metin: 1\n"
             u"Alınan kayıt: 19, eklenen: 0, zaten kayıtlı: 19, ayrı tutulan: 1"_s);
    QCOMPARE(rows(f, 1), 19);
    QCOMPARE(f.db().rows(u"SELECT \"Neden\" FROM \"UnreadRecords\" WHERE \"Panel ID\" = 1"_s),
             QList<QVariantList>{ { u"Kayıt dışı metin"_s } });
    // Noted as received at the station clock's time.
    QCOMPARE(UnreadRecordStore(f.db()).rows(1).value(0).received, f.now());

    // Without the noise the panel is erased.
    panel->setFault(SimFault());
    result = pull(f, true);
    QCOMPARE(result.panelsErased, 1);
}

void RecordRetrievalTest::busyPanelPulledWithEraseLosesNothing()
{
    KX_READY_STATION_ON_ENGINE(f);
    SimPanel* panel = f.addPanel(1);
    addPanelUsers(panel);

    // Cards keep being presented, fast, while the station pulls with erase again and again: during
    // the download, the import and the moment between them and the erase. Only from a count
    // request to the erase it may follow does the presenter hold still: no request can tell a
    // passage made in that one round trip, and the station keeps it as short as the link allows.
    std::atomic<bool> busy{ true };
    std::atomic<bool> hold{ false };
    std::atomic<int> presented{ 0 };
    std::mutex presenting;
    QByteArray previous;
    f.setSendHook([&](const QByteArray& frame) {
        // The count that may lead to an erase follows a download.
        hold = (frame.startsWith("%RC") && previous.startsWith("%DD")) || frame.startsWith("%EM");
        previous = frame;
        std::lock_guard<std::mutex> wait(presenting); // a presentation under way ends first
    });
    QList<SimRecord> made;
    std::thread presenter([&] {
        while (busy) {
            {
                std::lock_guard<std::mutex> lock(presenting);
                if (!hold) {
                    made.append(panel->presentRandomCard());
                    ++presented;
                }
            }
            std::this_thread::sleep_for(std::chrono::microseconds(500));
        }
    });
    for (int round = 0; round < 5000 && presented < 400; ++round)
        pull(f, true);
    busy = false;
    presenter.join();
    // Then the rest, until the panel is empty.
    for (int round = 0; round < 5 && panel->recordCount() > 0; ++round)
        pull(f, true);
    QCOMPARE(panel->recordCount(), 0);

    // Every passage of a person is stored once; every stranger's card is kept apart.
    int strangers = 0;
    QCOMPARE(storedTexts(f), texts(made, &strangers));
    QCOMPARE(f.db().scalar(u"SELECT COUNT(*) FROM \"UnreadRecords\""_s).toInt(), strangers);
}

void RecordRetrievalTest::emptyPanelAndBadPanelNumber()
{
    KX_READY_STATION(f);
    SimPanel* panel = f.addPanel(1);
    pull(f, false);
    QCOMPARE(f.op().lastTold(), u"Kayıt Bulunamadı... Panel:1"_s);
    QCOMPARE(panel->requestCount("DD"), 0);

    // A panel number the panels cannot carry is refused before anything is sent.
    f.addRow(300, 0x1300, u"127.0.0.1"_s, panel->port());
    QVERIFY(f.roster().select(2));
    QCOMPARE(pull(f, false).walk.outcome, WalkResult::Outcome::Refused);
    QCOMPARE(f.op().lastTold(), u"Mevcut Panel ID hatalı, 1-255 arası bir sayı giriniz!"_s);
}

void RecordRetrievalTest::eraseIsNotedUnlessAnotherAnswerCame()
{
    KX_READY_STATION(f);
    SimPanel* panel = f.addPanel(1);
    panel->seedRecords(3, First);
    QCOMPARE(pull(f, false).added, 3);
    const PanelAddress address = f.roster().entryForPanel(1)->address();
    const auto noted = [&] {
        RecordErasures::Mark mark;
        RecordErasures(f.db()).load(1, &mark);
        return mark.lastPassage;
    };
    QVERIFY(f.link().ConnectPanel(u"127.0.0.1"_s, panel->port()));

    // Another panel's answer: this panel did not take the erase, so nothing is noted.
    panel->setFault(faultOf(SimFault::Mode::WrongPanel, {}, 1));
    QCOMPARE(RecordFetch::erase(f.link(), f.db(), 1, address, f.now()).outcome(), CommandOutcome::OtherCode);
    QCOMPARE(noted(), 0);

    // No answer: the panel may have erased all the same, so the moment is noted.
    panel->setFault(faultOf(SimFault::Mode::Drop, {}, 1));
    QCOMPARE(RecordFetch::erase(f.link(), f.db(), 1, address, f.now()).outcome(), CommandOutcome::NoAnswer);
    QCOMPARE(noted(), 3);
}

void RecordRetrievalTest::allPanelsAndScheduledCancel()
{
    KX_READY_STATION(f);
    SimPanel* one = f.addPanel(1);
    SimPanel* two = f.addPanel(2);
    one->seedRecords(20, First);
    two->seedRecords(30, First);

    pull(f, false, PanelTarget::All);
    QCOMPARE(f.op().told(),
             QStringList{ u"Tüm işlemler tamamlandı!\nOffline Kayıtları Silmeyi Unutmayın!\n"
                          u"Alınan kayıt: 50, eklenen: 50, zaten kayıtlı: 0, ayrı tutulan: 0"_s });

    // The daily run asks nothing and stops at the cancel flag before the second panel.
    f.op().clearRecords();
    f.op().setCancelAfter(1);
    f.session().logOut();
    const RecordRetrieval::Result result = RecordRetrieval::run(f.context(), { PanelTarget::All, true, true, {} });
    QCOMPARE(result.walk.outcome, WalkResult::Outcome::Stopped);
    QVERIFY(f.op().questions().isEmpty());
    QCOMPARE(one->recordCount(), 0);
    QCOMPARE(two->recordCount(), 30);
}

void RecordRetrievalTest::liveGapsAreBackFilledExactlyOnce()
{
    KX_READY_STATION(f);
    SimPanel* panel = f.addPanel(1);
    // Every passage by a known user, so that each is in the panel's memory too.
    panel->modify([](SimPanelState& state) {
        state.groups.insert(1, { .number = 1, .doorAllowed = { true, true, true, true } });
    });
    addPanelUsers(panel);

    LiveSettings settings;
    settings.listenAddress = QHostAddress(QHostAddress::LocalHost);
    settings.listenUdp = false;
    auto monitor = std::make_unique<LiveMonitor>(f.clock());
    QString error;
    QVERIFY2(monitor->start(f.db(), settings, &f.roster(), &error), qPrintable(error));
    const quint16 port = monitor->tcpPort();

    PanelWorker worker;
    PanelLink::Settings linkSettings;
    linkSettings.pacingMs = 0;
    QVERIFY2(worker.start(f.db(), linkSettings, &error), qPrintable(error));
    RecordBackfill backfill(f.roster(), f.clock(),
                            [&worker](RecordBackfill::Job job) { return worker.submit(std::move(job)); });
    backfill.setRetryIntervalMs(50);
    backfill.watch(*monitor);
    QSignalSpy fetched(&backfill, &RecordBackfill::panelFetched);

    int user = 0;
    const auto pass = [&] {
        ++user;
        panel->presentCard(1 + user % 4, 5000 + user);
    };
    panel->setPushTarget(u"127.0.0.1"_s, port);
    for (int i = 0; i < 5; ++i)
        pass();
    QTRY_COMPARE(f.db().scalar(u"SELECT COUNT(*) FROM \"AccessDatas\""_s).toInt(), 5);
    QCOMPARE(monitor->connectedPanels(), QList<qint32>{ 1 });

    // The live link breaks (the next frame waits for a place nobody listens at), then the panel
    // is told to push nowhere: these passages reach the station only through its memory.
    panel->setPushTarget(u"127.0.0.1"_s, StationFixture::deadPort());
    pass();
    QTRY_VERIFY(monitor->connectedPanels().isEmpty());
    panel->setPushTarget(QString(), 0);
    for (int i = 0; i < 5; ++i)
        pass();
    panel->setPushTarget(u"127.0.0.1"_s, port);
    pass();
    QTRY_COMPARE(fetched.size(), 1);
    QTRY_VERIFY(backfill.isIdle());
    monitor->flush();
    QCOMPARE(panel->recordCount(), 12); // the back-fill never erases
    QCOMPARE(storedTexts(f), texts(panel->records()));

    // The station stops; passages go on; at start-up every panel is back-filled while the
    // panel's queued frames arrive live as well.
    monitor.reset();
    for (int i = 0; i < 6; ++i)
        pass();
    monitor = std::make_unique<LiveMonitor>(f.clock());
    settings.tcpPort = port;
    QVERIFY2(monitor->start(f.db(), settings, &f.roster(), &error), qPrintable(error));
    backfill.watch(*monitor);
    backfill.requestAll();
    QTRY_COMPARE(fetched.size(), 2);
    pass();
    QTRY_COMPARE(monitor->connectedPanels(), QList<qint32>{ 1 });
    QTRY_COMPARE(f.db().scalar(u"SELECT COUNT(*) FROM \"AccessDatas\""_s).toInt(), 19);
    // The six passages queued while the station was down and the last one all arrive live too.
    QTRY_COMPARE(monitor->counters().passagesReceived, 7);
    monitor->flush();
    QCOMPARE(storedTexts(f), texts(panel->records()));
    monitor.reset();
    worker.stop();
}

QTEST_GUILESS_MAIN(RecordRetrievalTest)
#include "tst_RecordRetrieval.moc"
