#pragma once

#include "operations/panels/PanelTarget.h"
#include "operations/panels/WalkResult.h"
#include "protocol/PanelClock.h"

#include <QList>
#include <optional>

struct OperationContext;

// Reading and setting the clocks of the panels. Every clock read keeps the panel's offset from the
// station's clock with the panel, so the panel list shows how far each clock has drifted.
class PanelClockOperations
{
public:
    struct Reading
    {
        qint32 panelNumber = 0;
        PanelClock clock;
        // Seconds the panel is ahead of the station (negative: behind); empty when the panel's
        // answer does not make a date.
        std::optional<qint32> offset;
    };

    explicit PanelClockOperations(OperationContext& context);

    // "%UR" to the selected panel or to every usable panel; no question, no rights needed.
    WalkResult read(PanelTarget target, QList<Reading>* readings = nullptr);
    // "PC saatini panele göndermek istediğinizden emin misiniz?", then "%DR" with the station's
    // clock to the selected panel or every usable panel in one walk; a panel set records offset 0.
    WalkResult set(PanelTarget target);

private:
    void storeOffset(qint32 order, qint32 seconds);

    OperationContext& m_context;
    bool m_changed = false;
};
