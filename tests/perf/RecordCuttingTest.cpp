#include "protocol/ProcessTimeZone.h"
#include "protocol/RecordDownloadCollector.h"

#include <QTest>

namespace {

QByteArray record(int user, int second)
{
    return "$DD0001" + QByteArray("10") + "01" + QByteArray::number(user).rightJustified(5, '0') + "150324" + "1230"
        + QByteArray::number(second % 60).rightJustified(2, '0') + "**";
}

// Records mixed with the things a noisy line brings: stray bytes, a record cut short by the
// next "$", an over-long record, a foreign answer, then the end marker and bytes after it.
QByteArray noisyStream()
{
    QByteArray s;
    for (int i = 0; i < 300; ++i) {
        s += record(1 + i, i);
        if (i % 37 == 5)
            s += "xx\r\n";
        if (i % 53 == 7)
            s += "$DD00011001";
        if (i % 71 == 9)
            s += "$DD0001100100001150324123000X**";
        if (i % 89 == 11)
            s += "$OK12AB**";
    }
    return s + "$FD12AB007**" + record(999, 1);
}

struct Cut
{
    QList<QByteArray> raw;
    RecordDownloadCollector::Outcome outcome;
    int malformed;
};

Cut feedInPieces(const QByteArray& stream, const QList<int>& sizes, bool finish)
{
    RecordDownloadCollector c(PanelAddress(7, 0x12AB));
    qsizetype at = 0;
    int i = 0;
    while (at < stream.size() && !c.ended()) {
        const qsizetype n = qMin<qsizetype>(sizes.at(i++ % sizes.size()), stream.size() - at);
        c.feed(QByteArrayView(stream).sliced(at, n));
        at += n;
    }
    if (finish)
        c.finish();
    return { c.rawRecords(), c.outcome(), c.malformed() };
}

} // namespace

class RecordCuttingTest : public QObject
{
    Q_OBJECT

private slots:
    void everySplitOfTheStreamCutsTheSameRecords()
    {
        // Whole arrivals are cut in place and only their ends are kept between arrivals: any way
        // of splitting the same bytes must give the same records, count of bad pieces and outcome.
        const QByteArray stream = noisyStream();
        const Cut whole = feedInPieces(stream, { int(stream.size()) }, false);
        // The record cut short by the next "$" leaves the panel's memory to be read again.
        QCOMPARE(whole.outcome, RecordDownloadCollector::Incomplete);
        QCOMPARE(whole.raw.size(), 300);
        QVERIFY(whole.malformed > 0);
        for (const QList<int>& sizes : QList<QList<int>>{ { 1 }, { 29, 31 }, { 1000, 1, 7 } }) {
            const Cut cut = feedInPieces(stream, sizes, false);
            QCOMPARE(cut.raw, whole.raw);
            QCOMPARE(cut.outcome, whole.outcome);
            QCOMPARE(cut.malformed, whole.malformed);
        }
    }

    void unfinishedStreamEndsTheSameHoweverItArrived()
    {
        // Without the end marker the last record is taken only when something follows it.
        const QByteArray stream = noisyStream().left(noisyStream().indexOf("$FD"));
        const Cut whole = feedInPieces(stream, { int(stream.size()) }, true);
        QCOMPARE(feedInPieces(stream, { 1 }, true).raw, whole.raw);
        QCOMPARE(whole.outcome, RecordDownloadCollector::Incomplete);
    }

    void namingTheZoneKeepsEveryLocalTime()
    {
        // The zone named once at start must be the zone the process had: the same local reading
        // maps to the same instant before and after, in winter and in summer.
        if (qEnvironmentVariableIsSet("TZ"))
            qunsetenv("TZ");
        const QList<QDateTime> readings
            = { QDateTime(QDate(2024, 1, 15), QTime(8, 30)), QDateTime(QDate(2024, 7, 15), QTime(8, 30)),
                QDateTime(QDate(2016, 3, 27), QTime(3, 30)) };
        QList<qint64> before;
        for (const QDateTime& t : readings)
            before << t.toMSecsSinceEpoch();
        if (!ProcessTimeZone::settle())
            QSKIP("No system zone file here");
        QCOMPARE(qgetenv("TZ"), QByteArray(":/etc/localtime"));
        for (int i = 0; i < readings.size(); ++i)
            QCOMPARE(QDateTime(readings.at(i).date(), readings.at(i).time()).toMSecsSinceEpoch(), before.at(i));
        // A zone already chosen is left alone.
        QVERIFY(!ProcessTimeZone::settle());
        QCOMPARE(qgetenv("TZ"), QByteArray(":/etc/localtime"));
    }
};

QTEST_GUILESS_MAIN(RecordCuttingTest)
#include "RecordCuttingTest.moc"
