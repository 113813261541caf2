#pragma once

#include "store/StationSettings.h"

#include <QByteArray>
#include <QString>
#include <functional>

// Reads and writes the station settings record byte for byte: little-endian, no padding, the
// path as a 2-byte length and Windows-1254 bytes, yes/no values as 2-byte -1/0.
class ConfigFile
{
public:
    enum class Status
    {
        Ok, // a whole record was read
        Missing, // no file: not set up
        Truncated, // the file ends inside the record: not set up
        Unreadable // the file exists but cannot be read
    };

    struct ReadResult
    {
        Status status = Status::Missing;
        // All fields zero (not set up) unless status is Ok.
        StationSettings settings;
        // Why the record was not taken; empty when Ok or Missing.
        QString error;
    };

    // The size of a record with an empty path.
    static constexpr int FixedSize = 4 + 4 + 64 * 4 + 2 + 2 + 2 + 8 + 2 + 8;

    static ReadResult read(const QString& path);
    // Replaces the file atomically; nothing is changed when it fails.
    static bool write(const QString& path, const StationSettings& settings, QString* error = nullptr);
    // Reads the record, applies change and writes it back, so that fields another window or
    // program changed meanwhile are kept. Refuses a file that holds no whole record. written
    // receives the record as written.
    static bool update(const QString& path, const std::function<void(StationSettings&)>& change,
                       StationSettings* written = nullptr, QString* error = nullptr);

    static ReadResult decode(const QByteArray& bytes);
    static QByteArray encode(const StationSettings& settings);
};
