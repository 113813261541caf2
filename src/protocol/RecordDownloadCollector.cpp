#include "protocol/RecordDownloadCollector.h"

#include "protocol/AnswerReading.h"

#include <cstring>

using namespace AnswerReading;

namespace {

// An unterminated piece longer than this is noise, not a record still arriving.
constexpr int MaxPieceLength = 64;

// Plain scans over a few bytes: the general substring search costs far more per call here.
qsizetype indexOfChar(const char* data, qsizetype size, qsizetype from, char c)
{
    if (from >= size)
        return -1;
    const void* hit = std::memchr(data + from, c, static_cast<size_t>(size - from));
    return hit ? static_cast<const char*>(hit) - data : -1;
}

qsizetype indexOfPair(const char* data, qsizetype size, qsizetype from, char first, char second)
{
    for (qsizetype i = from; i + 1 < size; ++i) {
        if (data[i] == first && data[i + 1] == second)
            return i;
    }
    return -1;
}

bool isRecordStart(const char* data, qsizetype size)
{
    return size >= 3 && data[0] == '$' && data[1] == 'D' && data[2] == 'D';
}

// Two decimal digits already checked to be digits.
int twoDigits(const char* p)
{
    return (p[0] - '0') * 10 + (p[1] - '0');
}

bool isBlank(char c)
{
    // A carriage return or line feed after an answer is tolerated, as everywhere.
    return c == '\r' || c == '\n' || c == ' ' || c == '\t';
}

bool isUpper(char c)
{
    return c >= 'A' && c <= 'Z';
}

} // namespace

RecordDownloadCollector::RecordDownloadCollector(const PanelAddress& panel)
    : m_endMarker('$' + panel.answerCode("FD") + "**")
    , m_ownHead(panel.answerCode("FD").sliced(2))
{ }

bool RecordDownloadCollector::feed(QByteArrayView bytes)
{
    if (m_ended)
        return true;
    if (m_tail.isEmpty()) {
        // The usual case: cut straight from the arrival and keep only its unfinished end.
        const qsizetype used = cut(bytes, false);
        if (!m_ended)
            m_tail = bytes.sliced(used).toByteArray();
        return m_ended;
    }
    m_tail.append(bytes);
    consumeTail(false);
    return m_ended;
}

void RecordDownloadCollector::finish()
{
    if (m_ended)
        return;
    consumeTail(true);
    m_ended = true;
}

RecordDownloadCollector::Outcome RecordDownloadCollector::outcome() const
{
    if (m_incomplete)
        return Incomplete;
    return m_complete ? Complete : TimedOut;
}

void RecordDownloadCollector::consumeTail(bool final)
{
    const qsizetype used = cut(m_tail, final);
    if (m_ended)
        m_tail.clear();
    else
        m_tail.remove(0, used);
}

qsizetype RecordDownloadCollector::cut(QByteArrayView text, bool final)
{
    // Pieces are at most a window long, so every search below is over a few dozen bytes and
    // noise costs no more than linear time.
    const char* const data = text.data();
    const qsizetype size = text.size();
    qsizetype pos = 0;
    while (!m_ended) {
        const qsizetype start = indexOfChar(data, size, pos, '$');
        if (start < 0) {
            strayBetween(text.sliced(pos));
            return size;
        }
        if (start > pos)
            strayBetween(text.sliced(pos, start - pos));
        pos = start;
        const qsizetype restSize = size - pos;
        const char* const rest = data + pos;
        const qsizetype windowSize = qMin<qsizetype>(restSize, MaxPieceLength);
        const qsizetype nextStart = indexOfChar(rest, windowSize, 1, '$');
        const qsizetype end = indexOfPair(rest, nextStart > 0 ? nextStart : windowSize, 1, '*', '*');
        if (end < 0) {
            const bool cutShort = nextStart > 0;
            if (!cutShort && !final && restSize < MaxPieceLength)
                return pos; // still arriving
            const qsizetype pieceSize = cutShort ? nextStart : windowSize;
            const QByteArrayView piece(rest, pieceSize);
            if (isRecordStart(rest, pieceSize)) {
                m_incomplete = true;
                setAside(piece, UnreadReason::CutRecord);
            } else {
                setAside(piece, UnreadReason::StrayText);
            }
            pos += pieceSize;
            continue;
        }
        const qsizetype pieceSize = end + 2;
        const QByteArrayView piece(rest, pieceSize);
        if (piece == m_endMarker) {
            m_ended = true;
            m_complete = true;
            return pos + pieceSize;
        }
        if (isRecordStart(rest, pieceSize)) {
            if (restSize < MinRemaining) {
                // The last record is taken only once something follows it.
                if (final)
                    m_incomplete = true;
                return pos;
            }
            keep(piece);
        } else if (!isOwnAnswer(piece)) {
            // A stale answer of this panel to an earlier request is harmless; anything else is not.
            const bool foreign = pieceSize >= 10 && isUpper(rest[1]) && isUpper(rest[2]);
            setAside(piece, foreign ? UnreadReason::ForeignAnswer : UnreadReason::StrayText);
        }
        pos += pieceSize;
    }
    return pos;
}

bool RecordDownloadCollector::isOwnAnswer(QByteArrayView piece) const
{
    // "$" + code + serial + panel number ... "**", for another code than the stream's own.
    return piece.size() >= 3 + m_ownHead.size() + 2 && isUpper(piece[1]) && isUpper(piece[2])
        && piece.sliced(3, m_ownHead.size()) == m_ownHead && !piece.sliced(1, 2).startsWith("FD")
        && !piece.sliced(1, 2).startsWith("DD");
}

void RecordDownloadCollector::strayBetween(QByteArrayView text)
{
    qsizetype first = 0;
    while (first < text.size() && isBlank(text[first]))
        ++first;
    if (first == text.size())
        return;
    qsizetype last = text.size();
    while (last > first && isBlank(text[last - 1]))
        --last;
    setAside(text.sliced(first, last - first), UnreadReason::StrayText);
}

void RecordDownloadCollector::keep(QByteArrayView piece)
{
    if (piece.size() != RecordLength) {
        ++m_malformed;
        setAside(piece, UnreadReason::MalformedRecord);
        return;
    }
    if (m_raw.size() >= MaxRecords) {
        ++m_overCap;
        return;
    }
    m_raw.append(piece.toByteArray());
}

void RecordDownloadCollector::setAside(QByteArrayView piece, UnreadReason reason)
{
    ++m_unreadCount;
    if (m_unread.size() < MaxUnreadKept)
        m_unread.append({ piece.first(qMin<qsizetype>(piece.size(), MaxUnreadLength)).toByteArray(), reason });
}

bool RecordDownloadCollector::decodeRecord(QByteArrayView raw, DownloadedRecord& record)
{
    if (raw.size() < 28 || !raw.startsWith("$DD"))
        return false;
    // Positions below count from 1 at the "$"; character 4 is not read.
    const auto door = digitsValue(raw.sliced(4, 3));
    const auto zone = digitsValue(raw.sliced(7, 1));
    const auto direction = digitsValue(raw.sliced(8, 1));
    // Stored as read: every two-digit code is accepted.
    const auto code = digitsValue(raw.sliced(9, 2));
    const auto user = digitsValue(raw.sliced(11, 5));
    const auto stamp = raw.sliced(16, 12);
    if (!door || !zone || !direction || !code || !user || !digitsValue(stamp) || *user <= 0)
        return false;
    // ddMMyyHHmmss, every character a digit (checked above).
    const char* d = stamp.data();
    const QDate date(2000 + twoDigits(d + 4), twoDigits(d + 2), twoDigits(d));
    const QTime time(twoDigits(d + 6), twoDigits(d + 8), twoDigits(d + 10));
    if (!date.isValid() || !time.isValid())
        return false;
    record.door = static_cast<qint32>(*door);
    record.localZone = static_cast<qint32>(*zone);
    record.direction = directionOf(static_cast<qint32>(*direction));
    record.code = passageCodeOf(static_cast<qint32>(*code));
    record.userId = static_cast<qint32>(*user);
    record.cardId = 0;
    record.time = QDateTime(date, time);
    return true;
}

QList<DownloadedRecord> RecordDownloadCollector::decode(const CardLookup& lookup, QList<UnreadPiece>* keptBack) const
{
    QList<DownloadedRecord> records;
    records.reserve(m_raw.size());
    for (const QByteArray& raw : m_raw) {
        DownloadedRecord record;
        if (!decodeRecord(raw, record)) {
            if (keptBack) {
                const auto user = digitsValue(QByteArrayView(raw).sliced(11, 5));
                keptBack->append({ raw, user && *user == 0 ? UnreadReason::NoUser : UnreadReason::UnreadableRecord });
            }
            continue;
        }
        const bool operation = record.userId >= FirstOperationId && record.userId <= LastOperationId;
        if (!operation && lookup)
            record.cardId = lookup(record.userId);
        records.append(record);
    }
    return records;
}
