#pragma once

// Every request the station sends over a panel link.
enum class PanelCommand
{
    NewCard,
    ReadCard,
    DeleteCard,
    EraseAllCards,
    ReadRecordCount,
    SendUserCount,
    ReadPanelClock,
    SetPanelClock,
    SendGroup,
    EraseGroups,
    EraseTimeGroups,
    SendTimeGroup,
    DownloadRecords,
    SendPanelSettings,
    SetReaderPower,
    GetReaderPower,
    SetBuzzerLed,
    GetBuzzerLed,
    EraseAllAccessCounters,
    EraseAccessCounter,
    ReadAccessCounter,
    SendDailyApproval,
    SendGroupCalendar,
    SendProgrammedSlot,
    ReadProgrammedSlot,
    EraseRecordMemory,
    ClearAllInsideCounts,
    ClearGroupInsideCount,
    ReadGroupInsideCount,
    ReadZoneCounter,
    WriteZoneCounter,
    ClearAlarm,
    ResetUserAntiPassback,
    ResetAllAntiPassback,
    DoorTrigger,
    DoorForceOpen,
    DoorForceClose,
};

// How a command's answer becomes its outcome (see CommandOutcome).
enum class ResultConvention
{
    // "$"+code found and status "O": accepted; another status: refused; not found: other code.
    AcceptedByO,
    // The first "$" followed by the code: accepted, whatever its status; anything else: other code.
    EchoedCode,
    // The code anywhere in the answer: accepted; not found: other code.
    CodeAnywhere,
    // Any answer in time: accepted.
    AnyAnswer,
    // A number read from the answer field.
    Number,
    // A text from the answer.
    Text,
    // A stream of records ended by an end marker.
    RecordStream,
};
