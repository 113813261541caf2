#include "store/InstanceLock.h"

#include "store/DataFolder.h"
#include "store/StartupOptions.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

// Child mode: take the lock, say so, then either wait to be killed or die without unlocking.
int holdLock(const QString& path, bool crash)
{
    InstanceLock lock(path);
    if (!lock.tryLock())
        return 2;
    std::fputs("locked\n", stdout);
    std::fflush(stdout);
    if (crash)
        std::_Exit(0); // no destructors: the lock file stays behind
    for (;;)
        QThread::sleep(1);
}

bool startHolder(QProcess& child, const QString& lockPath, bool crash)
{
    child.start(QCoreApplication::applicationFilePath(), { crash ? u"--crash-holding"_s : u"--hold"_s, lockPath });
    return child.waitForReadyRead(10000) && child.readAll().startsWith("locked");
}

} // namespace

class InstanceLockTest : public QObject
{
    Q_OBJECT

private slots:
    void secondHolderInThisProcessIsRefused()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(u"kx410.lock"_s);
        InstanceLock first(path);
        InstanceLock second(path);
        QVERIFY(first.tryLock());
        QVERIFY(first.tryLock()); // asking again while holding it is fine
        QVERIFY(!second.tryLock());
        first.unlock();
        QVERIFY(second.tryLock());
    }

    void runningStationBlocksAndCrashedStationDoesNot()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(u"kx410.lock"_s);

        QProcess live;
        QVERIFY(startHolder(live, path, false));
        InstanceLock mine(path);
        QVERIFY(!mine.tryLock());
        // However long the other station has been running.
        {
            QFile lockFile(path);
            QVERIFY(lockFile.open(QIODevice::ReadWrite));
            QVERIFY(lockFile.setFileTime(QDateTime::currentDateTime().addDays(-3), QFileDevice::FileModificationTime));
        }
        QVERIFY(!mine.tryLock());
        live.kill();
        live.waitForFinished();
        // Killed without unlocking: its lock is stale now.
        QVERIFY(QFileInfo::exists(path));
        QVERIFY(mine.tryLock());
        mine.unlock();

        QProcess crashed;
        QVERIFY(startHolder(crashed, path, true));
        crashed.waitForFinished();
        QVERIFY(QFileInfo::exists(path));
        QVERIFY(mine.tryLock());
    }

    void dataFolderLayout()
    {
        QTemporaryDir dir;
        const DataFolder folder(dir.filePath(u"station/../station"_s));
        QCOMPARE(folder.root(), QDir::cleanPath(dir.filePath(u"station"_s)));
        QCOMPARE(QFileInfo(folder.configFile()).fileName(), u"Config.cfg"_s);
        QCOMPARE(QFileInfo(folder.mainDatabase()).fileName(), u"KX410_DB200.db"_s);
        QCOMPARE(QFileInfo(folder.languageDatabase()).fileName(), u"KX-410_Lang.db"_s);
        QString error;
        QVERIFY2(folder.ensureExists(&error), qPrintable(error));
        QVERIFY(QFileInfo(folder.backupFolder()).isDir());
        QVERIFY(QFileInfo(folder.pictureFolder()).isDir());
        QCOMPARE(QFileInfo(folder.backupFolder()).fileName(), u"Yedek"_s);
        QCOMPARE(QFileInfo(folder.pictureFolder()).fileName(), u"Resimler"_s);

        // A file where the folder should be.
        QFile blocker(dir.filePath(u"file"_s));
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        blocker.close();
        QVERIFY(!DataFolder(blocker.fileName()).ensureExists(&error));
        QVERIFY(!error.isEmpty());
    }

    void commandLineOptions()
    {
        StartupOptions o = StartupOptions::fromArguments({ u"kx410-station"_s, u"--data-dir"_s, u"/tmp/a b"_s,
                                                           u"--other"_s, u"--db=postgresql://u@127.0.0.1/kx"_s });
        QCOMPARE(o.dataDir, u"/tmp/a b"_s);
        QCOMPARE(o.databaseOverride, u"postgresql://u@127.0.0.1/kx"_s);
        o = StartupOptions::fromArguments({ u"--data-dir=/x"_s, u"--db"_s, u"/y.db"_s });
        QCOMPARE(o.dataDir, u"/x"_s);
        QCOMPARE(o.databaseOverride, u"/y.db"_s);
        // A flag without its value at the end changes nothing.
        o = StartupOptions::fromArguments({ u"--db"_s });
        QVERIFY(o.databaseOverride.isEmpty());
    }
};

int main(int argc, char** argv)
{
    if (argc == 3 && (qstrcmp(argv[1], "--hold") == 0 || qstrcmp(argv[1], "--crash-holding") == 0)) {
        QCoreApplication app(argc, argv);
        return holdLock(QString::fromLocal8Bit(argv[2]), qstrcmp(argv[1], "--crash-holding") == 0);
    }
    QCoreApplication app(argc, argv);
    InstanceLockTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "InstanceLockTest.moc"
