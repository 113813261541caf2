#pragma once

#include "operations/panels/WalkResult.h"
#include "protocol/SearchAnswer.h"

#include <QList>

struct OperationContext;

// Finds the panels on the network: the server station only, with administrator rights and a
// confirmation; "%US1975**" is broadcast, answers are collected while a countdown runs ("Searching...
// " + n on the status line), and when at least one panel answered PanelSettings is replaced by
// the panels found (in one transaction) and the roster reloaded. Blocks the calling thread.
class PanelSearch
{
public:
    struct Timing
    {
        int ticks = 3;
        int tickMs = 1000;
    };

    explicit PanelSearch(OperationContext& context);
    PanelSearch(OperationContext& context, Timing timing);

    WalkResult run(QList<SearchAnswer>* found = nullptr);

    // Replaces PanelSettings with one row per answer, in the order given; false and nothing
    // changed on failure.
    static bool storeAnswers(OperationContext& context, const QList<SearchAnswer>& answers, QString* error = nullptr);

private:
    OperationContext& m_context;
    Timing m_timing;
};
