#pragma once

#include <QtGlobal>

// The repeated-access block time and its unit, packed into one number as the settings record
// and the column "Panel Same Tag Block MinSec" carry it: unit * 100 + time.
struct RepeatBlockTime
{
    static constexpr qint32 Seconds = 0;
    static constexpr qint32 Minutes = 1;
    static constexpr qint32 MaxTime = 60;

    qint32 time = 0; // 0..60
    qint32 unit = Seconds;

    static RepeatBlockTime unpack(qint32 packed);
    qint32 packed() const;
    // The block in seconds, for the panel.
    qint32 seconds() const;

    bool operator==(const RepeatBlockTime&) const = default;
};
