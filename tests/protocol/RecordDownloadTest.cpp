#include "protocol/RecordDownloadCollector.h"

#include <QTest>

namespace {

const QByteArray endMarker = "$FD12AB007**";
const PanelAddress panel7(7, 0x12AB);

// A stored record: door, zone, direction, code, user, and a second of 31/01/2016 09:05.
QByteArray record(int door, int zone, int direction, int code, int user, int second = 3)
{
    return "$DD0" + QByteArray::number(door).rightJustified(3, '0') + QByteArray::number(zone)
        + QByteArray::number(direction) + QByteArray::number(code).rightJustified(2, '0')
        + QByteArray::number(user).rightJustified(5, '0') + "31011609" + "05"
        + QByteArray::number(second % 60).rightJustified(2, '0') + "**";
}

QByteArray records(int count)
{
    QByteArray stream;
    stream.reserve(count * RecordDownloadCollector::RecordLength);
    for (int i = 0; i < count; ++i)
        stream += record(1 + i % 4, 1, 0, 1, 1 + i % 20000, i);
    return stream;
}

} // namespace

class RecordDownloadTest : public QObject
{
    Q_OBJECT

private slots:
    void recordsArrivingWithTheEndMarkerAreAllKept()
    {
        // "$FD" arrives in the same read as the last records; a record after it is not taken.
        const QByteArray stream = records(5) + endMarker + record(1, 1, 1, 1, 9);
        RecordDownloadCollector collector(panel7);
        QVERIFY(!collector.feed(stream.left(70)));
        QVERIFY(collector.feed(stream.mid(70)));
        QCOMPARE(collector.outcome(), RecordDownloadCollector::Complete);
        QCOMPARE(collector.rawRecords().size(), 5);
    }

    void unfinishedStreams()
    {
        // A last record with nothing after it is incomplete: the panel is read again next time.
        RecordDownloadCollector lastRecord(panel7);
        lastRecord.feed(records(4));
        lastRecord.finish();
        QCOMPARE(lastRecord.outcome(), RecordDownloadCollector::Incomplete);
        QCOMPARE(lastRecord.rawRecords().size(), 3);

        // Silence after half a record.
        RecordDownloadCollector halfRecord(panel7);
        halfRecord.feed(QByteArray(records(2) + record(1, 1, 0, 1, 5).left(12)));
        halfRecord.finish();
        QCOMPARE(halfRecord.outcome(), RecordDownloadCollector::Incomplete);
        QCOMPARE(halfRecord.rawRecords().size(), 2);

        // Silence on a clean boundary: the deadline decides.
        RecordDownloadCollector silent(panel7);
        silent.feed(QByteArray(records(2) + "\r\n"));
        silent.finish();
        QCOMPARE(silent.outcome(), RecordDownloadCollector::TimedOut);
        QCOMPARE(silent.rawRecords().size(), 2);

        // A record cut off by the next "$" is never taken, and the stream is not complete.
        RecordDownloadCollector cut(panel7);
        QVERIFY(cut.feed(QByteArray(records(1) + record(2, 1, 0, 1, 5).left(20) + records(1) + endMarker)));
        QCOMPARE(cut.outcome(), RecordDownloadCollector::Incomplete);
        QCOMPARE(cut.rawRecords().size(), 2);
    }

    void noiseIsSkippedWithinBoundedMemory()
    {
        RecordDownloadCollector collector(panel7);
        collector.feed(QByteArray("\r\n$XY12**" + records(1) + "garbage" + records(1)));
        collector.feed(QByteArray(10 * 1024 * 1024, 'x'));
        QVERIFY(collector.pending() < 100);
        QByteArray dollars(10 * 1024 * 1024, '$');
        collector.feed(dollars);
        QVERIFY(collector.pending() < 100);
        collector.feed(QByteArray(records(1) + endMarker));
        QCOMPARE(collector.rawRecords().size(), 3);
        QCOMPARE(collector.outcome(), RecordDownloadCollector::Complete);
        // Nothing of the noise is dropped unseen, and what is kept of it stays bounded.
        QVERIFY(collector.unreadCount() > 1000);
        QCOMPARE(collector.unread().size(), RecordDownloadCollector::MaxUnreadKept);
        QCOMPARE(collector.unread().first().text, QByteArray("$XY12**"));

        RecordDownloadCollector longRecord(panel7);
        longRecord.feed(QByteArray("$DD0001101" + QByteArray(40, '0') + "**" + endMarker));
        QCOMPARE(longRecord.malformed(), 1);
        QVERIFY(longRecord.rawRecords().isEmpty());
    }

    void onlyThisPanelsEndMarkerEndsTheStream()
    {
        // "FD" inside a piece, or the end marker of another panel or serial, is not the end.
        RecordDownloadCollector collector(panel7);
        QVERIFY(!collector.feed(QByteArray(records(2) + "$FD12AB008**" + "$FD12AC007**" + "$XXFD**")));
        QVERIFY(!collector.feed(QByteArray(records(2))));
        QVERIFY(collector.feed(QByteArray(records(1) + endMarker)));
        QCOMPARE(collector.outcome(), RecordDownloadCollector::Complete);
        QCOMPARE(collector.rawRecords().size(), 5);
        QCOMPARE(collector.unreadCount(), 3);
        QCOMPARE(collector.unread().first().reason, RecordDownloadCollector::UnreadReason::ForeignAnswer);

        // Another panel's end marker alone leaves the stream open until the deadline.
        RecordDownloadCollector foreignOnly(panel7);
        QVERIFY(!foreignOnly.feed(QByteArray(records(3) + "$FD12AB008**")));
        foreignOnly.finish();
        QCOMPARE(foreignOnly.outcome(), RecordDownloadCollector::TimedOut);

        // A damaged end marker of this panel ends nothing either.
        RecordDownloadCollector damaged(panel7);
        QVERIFY(!damaged.feed(QByteArray(records(3) + "$FD12AB007")));
        damaged.finish();
        QVERIFY(damaged.outcome() != RecordDownloadCollector::Complete);
        QVERIFY(damaged.unreadCount() > 0);
    }

    void unreadPiecesAreKeptAndStaleAnswersIgnored()
    {
        // A late answer of this panel to an earlier request is harmless; a record whose "$" was
        // lost, a record of the wrong length and stray bytes are kept apart with their text.
        QByteArray lostDollar = record(1, 1, 0, 1, 42);
        lostDollar[0] = '#';
        RecordDownloadCollector collector(panel7);
        QVERIFY(collector.feed(QByteArray("$RC12AB00700151**\r\n" + records(1) + lostDollar + records(1)
                                          + "$DD00011010004231011609050**" + endMarker)));
        QCOMPARE(collector.outcome(), RecordDownloadCollector::Complete);
        QCOMPARE(collector.rawRecords().size(), 2);
        QCOMPARE(collector.unreadCount(), 2);
        QCOMPARE(collector.unread().at(0).text, lostDollar);
        QCOMPARE(collector.unread().at(0).reason, RecordDownloadCollector::UnreadReason::StrayText);
        QCOMPARE(collector.unread().at(1).reason, RecordDownloadCollector::UnreadReason::MalformedRecord);

        // A record that cannot be decoded is kept back by the decoding.
        QByteArray badDigits = record(1, 1, 0, 1, 7);
        badDigits[20] = 'x';
        RecordDownloadCollector undecodable(panel7);
        undecodable.feed(QByteArray(badDigits + records(1) + endMarker));
        QList<RecordDownloadCollector::UnreadPiece> keptBack;
        QCOMPARE(undecodable.decode({}, &keptBack).size(), 1);
        QCOMPARE(keptBack.size(), 1);
        QCOMPARE(keptBack.first().text, badDigits);
        QCOMPARE(keptBack.first().reason, RecordDownloadCollector::UnreadReason::UnreadableRecord);
    }

    void capAtFortyThousand()
    {
        RecordDownloadCollector exact(panel7);
        exact.feed(QByteArray(records(RecordDownloadCollector::MaxRecords) + endMarker));
        QCOMPARE(exact.rawRecords().size(), RecordDownloadCollector::MaxRecords);
        QVERIFY(!exact.capReached());

        RecordDownloadCollector over(panel7);
        over.feed(QByteArray(records(RecordDownloadCollector::MaxRecords + 2) + endMarker));
        QCOMPARE(over.rawRecords().size(), RecordDownloadCollector::MaxRecords);
        QVERIFY(over.capReached());
        QCOMPARE(over.overCap(), 2);
        // The last kept record is the 40000th sent.
        QCOMPARE(over.rawRecords().last(), exact.rawRecords().last());
    }

    void decodingFieldsAndCards()
    {
        RecordDownloadCollector collector(panel7);
        collector.feed(QByteArray(record(2, 1, 1, 1, 7) + record(3, 2, 0, 10, 20005) + record(1, 1, 0, 1, 0)
                                  + record(4, 1, 0, 4, 20009) + record(4, 1, 0, 99, 8) + endMarker));
        QList<qint32> looked;
        QList<RecordDownloadCollector::UnreadPiece> keptBack;
        const QList<DownloadedRecord> decoded = collector.decode(
            [&](qint32 id) {
                looked.append(id);
                return id == 7 ? qint64(12345) : qint64(0);
            },
            &keptBack);
        QCOMPARE(keptBack.size(), 1); // user 0
        QCOMPARE(keptBack.first().reason, RecordDownloadCollector::UnreadReason::NoUser);
        QCOMPARE(decoded.size(), 4);
        QCOMPARE(looked, (QList<qint32>{ 7, 20009, 8 })); // 20005 is an operation: no look-up

        QCOMPARE(decoded[0].door, 2);
        QCOMPARE(decoded[0].localZone, 1);
        QCOMPARE(decoded[0].direction, Direction::Exit);
        QCOMPARE(decoded[0].code, PassageCode::Granted);
        QCOMPARE(decoded[0].userId, 7);
        QCOMPARE(decoded[0].cardId, 12345);
        QCOMPARE(decoded[0].time, QDateTime(QDate(2016, 1, 31), QTime(9, 5, 3)));
        QCOMPARE(decoded[1].code, PassageCode::ProgrammedClose);
        QCOMPARE(decoded[1].localZone, 2);
        QCOMPARE(storedNumber(decoded[3].code), 99); // stored as read

        // Times are the panel's wall clock: the last second of a late year, read as local time.
        DownloadedRecord one;
        QVERIFY(RecordDownloadCollector::decodeRecord("$DD0002211203456281299235958**", one));
        QCOMPARE(one.time, QDateTime(QDate(2099, 12, 28), QTime(23, 59, 58)));
        QCOMPARE(one.time.timeSpec(), Qt::LocalTime);
        for (const QByteArray& bad : { QByteArray("$DD0002211203456311399235958**"), // month 13
                                       QByteArray("$DD0002211203456281299245958**"), // hour 24
                                       QByteArray("$DD") })
            QVERIFY2(!RecordDownloadCollector::decodeRecord(bad, one), bad.constData());
    }
};

QTEST_APPLESS_MAIN(RecordDownloadTest)
#include "RecordDownloadTest.moc"
