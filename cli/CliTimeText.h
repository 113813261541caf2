#pragma once

#include <QDate>
#include <QString>
#include <QTime>
#include <optional>

// Dates and times of day as typed on the command line, refused with a reason when they are not
// real ones ("25:61", "2026-02-30").
class CliTimeText
{
public:
    // "2026-03-01" or "01/03/2026".
    static std::optional<QDate> date(const QString& text, QString* error);
    // "08:30" or "08:30:15", 00:00:00 to 23:59:59.
    static std::optional<QTime> timeOfDay(const QString& text, QString* error);
    // "on" / "off" (also "1"/"0", "yes"/"no").
    static std::optional<bool> onOff(const QString& text, QString* error);
};
