#pragma once

#include "protocol/PanelStatus.h"
#include "protocol/ParseStatus.h"

#include <QByteArrayView>

// Panel status as it arrives: the answer "$GMS" to the status broadcast and the pushed "%CMS".
class StatusFrames
{
public:
    static constexpr int PayloadLength = 26;
    static constexpr int AnswerLength = 4 + 4 + PayloadLength + 2;
    static constexpr int FrameLength = 4 + PayloadLength + 2;

    // The 26 status characters that start with the panel number.
    static ParseStatus parsePayload(QByteArrayView payload, PanelStatus& status);
    // "$GMS" + serial + payload + "**" (a carriage return or anything after "**" is ignored).
    static ParseStatus parseAnswer(QByteArrayView piece, PanelStatus& status);
    // "%CMS" + payload + "**".
    static ParseStatus parseFrame(QByteArrayView frame, PanelStatus& status);
};
