#include "protocol/RecordDownloadCollector.h"

#include "protocol/AnswerReading.h"

using namespace AnswerReading;

namespace {

// An unterminated piece longer than this is noise, not a record still arriving.
constexpr int MaxPieceLength = 64;

} // namespace

bool RecordDownloadCollector::feed(QByteArrayView bytes)
{
    if (m_ended)
        return true;
    m_tail.append(bytes);
    cut(false);
    return m_ended;
}

void RecordDownloadCollector::finish()
{
    if (m_ended)
        return;
    cut(true);
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

void RecordDownloadCollector::cut(bool final)
{
    qsizetype pos = 0;
    while (!m_ended) {
        QByteArrayView rest = QByteArrayView(m_tail).sliced(pos);
        const qsizetype start = rest.indexOf('$');
        if (start < 0) {
            pos = m_tail.size();
            break;
        }
        pos += start;
        rest = rest.sliced(start);
        // Pieces are short: searching one window keeps noise from costing more than linear time.
        const QByteArrayView window = rest.first(qMin<qsizetype>(rest.size(), MaxPieceLength));
        const qsizetype nextStart = window.indexOf('$', 1);
        const qsizetype end = (nextStart > 0 ? window.first(nextStart) : window).indexOf("**", 1);
        const bool cutShort = nextStart > 0 && (end < 0 || nextStart < end);
        if (cutShort || end < 0) {
            if (!cutShort && !final && rest.size() < MaxPieceLength)
                break; // still arriving
            const QByteArrayView piece = cutShort ? window.first(nextStart) : window;
            if (piece.contains("FD")) {
                // The panel said it is done, even if the end of its marker got lost.
                m_ended = true;
                break;
            }
            if (piece.startsWith("$DD"))
                m_incomplete = true;
            pos += piece.size();
            continue;
        }
        const QByteArrayView piece = window.first(end + 2);
        if (piece.contains("FD")) {
            m_ended = true;
            break;
        }
        if (piece.startsWith("$DD")) {
            if (rest.size() < MinRemaining) {
                // The last record is taken only once something follows it.
                if (final)
                    m_incomplete = true;
                break;
            }
            keep(piece.toByteArray());
        }
        pos += piece.size();
    }
    if (m_ended)
        m_tail.clear();
    else
        m_tail.remove(0, pos);
}

void RecordDownloadCollector::keep(const QByteArray& piece)
{
    if (piece.size() != RecordLength) {
        ++m_malformed;
        return;
    }
    if (m_raw.size() >= MaxRecords) {
        ++m_overCap;
        return;
    }
    m_raw.append(piece);
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
    const QByteArray d = stamp.toByteArray();
    const QDate date(2000 + d.mid(4, 2).toInt(), d.mid(2, 2).toInt(), d.mid(0, 2).toInt());
    const QTime time(d.mid(6, 2).toInt(), d.mid(8, 2).toInt(), d.mid(10, 2).toInt());
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
