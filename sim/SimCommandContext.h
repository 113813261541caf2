#pragma once

#include "SimRecord.h"

#include <QByteArray>
#include <QList>

struct SimPanelState;

// One request on its way through the panel: what was asked, and what the panel answers and reports.
class SimCommandContext
{
public:
    SimCommandContext(SimPanelState& state, int serial, int number, const QByteArray& code, const QByteArray& fields);

    SimPanelState& state;
    const int serial;
    int number; // a settings write gives the panel the number of its head
    const QByteArray code;
    const QByteArray fields; // the request between its head and "**"
    QList<QByteArray> answers;
    QList<SimRecord> events; // operations the request caused, reported live
    bool statusChanged = false;
    bool settingsChanged = false;

    void confirm();
    void refuse();
    // Head, the answer's own fields, "**".
    void answer(const QByteArray& answerFields);

    // How long the full answer to a command is; refusals are padded to it.
    static int answerLength(const QByteArray& code);
};
