#include "protocol/CommandCatalogue.h"

#include <QtGlobal>

namespace {

using C = PanelCommand;
using R = ResultConvention;

const QList<CommandInfo>& catalogue()
{
    static const QList<CommandInfo> list = {
        { C::NewCard, "NC", 2000, 13, 3, R::AcceptedByO },
        { C::ReadCard, "UC", 2000, 54, 1, R::Text },
        { C::DeleteCard, "DC", 2000, 13, 1, R::AnyAnswer },
        { C::EraseAllCards, "EC", 50000, 13, 1, R::CodeAnywhere },
        { C::ReadRecordCount, "RC", 2000, 13, 1, R::Number },
        { C::SendUserCount, "MU", 2000, 13, 1, R::AcceptedByO },
        { C::ReadPanelClock, "UR", 2000, 27, 1, R::Text },
        { C::SetPanelClock, "DR", 2000, 13, 1, R::EchoedCode },
        { C::SendGroup, "TN", 2000, 13, 1, R::AcceptedByO },
        { C::EraseGroups, "TE", 12000, 13, 1, R::CodeAnywhere },
        { C::EraseTimeGroups, "EG", 5000, 13, 1, R::CodeAnywhere },
        { C::SendTimeGroup, "NG", 2000, 13, 1, R::AcceptedByO },
        // The time-out of the download runs from the request and then from each arrival.
        { C::DownloadRecords, "DD", 2000, 1, 1, R::RecordStream },
        { C::SendPanelSettings, "DS", 2000, 13, 1, R::AcceptedByO },
        { C::SetReaderPower, "PS", 2000, 13, 1, R::AcceptedByO },
        { C::GetReaderPower, "PR", 2000, 13, 1, R::Number },
        { C::SetBuzzerLed, "LW", 2000, 13, 1, R::AcceptedByO },
        { C::GetBuzzerLed, "LR", 2000, 16, 1, R::Number },
        { C::EraseAllAccessCounters, "ES", 15000, 13, 1, R::EchoedCode },
        { C::EraseAccessCounter, "EP", 2000, 13, 1, R::EchoedCode },
        { C::ReadAccessCounter, "RP", 2000, 13, 1, R::Text },
        { C::SendDailyApproval, "CS", 2000, 13, 1, R::AcceptedByO },
        { C::SendGroupCalendar, "CZ", 2000, 13, 1, R::AcceptedByO },
        { C::SendProgrammedSlot, "ZW", 2000, 13, 1, R::AcceptedByO },
        { C::ReadProgrammedSlot, "ZR", 2000, 26, 1, R::Text },
        { C::EraseRecordMemory, "EM", 2000, 13, 1, R::EchoedCode },
        { C::ClearAllInsideCounts, "MA", 2000, 13, 1, R::EchoedCode },
        { C::ClearGroupInsideCount, "MS", 2000, 13, 1, R::EchoedCode },
        { C::ReadGroupInsideCount, "MR", 2000, 15, 1, R::Text },
        { C::ReadZoneCounter, "GR", 2000, 16, 1, R::Text },
        { C::WriteZoneCounter, "GW", 2000, 13, 1, R::EchoedCode },
        { C::ClearAlarm, "AS", 1000, 13, 1, R::EchoedCode },
        { C::ResetUserAntiPassback, "SA", 2000, 13, 1, R::EchoedCode },
        { C::ResetAllAntiPassback, "PA", 5000, 13, 1, R::EchoedCode },
        { C::DoorTrigger, "DT", 2000, 13, 1, R::AcceptedByO },
        { C::DoorForceOpen, "FO", 2000, 13, 1, R::AcceptedByO },
        { C::DoorForceClose, "FC", 2000, 13, 1, R::AcceptedByO },
    };
    return list;
}

} // namespace

const CommandInfo& CommandCatalogue::info(PanelCommand command)
{
    // The list is written in enum order; the assertion catches a line added out of place.
    const CommandInfo& entry = catalogue().at(static_cast<int>(command));
    Q_ASSERT(entry.command == command);
    return entry;
}

const QList<CommandInfo>& CommandCatalogue::all()
{
    return catalogue();
}

QByteArray CommandCatalogue::code(PanelCommand command)
{
    return QByteArray(info(command).code);
}
