#pragma once

#include <QByteArray>

// What one request/answer exchange produced: whether enough characters arrived in time, and
// everything that was read from the link when they did.
struct ExchangeResult
{
    bool answered = false;
    QByteArray text;
    int sends = 0;
};
