#pragma once

#include "protocol/DownloadedRecord.h"
#include "protocol/PanelAddress.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <functional>

// Collects a panel's stream of stored records, cuts it into "$DD" records as bytes arrive and
// decodes them. Pure: the link feeds it, and the card numbers come from a look-up function.
//
// Nothing the panel sent is silently dropped: whatever cannot be read as a record, as this
// panel's end marker or as a stale answer of this panel is kept apart as an unread piece, and a
// stream with unread pieces is not one after which the panel may be erased.
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

    // Why a piece of the stream was kept apart instead of becoming a record.
    enum class UnreadReason
    {
        CutRecord, // a record cut short by the next "$" or by the end of the stream
        MalformedRecord, // "$DD" ... "**" of the wrong length
        UnreadableRecord, // a record whose digits or date cannot be read
        NoUser, // a record with user number 0, which the station does not store
        StrayText, // bytes that belong to no record
        ForeignAnswer, // another panel's end marker or answer
    };
    struct UnreadPiece
    {
        QByteArray text;
        UnreadReason reason = UnreadReason::StrayText;
    };

    static constexpr int MaxRecords = 40000;
    static constexpr int RecordLength = 30;
    // A record is taken only when at least this many characters remain from its "$", i.e. when
    // something follows it.
    static constexpr int MinRemaining = 32;
    // Operation records carry these IDs instead of a person; their card number is 0.
    static constexpr qint32 FirstOperationId = 20001;
    static constexpr qint32 LastOperationId = 20008;
    // Unread pieces kept with their text (all are counted), and the longest text kept of one.
    static constexpr int MaxUnreadKept = 500;
    static constexpr int MaxUnreadLength = 128;

    using CardLookup = std::function<qint64(qint32 userId)>;

    // The stream of the panel at this address: only its own end marker ends it.
    explicit RecordDownloadCollector(const PanelAddress& panel);

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
    // "$DD" pieces of the wrong length.
    int malformed() const { return m_malformed; }
    // Characters kept between arrivals (at most one record's worth beyond the records).
    qsizetype pending() const { return m_tail.size(); }
    const QList<QByteArray>& rawRecords() const { return m_raw; }
    // Pieces of the stream that were not records (the first MaxUnreadKept of them).
    const QList<UnreadPiece>& unread() const { return m_unread; }
    // How many there were in all.
    int unreadCount() const { return m_unreadCount; }
    const QByteArray& endMarker() const { return m_endMarker; }

    // Decodes the raw records in order. Records with user ID 0 or unreadable fields go to
    // keptBack instead; IDs 20001..20008 get card 0 without a look-up; others get lookup(ID) (0
    // without a lookup).
    QList<DownloadedRecord> decode(const CardLookup& lookup, QList<UnreadPiece>* keptBack = nullptr) const;
    // Decodes one raw record; false when it cannot be read or its user ID is 0.
    static bool decodeRecord(QByteArrayView raw, DownloadedRecord& record);

private:
    // Cuts the records out of text; returns how many leading bytes are finished with.
    qsizetype cut(QByteArrayView text, bool final);
    void consumeTail(bool final);
    void keep(QByteArrayView piece);
    void setAside(QByteArrayView piece, UnreadReason reason);
    void strayBetween(QByteArrayView text);
    bool isOwnAnswer(QByteArrayView piece) const;

    QByteArray m_endMarker;
    QByteArray m_ownHead; // serial and panel number, as every answer of this panel carries them
    QByteArray m_tail;
    QList<QByteArray> m_raw;
    QList<UnreadPiece> m_unread;
    int m_unreadCount = 0;
    bool m_ended = false;
    bool m_complete = false;
    bool m_incomplete = false;
    int m_overCap = 0;
    int m_malformed = 0;
};
