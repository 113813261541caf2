#pragma once

// Why a parser did or did not produce a value.
enum class ParseStatus
{
    Valid,
    // The text is the start of something valid: wait for more bytes.
    NeedMore,
    // Not a frame of the expected shape: skip it.
    Malformed,
    // Well formed, but for a panel number this station does not serve (outside 1..64).
    OutOfRange,
};
