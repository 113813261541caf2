// A panel's stream of stored records as it arrives after the download request, collected, ended
// and decoded the way a record download does it.
#include "FuzzCheck.h"
#include "FuzzInput.h"
#include "protocol/RecordDownloadCollector.h"

#include <optional>

namespace {

using Collector = RecordDownloadCollector;

void checkCollected(const Collector& collector, QByteArrayView stream)
{
    FUZZ_CHECK(collector.ended());
    FUZZ_CHECK(collector.rawRecords().size() <= Collector::MaxRecords);
    for (const QByteArray& raw : collector.rawRecords())
        FUZZ_CHECK(raw.size() == Collector::RecordLength && raw.startsWith("$DD") && raw.endsWith("**"));
    FUZZ_CHECK(collector.unread().size() <= Collector::MaxUnreadKept);
    FUZZ_CHECK(collector.unread().size() <= collector.unreadCount());
    for (const Collector::UnreadPiece& piece : collector.unread())
        FUZZ_CHECK(!piece.text.isEmpty() && piece.text.size() <= Collector::MaxUnreadLength);
    // Only this panel's own end marker completes the stream.
    if (collector.outcome() == Collector::Complete)
        FUZZ_CHECK(stream.contains(collector.endMarker()));

    QList<Collector::UnreadPiece> keptBack;
    const QList<DownloadedRecord> records
        = collector.decode([](qint32 userId) { return static_cast<qint64>(userId) * 10; }, &keptBack);
    // Every record taken is either decoded or kept back, never lost.
    FUZZ_CHECK(records.size() + keptBack.size() == collector.rawRecords().size());
    for (const DownloadedRecord& record : records) {
        FUZZ_CHECK(record.time.isValid());
        FUZZ_CHECK(record.userId > 0);
        const bool operation
            = record.userId >= Collector::FirstOperationId && record.userId <= Collector::LastOperationId;
        FUZZ_CHECK(record.cardId == (operation ? 0 : static_cast<qint64>(record.userId) * 10));
    }
}

// Everything kept apart as unread, blanks left out; empty when some of it was cut off for space.
std::optional<QByteArray> unreadText(const Collector& collector)
{
    if (collector.unreadCount() != collector.unread().size())
        return std::nullopt;
    QByteArray text;
    for (const Collector::UnreadPiece& piece : collector.unread()) {
        if (piece.text.size() >= Collector::MaxUnreadLength)
            return std::nullopt;
        for (const char c : piece.text) {
            if (c != ' ' && c != '\t' && c != '\r' && c != '\n')
                text.append(c);
        }
    }
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const FuzzInput input(data, size, FuzzInput::Header::SplitAndPanel);
    if (!input.usable())
        return 0;

    Collector inPieces(input.panel());
    for (const QByteArrayView arrival : input.arrivals()) {
        const bool ended = inPieces.feed(arrival);
        FUZZ_CHECK(ended == inPieces.ended());
        if (ended)
            break;
        // Between arrivals only an unfinished piece is kept, never the whole stream.
        FUZZ_CHECK(inPieces.pending() < 64);
    }
    inPieces.finish();
    checkCollected(inPieces, input.stream());

    // How the stream was split must not change which records are taken or how the stream ended.
    Collector atOnce(input.panel());
    atOnce.feed(input.stream());
    atOnce.finish();
    checkCollected(atOnce, input.stream());
    FUZZ_CHECK(inPieces.rawRecords() == atOnce.rawRecords());
    FUZZ_CHECK(inPieces.outcome() == atOnce.outcome());
    FUZZ_CHECK(inPieces.overCap() == atOnce.overCap());
    FUZZ_CHECK(inPieces.malformed() == atOnce.malformed());
    // Nor what is kept apart as unread (the pieces may be cut differently, the text is the same).
    const auto unreadInPieces = unreadText(inPieces);
    const auto unreadAtOnce = unreadText(atOnce);
    if (unreadInPieces && unreadAtOnce)
        FUZZ_CHECK(*unreadInPieces == *unreadAtOnce);
    return 0;
}
