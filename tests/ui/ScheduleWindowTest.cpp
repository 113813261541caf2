// The scheduler in the main window: the four daily settings, the tick that starts the runs, the
// periodic backup of the server station and the backup window, with the clock set by hand.

#include "MainWindowFixture.h"
#include "WindowDriver.h"
#include "operations/schedule/BackupPlanRepository.h"
#include "operations/station/Station.h"
#include "store/Clock.h"
#include "store/ConfigFile.h"
#include "store/InstanceLock.h"
#include "store/Translate.h"
#include "ui/common/MessageBox.h"
#include "ui/main/MainPages.h"
#include "ui/main/PanelWorkerBridge.h"
#include "ui/main/frmMain.h"
#include "ui/schedule/MainSchedule.h"
#include "ui/users/frmSendingUsersAllPanels.h"

#include <QAction>
#include <QCheckBox>
#include <QDateEdit>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QTableWidget>
#include <QTest>
#include <QTimeEdit>

using namespace Qt::StringLiterals;

namespace {

const QDate Day(2026, 2, 28);

bool addPassages(Database& db, const QList<QDateTime>& times)
{
    QList<QVariantList> rows;
    int n = 0;
    for (const QDateTime& time : times)
        rows << QVariantList{ 1, 1, 10 + n, 900 + n++, db.toSql(time), 0, 1 };
    return db.insertRows(u"AccessDatas"_s,
                         { u"Panel ID"_s, u"Kapi ID"_s, u"ID"_s, u"Kart ID"_s, u"Tarih"_s, u"Gecis Tipi"_s, u"Kod"_s },
                         rows);
}

qint64 stored(Database& db)
{
    return db.scalar(u"SELECT count(*) FROM \"AccessDatas\""_s).toLongLong();
}

} // namespace

class ScheduleWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { MessageBox::setDefaultAnswer(QMessageBox::Yes); }
    void init() { MessageBox::clearShownTexts(); }

    void dailySettingsAreKeptAtOnceAndStartTheirRun()
    {
        MainWindowFixture f;
        QVERIFY2(f.ok(), qPrintable(f.error()));
        frmMain& window = f.window();
        MainPages* pages = MainPages::install(window);
        ManualClock clock(QDateTime(Day, QTime(7, 0)));
        MainSchedule* schedule = MainSchedule::install(window, *pages, clock);
        const QString config = f.start().folder.configFile();

        auto* sendOn = WindowDriver::find<QCheckBox>(&window, u"chkDailySendUser"_s);
        auto* sendTime = WindowDriver::find<QTimeEdit>(&window, u"dtDailySendUserTime"_s);
        // Narrowing to changed users means nothing until users are sent daily.
        auto* changedOnly = WindowDriver::find<QCheckBox>(&window, u"chkDailySendChangedOnly"_s);
        QVERIFY(!sendOn->isChecked() && !changedOnly->isEnabled());
        sendTime->setTime(QTime(8, 0));
        sendOn->setChecked(true);
        QVERIFY(changedOnly->isEnabled());
        // Another setting written later keeps the daily ones.
        window.changeLanguage(0);
        QVERIFY(ConfigFile::read(config).settings.dailySendOn);
        QCOMPARE(ConfigFile::read(config).settings.dailySendTime(), QTime(8, 0));

        // The tick at the set time (its window and once-a-day rule are the scheduler's tests)
        // starts the send in its window, without a message box.
        frmSendingUsersAllPanels* sending = pages->sendingWindow();
        clock.set(QDateTime(Day, QTime(7, 59, 58)));
        window.clockTick();
        QVERIFY(sending->isVisible() || !sending->messageText().isEmpty());
        QTRY_VERIFY(!pages->bridge().busy());
        QTRY_VERIFY(!schedule->runner().runUnderWay());
        QCOMPARE(sending->messageText(), u"Kullanıcı listesi boş!"_s);
        QVERIFY(MessageBox::shownTexts().isEmpty());

        // Another program (kx410ctl) changes the file: the next tick shows and follows it.
        QVERIFY(ConfigFile::update(config, [](StationSettings& s) {
            s.dailyReceiveOn = true;
            s.setDailyReceiveTime(QTime(9, 30));
        }));
        {
            QFile file(config);
            QVERIFY(file.open(QIODevice::ReadWrite));
            QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(5), QFileDevice::FileModificationTime));
        }
        window.clockTick();
        QVERIFY(WindowDriver::find<QCheckBox>(&window, u"chkDailyReceiveLogs"_s)->isChecked());
        QCOMPARE(WindowDriver::find<QTimeEdit>(&window, u"dtDailyReceiveLogsTime"_s)->time(), QTime(9, 30));
        QVERIFY(schedule->runner().schedule().retrievalOn);
    }

    void onlyOneProgramRunsTheFoldersSchedule()
    {
        MainWindowFixture f;
        QVERIFY2(f.ok(), qPrintable(f.error()));
        frmMain& window = f.window();
        MainPages* pages = MainPages::install(window);
        ManualClock clock(QDateTime(Day, QTime(7, 59, 59)));
        window.station().settings().dailySendOn = true;
        window.station().settings().setDailySendTime(QTime(8, 0));

        // The service holds the folder's schedule: the window never starts a run and says so.
        InstanceLock service(f.start().folder.schedulerLockFile());
        QVERIFY(service.tryLock());
        MainSchedule* schedule = MainSchedule::install(window, *pages, clock);
        QVERIFY(!schedule->runsSchedule());
        QCOMPARE(window.findChild<QLabel*>(u"lblStatus"_s)->text(),
                 Translate(Message(u"Günlük zamanlanmış işleri başka bir program (kx410d) yürütüyor; bu pencere "
                                   u"zamanlayıcısız çalışıyor."_s)));
        window.clockTick();
        QVERIFY(!schedule->runner().runUnderWay());
        delete schedule;
        service.unlock();

        // A window that runs the schedule keeps the service out.
        MainSchedule* own = MainSchedule::install(window, *pages, clock);
        QVERIFY(own->runsSchedule());
        InstanceLock second(f.start().folder.schedulerLockFile());
        QVERIFY(!second.tryLock());
    }

    void serverBacksUpOnItsDayAndByHand()
    {
        MainWindowFixture f;
        QVERIFY2(f.ok(), qPrintable(f.error()));
        Database& db = f.database();
        QVERIFY(addPassages(db,
                            { QDateTime(QDate(2026, 1, 20), QTime(8, 0)), QDateTime(QDate(2026, 2, 1), QTime(12, 0)),
                              QDateTime(QDate(2026, 2, 20), QTime(9, 0)) }));
        BackupPlan plan{ QDate(2026, 1, 31), 1, 31 };
        QVERIFY(BackupPlanRepository(db).saveSchedule(plan));
        QVERIFY(BackupPlanRepository(db).saveLastBackup(plan.lastBackup));

        frmMain& window = f.window();
        MainPages* pages = MainPages::install(window);
        ManualClock clock(QDateTime(Day.addDays(-1), QTime(23, 59, 59)));
        MainSchedule::install(window, *pages, clock);
        const QString folder = f.start().folder.backupFolder();

        // February has no 31st (the plan's rule is the scheduler's test): its last day backs up
        // and removes the records up to the 1st, 23:59:59.
        clock.advanceSecs(1);
        window.clockTick();
        QTRY_VERIFY(!pages->bridge().busy());
        QCOMPARE(QDir(folder).entryList(QDir::Files).size(), 1);
        QCOMPARE(stored(db), 1);
        QVERIFY(MessageBox::shownTexts().isEmpty());

        // By hand, from the file menu.
        window.findChild<QAction*>(u"mnuBackup"_s)->trigger();
        auto* form = window.findChild<QDialog*>(u"frmBackup"_s);
        auto* list = WindowDriver::find<QTableWidget>(form, u"lstBackups"_s);
        QVERIFY(WindowDriver::clickEnabled(form, u"cmdVerifyBackup"_s));
        QTRY_VERIFY(!pages->bridge().busy());
        QCOMPARE(MessageBox::lastShownText(), u"Yedek doğrulandı.\n3 geçiş kaydı"_s);

        window.session().logInAsAdministrator(u"admin"_s);
        WindowDriver::find<QDateEdit>(form, u"dtDeleteBefore"_s)->setDate(QDate(2026, 3, 1));
        QVERIFY(WindowDriver::clickEnabled(form, u"cmdDeleteRecords"_s));
        QTRY_VERIFY(!pages->bridge().busy());
        QVERIFY2(MessageBox::lastShownText().startsWith(u"Yedekleme başarı ile tamamlandı.\n"_s),
                 qPrintable(MessageBox::lastShownText()));
        QCOMPARE(stored(db), 0);
        QCOMPARE(list->rowCount(), 2);
    }
};

QTEST_MAIN(ScheduleWindowTest)
#include "ScheduleWindowTest.moc"
