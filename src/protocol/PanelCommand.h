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

// How a command's answer becomes its result.
enum class ResultConvention
{
    // "$"+code found and status "O": 1; answered otherwise: -1; no answer: 0.
    AcceptedByO,
    // As AcceptedByO, but no answer also gives -1.
    AcceptedByOOrFail,
    // First "$" followed by the code: 1; another code: 0; no answer: -1.
    EchoedCode,
    // The code anywhere in the answer: 1; not found: -1; no answer: 0.
    CodeAnywhere,
    // Any answer in time: 1; none: 0.
    AnyAnswer,
    // A number read from the answer field, or -1.
    Number,
    // A text from the answer, or a failure word ("ERROR", "TIMEOUT", "INVALID").
    Text,
    // A stream of records ended by an end marker.
    RecordStream,
};
