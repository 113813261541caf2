// The simulator's side of a panel connection: whatever a station (or anything else) writes to a
// simulated panel, cut into request frames.
#include "FuzzCheck.h"
#include "FuzzInput.h"
#include "sim/SimFrameCutter.h"

namespace {

void checkFrames(const QList<QByteArray>& frames, qsizetype maxFrame)
{
    for (const QByteArray& frame : frames) {
        FUZZ_CHECK(frame.startsWith('%') && frame.endsWith("**"));
        FUZZ_CHECK(frame.size() <= maxFrame);
        // A frame runs from the last "%" before its end to the first "**".
        FUZZ_CHECK(frame.indexOf('%', 1) < 0);
        FUZZ_CHECK(frame.indexOf("**") == frame.size() - 2);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const FuzzInput input(data, size, FuzzInput::Header::SplitOnly);
    if (!input.usable())
        return 0;
    // The simulator's own bound, or a small one so that overlong text is met often.
    const qsizetype maxFrame = input.control() & 0x80 ? 4096 : 8 + (input.control() & 0x3F);

    SimFrameCutter cutter(maxFrame);
    QList<QByteArray> inPieces;
    for (const QByteArrayView arrival : input.arrivals()) {
        const QList<QByteArray> frames = cutter.feed(arrival.toByteArray());
        checkFrames(frames, maxFrame);
        inPieces += frames;
        FUZZ_CHECK(cutter.pending() <= maxFrame);
    }

    // How the stream was split must not change which requests come out of it.
    SimFrameCutter whole(maxFrame);
    const QList<QByteArray> atOnce = whole.feed(input.stream().toByteArray());
    checkFrames(atOnce, maxFrame);
    FUZZ_CHECK(inPieces == atOnce);
    return 0;
}
