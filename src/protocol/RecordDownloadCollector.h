#pragma once

#include "protocol/DownloadedRecord.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <functional>

// Collects a panel's stream of stored records, cuts it into "$DD" records as bytes arrive and
// decodes them. Pure: the link feeds it, and the card numbers come from a look-up function.
class RecordDownloadCollector
{
public:
    enum Outcome
    {
        // No end marker before the deadline.
        TimedOut = 0,
        // The end marker arrived after whole records.
        Complete = 1,
        // A record was left incomplete; the panel still holds everything and is read again.
        Incomplete = 2,
    };

    static constexpr int MaxRecords = 40000;
    static constexpr int RecordLength = 30;
    // A record is taken only when at least this many characters remain from its "$", i.e. when
    // something follows it.
    static constexpr int MinRemaining = 32;
    // Operation records carry these IDs instead of a person; their card number is 0.
    static constexpr qint32 FirstOperationId = 20001;
    static constexpr qint32 LastOperationId = 20008;

    using CardLookup = std::function<qint64(qint32 userId)>;

    // Adds an arrival; true once the end marker has been cut (stop collecting).
    bool feed(QByteArrayView bytes);
    // Ends the collection when no end marker came (deadline passed or link closed).
    void finish();

    bool ended() const { return m_ended; }
    Outcome outcome() const;
    // True when the panel held more than MaxRecords: the rest stayed in the panel, which must not
    // be erased.
    bool capReached() const { return m_overCap > 0; }
    int overCap() const { return m_overCap; }
    // Pieces that looked like records but were not (wrong length); dropped.
    int malformed() const { return m_malformed; }
    // Characters kept between arrivals (at most one record's worth beyond the records).
    qsizetype pending() const { return m_tail.size(); }
    const QList<QByteArray>& rawRecords() const { return m_raw; }

    // Decodes the raw records in order. Records with user ID 0 or an unreadable date are skipped;
    // IDs 20001..20008 get card 0 without a look-up; others get lookup(ID) (0 without a lookup).
    QList<DownloadedRecord> decode(const CardLookup& lookup, int* skipped = nullptr) const;
    // Decodes one raw record; false when it cannot be read or its user ID is 0.
    static bool decodeRecord(QByteArrayView raw, DownloadedRecord& record);

private:
    // Cuts the records out of text; returns how many leading bytes are finished with.
    qsizetype cut(QByteArrayView text, bool final);
    void consumeTail(bool final);
    void keep(QByteArrayView piece);

    QByteArray m_tail;
    QList<QByteArray> m_raw;
    bool m_ended = false;
    bool m_incomplete = false;
    bool m_timedOut = false;
    int m_overCap = 0;
    int m_malformed = 0;
};
