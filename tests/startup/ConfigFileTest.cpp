#include "store/ConfigFile.h"

#include "store/StationSettings.h"
#include "store/TurkishCodePage.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

QByteArray fromHex(const char* hex)
{
    return QByteArray::fromHex(QByteArray(hex).replace(' ', ""));
}

QByteArray int32le(qint32 v)
{
    QByteArray b(4, '\0');
    for (int i = 0; i < 4; ++i)
        b[i] = static_cast<char>((static_cast<quint32>(v) >> (8 * i)) & 0xFF);
    return b;
}

// A record as the old station wrote it, assembled by hand: a client watching panels 1, 3 and 64,
// a path full of Turkish letters, English, daily sending on at 08:30 (the time as the old basic
// computed it, one step below 30600/86400), receiving off at 23:15 on 1 January 2024.
QByteArray knownRecord()
{
    QByteArray b;
    b += fromHex("ff 00 00 00"); // marker 255
    b += fromHex("00 00 00 00"); // client
    for (int panel = 1; panel <= 64; ++panel)
        b += int32le(panel == 1 || panel == 3 || panel == 64 ? 1 : 0);
    b += fromHex("17 00"); // 23 path bytes
    b += QByteArray("C:\\Veri\\");
    b += fromHex("f0 fc fe fd f6 e7 dd d0 dc de d6 c7"); // ğüşıöçİĞÜŞÖÇ
    b += QByteArray(".db");
    b += fromHex("01 00"); // English
    b += fromHex("ff ff"); // sending on
    b += fromHex("aa aa aa aa aa aa d6 3f"); // 08:30:00
    b += fromHex("00 00"); // receiving off
    b += fromHex("00 00 00 00 9f 1d e6 40"); // 2024-01-01 23:15:00
    return b;
}

QByteArray readAll(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

} // namespace

class ConfigFileTest : public QObject
{
    Q_OBJECT

private slots:
    void knownRecordReadsEveryField()
    {
        const ConfigFile::ReadResult r = ConfigFile::decode(knownRecord());
        QCOMPARE(r.status, ConfigFile::Status::Ok);
        const StationSettings& s = r.settings;
        QVERIFY(s.isSetUp());
        QVERIFY(!s.isServer());
        QCOMPARE(s.watchedPanels(), (QList<int>{ 1, 3, 64 }));
        QCOMPARE(s.remotePath, u"C:\\Veri\\ğüşıöçİĞÜŞÖÇ.db"_s);
        QCOMPARE(s.language, qint16(1));
        QVERIFY(s.dailySendOn);
        QCOMPARE(s.dailySendTime(), QTime(8, 30, 0));
        QVERIFY(!s.dailyReceiveOn);
        QCOMPARE(s.dailyReceiveTime(), QTime(23, 15, 0));
    }

    void writingBackGivesTheSameBytes()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(u"Config.cfg"_s);
        // Trailing bytes a later version might append survive the round trip too.
        for (const QByteArray& original :
             QList<QByteArray>{ knownRecord(), knownRecord() + QByteArray("\x01\x02xyz", 5) }) {
            QFile f(path);
            QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
            f.write(original);
            f.close();
            const ConfigFile::ReadResult r = ConfigFile::read(path);
            QCOMPARE(r.status, ConfigFile::Status::Ok);
            QString error;
            QVERIFY2(ConfigFile::write(path, r.settings, &error), qPrintable(error));
            QCOMPARE(readAll(path), original);
        }
    }

    void anyNonZeroFlagIsYesAndYesIsWrittenAsMinusOne()
    {
        QByteArray bytes = knownRecord();
        const qsizetype sendFlag = 4 + 4 + 256 + 2 + 23 + 2;
        const qsizetype receiveFlag = sendFlag + 2 + 8;
        bytes[sendFlag] = 1;
        bytes[sendFlag + 1] = 0;
        bytes[receiveFlag] = 0;
        bytes[receiveFlag + 1] = 2;
        const ConfigFile::ReadResult r = ConfigFile::decode(bytes);
        QVERIFY(r.settings.dailySendOn);
        QVERIFY(r.settings.dailyReceiveOn);
        const QByteArray written = ConfigFile::encode(r.settings);
        QCOMPARE(written.mid(sendFlag, 2), fromHex("ff ff"));
        QCOMPARE(written.mid(receiveFlag, 2), fromHex("ff ff"));
        // Nothing else moves.
        QCOMPARE(written.left(sendFlag), bytes.left(sendFlag));
        QCOMPARE(written.mid(sendFlag + 2, 8), bytes.mid(sendFlag + 2, 8));
    }

    void missingShortAndBrokenFilesAreNotSetUp()
    {
        QTemporaryDir dir;
        const ConfigFile::ReadResult missing = ConfigFile::read(dir.filePath(u"Config.cfg"_s));
        QCOMPARE(missing.status, ConfigFile::Status::Missing);

        // Every cut inside the record, including one inside the path.
        const QByteArray whole = knownRecord();
        for (qsizetype size = 0; size < whole.size(); ++size) {
            const ConfigFile::ReadResult r = ConfigFile::decode(whole.left(size));
            QCOMPARE(r.status, ConfigFile::Status::Truncated);
            QCOMPARE(r.settings, StationSettings{});
            QVERIFY(!r.error.isEmpty());
        }

        // A path length reaching past the end of the file.
        QByteArray longPath = whole;
        longPath[4 + 4 + 256] = char(0xFF);
        longPath[4 + 4 + 256 + 1] = char(0xFF);
        QCOMPARE(ConfigFile::decode(longPath).status, ConfigFile::Status::Truncated);

        // A folder where the file should be.
        QVERIFY(QDir(dir.path()).mkdir(u"Config.cfg"_s));
        const ConfigFile::ReadResult folder = ConfigFile::read(dir.filePath(u"Config.cfg"_s));
        QVERIFY(folder.status != ConfigFile::Status::Ok);
        QVERIFY(!folder.settings.isSetUp());
        // Random bytes of every size are the fuzz target's.
    }

    void failedWriteLeavesNothingBehind()
    {
        QTemporaryDir dir;
        QFile blocker(dir.filePath(u"notAFolder"_s));
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        blocker.close();
        QString error;
        QVERIFY(!ConfigFile::write(dir.filePath(u"notAFolder/Config.cfg"_s), StationSettings{}, &error));
        QVERIFY(!error.isEmpty());
        QCOMPARE(QDir(dir.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries), QStringList{ u"notAFolder"_s });
    }

    void startDialogChoices()
    {
        StationSettings s;
        // A client needs a path; the record stays as it was.
        const Message refused = s.applyStartChoices(false, u"   "_s, { 2 }, 1);
        QCOMPARE(refused.turkish(), u"Uzak veritabanı dosya adı belirtilmedi"_s);
        QCOMPARE(s, StationSettings{});

        // A client with no watched panel (or only numbers outside 1..64) watches panel 1.
        QVERIFY(s.applyStartChoices(false, u"/srv/kx/KX410_DB200.db"_s, { 0, 65 }, 2).isEmpty());
        QVERIFY(!s.isServer());
        QCOMPARE(s.watchedPanels(), QList<int>{ 1 });
        QCOMPARE(s.language, qint16(2));

        QVERIFY(s.applyStartChoices(true, QString(), {}, 1).isEmpty());
        QVERIFY(s.isServer());
        QCOMPARE(s.marker, StationSettings::SetUpMarker);
    }

    void timeOfDayKeepsTheStoredDate()
    {
        StationSettings s;
        s.dailyReceiveStamp = 45292.96875; // 2024-01-01 23:15
        s.setDailyReceiveTime(QTime(6, 5, 30));
        QCOMPARE(s.dailyReceiveTime(), QTime(6, 5, 30));
        QCOMPARE(std::floor(s.dailyReceiveStamp), 45292.0);
        s.setDailySendTime(QTime(8, 30));
        QCOMPARE(s.dailySendStamp, 30600.0 / 86400.0);
        // A hair before midnight rounds to midnight, never to an invalid 24:00:00.
        QCOMPARE(StationSettings::timeOfStamp(0.99999999), QTime(0, 0));
        QCOMPARE(StationSettings::timeOfStamp(-1.25), QTime(6, 0));

        // Before 1899 the day is negative and the time still counts forward from midnight.
        s.dailySendStamp = -8577.5;
        s.setDailySendTime(QTime(12, 7, 5));
        QCOMPARE(s.dailySendTime(), QTime(12, 7, 5));
        QCOMPARE(std::trunc(s.dailySendStamp), -8577.0);
        // A stamp that holds no date (a damaged file) still takes the time set.
        for (const double broken :
             { std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(), -1e300, 4e15 }) {
            s.dailyReceiveStamp = broken;
            s.setDailyReceiveTime(QTime(6, 5, 30));
            QCOMPARE(s.dailyReceiveTime(), QTime(6, 5, 30));
        }
    }

    void turkishCodePageRoundTrips()
    {
        QByteArray all;
        for (int b = 0; b < 256; ++b)
            all.append(static_cast<char>(b));
        const QString text = TurkishCodePage::decode(all);
        QCOMPARE(text.size(), 256);
        bool lossless = false;
        QCOMPARE(TurkishCodePage::encode(text, &lossless), all);
        QVERIFY(lossless);

        // Which byte each Turkish letter takes is the known record's path.
        // Letters the code page lacks (Ž is in the Western page but not this one).
        QCOMPARE(TurkishCodePage::encode(u"aŽ世"_s, &lossless), QByteArray("a??"));
        QVERIFY(!lossless);
    }
};

QTEST_GUILESS_MAIN(ConfigFileTest)
#include "ConfigFileTest.moc"
