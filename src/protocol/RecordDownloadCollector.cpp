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

} // namespace

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
    if (!m_ended)
        m_timedOut = true;
    m_ended = true;
}

RecordDownloadCollector::Outcome RecordDownloadCollector::outcome() const
{
    if (m_incomplete)
        return Incomplete;
    if (m_timedOut || !m_ended)
        return TimedOut;
    return Complete;
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
        if (start < 0)
            return size;
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
            if (indexOfPair(rest, pieceSize, 0, 'F', 'D') >= 0) {
                // The panel said it is done, even if the end of its marker got lost.
                m_ended = true;
                return pos;
            }
            if (isRecordStart(rest, pieceSize))
                m_incomplete = true;
            pos += pieceSize;
            continue;
        }
        const qsizetype pieceSize = end + 2;
        if (indexOfPair(rest, pieceSize, 0, 'F', 'D') >= 0) {
            m_ended = true;
            return pos;
        }
        if (isRecordStart(rest, pieceSize)) {
            if (restSize < MinRemaining) {
                // The last record is taken only once something follows it.
                if (final)
                    m_incomplete = true;
                return pos;
            }
            keep(QByteArrayView(rest, pieceSize));
        }
        pos += pieceSize;
    }
    return pos;
}

void RecordDownloadCollector::keep(QByteArrayView piece)
{
    if (piece.size() != RecordLength) {
        ++m_malformed;
        return;
    }
    if (m_raw.size() >= MaxRecords) {
        ++m_overCap;
        return;
    }
    m_raw.append(piece.toByteArray());
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
    record.passageType = static_cast<qint32>(*direction);
    record.code = static_cast<qint32>(*code);
    record.userId = static_cast<qint32>(*user);
    record.cardId = 0;
    record.time = QDateTime(date, time);
    return true;
}

QList<DownloadedRecord> RecordDownloadCollector::decode(const CardLookup& lookup, int* skipped) const
{
    QList<DownloadedRecord> records;
    records.reserve(m_raw.size());
    int dropped = 0;
    for (const QByteArray& raw : m_raw) {
        DownloadedRecord record;
        if (!decodeRecord(raw, record)) {
            ++dropped;
            continue;
        }
        const bool operation = record.userId >= FirstOperationId && record.userId <= LastOperationId;
        if (!operation && lookup)
            record.cardId = lookup(record.userId);
        records.append(record);
    }
    if (skipped)
        *skipped = dropped;
    return records;
}
