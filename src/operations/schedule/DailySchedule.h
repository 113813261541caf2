#pragma once

#include <QTime>

struct StationSettings;

// The two daily transfers as the operator set them: each on or off, at a time of day.
struct DailySchedule
{
    bool sendOn = false;
    QTime sendTime;
    bool retrievalOn = false;
    QTime retrievalTime;

    static DailySchedule from(const StationSettings& settings);
    // Writes the four values into the settings record.
    void applyTo(StationSettings& settings) const;

    bool operator==(const DailySchedule&) const = default;
};
