#include "SimCommandProcessor.h"

#include "SimCommandContext.h"
#include "SimCounterCommands.h"
#include "SimRecordCommands.h"
#include "SimRuleCommands.h"
#include "SimText.h"
#include "SimUserCommands.h"

std::optional<SimCommandProcessor::Head> SimCommandProcessor::parseHead(const QByteArray& frame)
{
    constexpr int kHeadSize = 10;
    if (frame.size() < kHeadSize + 2 || frame.at(0) != '%' || !frame.endsWith("**"))
        return std::nullopt;
    Head head;
    head.code = frame.mid(1, 2);
    for (char c : head.code) {
        if (c < 'A' || c > 'Z')
            return std::nullopt;
    }
    const auto serial = SimText::hex(frame, 3, 4);
    const auto number = SimText::digits(frame, 7, 3);
    if (!serial || !number)
        return std::nullopt;
    head.serial = *serial;
    head.number = *number;
    head.fields = frame.mid(kHeadSize, frame.size() - kHeadSize - 2);
    return head;
}

bool SimCommandProcessor::addressed(const Head& head, int serial, int number)
{
    if (head.code == "AS" && head.serial == 0 && head.number == 0)
        return true;
    if (head.serial != serial)
        return false;
    // A settings write carries the number the panel is to take on.
    if (head.code == "DS")
        return head.number >= 1 && head.number <= 255;
    return head.number == number;
}

void SimCommandProcessor::process(SimCommandContext& c)
{
    if (!SimUserCommands::handle(c) && !SimRuleCommands::handle(c) && !SimCounterCommands::handle(c))
        SimRecordCommands::handle(c);
}
