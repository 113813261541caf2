#pragma once

// The local time zone of the process, named once at start-up.
//
// Every local date-time the station makes (each stored or live passage) asks the C library for
// the local zone. With TZ unset the library checks the zone file on disk again at every such
// call, a file system call per value that dominates reading tens of thousands of records.
// Naming the system's zone file in TZ keeps exactly the same zone and has it read once; a change
// of the machine's zone while the program runs is then seen at its next start.
class ProcessTimeZone
{
public:
    // Call first thing in main, before any thread starts. True when TZ was set here; false when
    // it was set already (left as it is) or the system has no zone file.
    static bool settle();
};
