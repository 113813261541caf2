#pragma once

// The reports the station makes over its passage records and card holders.
enum class ReportKind
{
    Access, // personnel passages with every filter
    Visitors, // visitor passages with the visit's details
    DoorOperations, // door operations (event codes 5..10)
    Came, // persons with a granted entry on the chosen day
    NotCome, // persons without one
    FirstInLastOut, // earliest and latest granted passage per card on the chosen day
    Personnel, // the personnel list
    InOut, // who is inside (or outside) each global zone now
    Monthly // one row per person, one column per day of the month
};
