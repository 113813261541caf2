#include "SimRecordCommands.h"

#include "SimCommandContext.h"
#include "SimFrames.h"
#include "SimPanelState.h"
#include "SimText.h"

namespace {
void download(SimCommandContext& c)
{
    const SimRecordMemory& memory = c.state.records;
    QByteArray stream;
    stream.reserve(qsizetype(memory.count()) * 30);
    for (int i = 0; i < memory.count(); ++i)
        SimFrames::appendDownloadRecord(stream, memory.at(i));
    if (!stream.isEmpty())
        c.answers.append(stream);
    c.answers.append(SimFrames::downloadEnd(c.serial, c.number));
}

// The operation a door command stores: "DT" a trigger, "FO" held open, "FC" held closed.
PassageCode operationOf(const QByteArray& code)
{
    if (code == "DT")
        return PassageCode::OperatorTrigger;
    return code == "FO" ? PassageCode::OperatorOpen : PassageCode::OperatorClose;
}

void doorCommand(SimCommandContext& c)
{
    constexpr int kTextSize = 30;
    if (c.fields.size() < kTextSize) {
        c.refuse();
        return;
    }
    std::array<bool, 4> doors{};
    std::array<bool, 4> relays{};
    for (int i = 0; i < 4; ++i) {
        const auto door = SimText::flag(c.fields, i);
        const auto relay = SimText::flag(c.fields, 4 + i);
        if (!door || !relay) {
            c.refuse();
            return;
        }
        doors[i] = *door;
        relays[i] = *relay;
    }
    if (!SimText::flag(c.fields, 8) || !SimText::flag(c.fields, 9) || !SimText::hex(c.fields, 10, 4)
        || !SimText::longDigits(c.fields, 14, 16)) {
        c.refuse();
        return;
    }
    const PassageCode code = operationOf(c.code);
    const QDateTime now = c.state.now();
    for (int i = 0; i < 4; ++i) {
        if (doors[i]) {
            if (code == PassageCode::OperatorTrigger) {
                c.state.doorStates[i] = 1;
                c.state.doorPulseUntil[i] = now.addSecs(SimRecordCommands::kTriggerSeconds);
            } else {
                c.state.doorStates[i] = code == PassageCode::OperatorOpen ? 2 : 0;
                c.state.doorPulseUntil[i] = QDateTime();
            }
            c.state.storeOperation(code, i + 1, SimRecordCommands::kDoorSourceBase + i + 1, now);
        }
        if (relays[i])
            c.state.storeOperation(code, i + 1, SimRecordCommands::kRelaySourceBase + i + 1, now);
    }
    c.statusChanged = true;
    c.confirm();
}
} // namespace

bool SimRecordCommands::handle(SimCommandContext& c)
{
    if (c.code == "DD") {
        download(c);
    } else if (c.code == "RC") {
        // The panel counts one more than it holds.
        c.answer(SimText::number(c.state.records.count() + 1, 5));
    } else if (c.code == "EM") {
        c.state.records.clear();
        c.confirm();
    } else if (c.code == "DT" || c.code == "FO" || c.code == "FC") {
        doorCommand(c);
    } else {
        return false;
    }
    return true;
}
