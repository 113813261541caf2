#pragma once

#include "protocol/CardEvent.h"
#include "protocol/ParseStatus.h"

#include <QByteArrayView>

// The frames panels push without being asked.
class LiveFrames
{
public:
    enum class Kind
    {
        Unknown,
        CardEvent,
        Status
    };

    static constexpr int CardEventLength = 3 + 33 + 2;

    // Which frame a cut piece ("%" .. "**") is, by its letters.
    static Kind kindOf(QByteArrayView frame);
    // "%CD" + 33 characters + "**". The century is always 20; the direction digit 1 is an entry.
    static ParseStatus parseCardEvent(QByteArrayView frame, CardEvent& event);
};
