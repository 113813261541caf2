#pragma once

#include <QDateTime>
#include <QString>

// A panel's clock as read back: the result of the read and the time shown to the person.
struct PanelClock
{
    // 1 read, 0 answered with another code (or unreadable digits), -1 no answer.
    qint32 status = -1;
    // "dd/MM/yyyy hh:mm:ss", the century always 20.
    QString text;
    QDateTime time;
};
