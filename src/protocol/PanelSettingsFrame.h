#pragma once

#include "protocol/CommandResult.h"
#include "protocol/ExchangeResult.h"
#include "protocol/PanelAddress.h"
#include "protocol/PanelSettingsRecord.h"
#include "protocol/ParseStatus.h"
#include "protocol/SearchAnswer.h"

#include <QByteArray>
#include <QByteArrayView>

class PanelLink;

// The panel settings record (176 characters) carried by "%DS" and by the search answer "$US".
class PanelSettingsFrame
{
public:
    static constexpr int RecordLength = 176;
    // "$US" + serial + number + record + "**".
    static constexpr int SearchAnswerLength = 3 + 4 + 3 + RecordLength + 2;

    static QByteArray buildRecord(const PanelSettingsRecord& settings);
    // Reads a record; false when it is short or a number field holds anything but digits.
    static bool parseRecord(QByteArrayView record, PanelSettingsRecord& settings);
    // The head carries the panel's serial and its (new) panel number.
    static QByteArray buildFrame(const PanelAddress& panel, const PanelSettingsRecord& settings);
    // One "$US" piece of a search datagram.
    static ParseStatus parseSearchAnswer(QByteArrayView piece, SearchAnswer& answer);
};

// Sends new settings ("O" convention).
CommandResult<> SendPanelSettings(PanelLink& link, const PanelAddress& panel, const PanelSettingsRecord& settings);
