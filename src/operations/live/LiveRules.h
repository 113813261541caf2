#pragma once

#include "protocol/PassageCode.h"

#include <QString>

class Database;

// Which refused passages the live monitor keeps (the switches of the live monitor settings).
struct LiveRules
{
    bool dropAntiPassback = false; // LiveAPBInvalid
    bool dropDenied = false; // LiveDeniedInvalid
    bool dropUnknown = false; // LiveUnknownInvalid

    // Reads the switches from ProgInit; all off when the row or the columns are missing.
    static LiveRules read(const Database& db, QString* error = nullptr);
    // Stores the switches in ProgInit (the row is made when the table has none).
    bool write(const Database& db, QString* error = nullptr) const;
    // Whether a passage with that code is stored.
    bool keeps(PassageCode code) const;
};
