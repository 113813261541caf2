#pragma once

#include <QDateTime>
#include <QString>

// A panel's clock as read back: the time shown to the person and the time it stands for.
struct PanelClock
{
    // "dd/MM/yyyy hh:mm:ss", the century always 20.
    QString text;
    QDateTime time;

    bool operator==(const PanelClock&) const = default;
};
