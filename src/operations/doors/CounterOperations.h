#pragma once

#include "operations/panels/PanelTarget.h"
#include "operations/panels/WalkResult.h"

#include <QString>

struct OperationContext;

// Anti-passback, access counters, inside counts and the offline record memory of the panels.
// Users are named by their record number ("Kayit No"), groups by "Grup No"; 0 means none is
// selected ("Kullanıcı listesi boş!" / "Geçiş grup listesi boş!").
class CounterOperations
{
public:
    explicit CounterOperations(OperationContext& context);

    WalkResult resetAllAntiPassback(PanelTarget target); // "%PA"
    WalkResult resetUserAntiPassback(PanelTarget target, qint64 userRecordNo); // "%SA"
    WalkResult eraseAllAccessCounters(PanelTarget target); // "%ES"
    WalkResult eraseUserAccessCounter(PanelTarget target, qint64 userRecordNo); // "%EP"
    WalkResult eraseRecordMemory(PanelTarget target); // "%EM"
    // The selected panel only.
    WalkResult clearAllInsideCounts(); // "%MA"
    WalkResult clearGroupInsideCount(qint32 groupNo); // "%MS"

    // Reading members: the selected panel, no rights check. The value read comes back through
    // the pointer as well as in the message told.
    WalkResult readGroupInsideCount(qint32 groupNo, QString* count = nullptr); // "%MR"
    // Shows nothing itself: the count is for the record counter label.
    WalkResult readRecordCount(qint32* count = nullptr); // "%RC"
    WalkResult readUserAccessCounter(qint64 userRecordNo, QString* text = nullptr); // "%RP"

private:
    OperationContext& m_context;
};
