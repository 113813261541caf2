// Pushed live frames: the byte stream of a panel connection cut into frames, each frame read the
// way the live monitor reads it.
#include "FuzzCheck.h"
#include "FuzzInput.h"
#include "protocol/LiveFrameCutter.h"
#include "protocol/LiveFrames.h"
#include "protocol/StatusFrames.h"

namespace {

void readFrame(const QByteArray& frame)
{
    switch (LiveFrames::kindOf(frame)) {
    case LiveFrames::Kind::CardEvent: {
        CardEvent event;
        if (LiveFrames::parseCardEvent(frame, event) == ParseStatus::Valid) {
            FUZZ_CHECK(frame.size() >= LiveFrames::CardEventLength);
            FUZZ_CHECK(event.time.isValid());
            FUZZ_CHECK(event.panelNumber >= 0 && event.panelNumber <= 999);
            FUZZ_CHECK(event.cardId >= 0);
        }
        break;
    }
    case LiveFrames::Kind::Status: {
        PanelStatus status;
        if (StatusFrames::parseFrame(frame, status) == ParseStatus::Valid)
            FUZZ_CHECK(status.panelNumber >= 1 && status.panelNumber <= 64);
        break;
    }
    case LiveFrames::Kind::Unknown:
        break;
    }
}

// Cuts every frame out of what is buffered; the cutter must always come back to NeedMore.
void drain(LiveFrameCutter& cutter, QList<QByteArray>& frames)
{
    QByteArray frame;
    for (;;) {
        const qsizetype before = cutter.buffered();
        const LiveFrameCutter::Result result = cutter.next(frame);
        if (result == LiveFrameCutter::Result::NeedMore) {
            // What waits for the next arrival is at most one frame's worth.
            FUZZ_CHECK(cutter.buffered() < LiveFrameCutter::MaxFrameLength);
            return;
        }
        // Every other answer takes bytes, so the loop ends.
        FUZZ_CHECK(cutter.buffered() < before);
        if (result == LiveFrameCutter::Result::Frame) {
            FUZZ_CHECK(frame.startsWith('%') && frame.endsWith("**"));
            FUZZ_CHECK(frame.size() <= LiveFrameCutter::MaxFrameLength);
            FUZZ_CHECK(frame.indexOf('%', 1) < 0);
            FUZZ_CHECK(frame.indexOf("**") == frame.size() - 2);
            readFrame(frame);
            frames.append(frame);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const FuzzInput input(data, size, FuzzInput::Header::SplitOnly);
    if (!input.usable())
        return 0;

    QList<QByteArray> inPieces;
    LiveFrameCutter cutter;
    for (const QByteArrayView arrival : input.arrivals()) {
        cutter.feed(arrival);
        drain(cutter, inPieces);
    }

    // How the stream was split must not change which frames come out of it.
    QList<QByteArray> atOnce;
    LiveFrameCutter whole;
    whole.feed(input.stream());
    drain(whole, atOnce);
    FUZZ_CHECK(inPieces == atOnce);
    FUZZ_CHECK(cutter.buffered() == whole.buffered());
    return 0;
}
