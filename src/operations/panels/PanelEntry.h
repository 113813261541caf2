#pragma once

#include "protocol/PanelAddress.h"

#include <QString>
#include <optional>

// One panel of the roster: what a walk needs to reach it and what the lists show.
struct PanelEntry
{
    int position = 0; // 1-based place in the roster (smallest "Sira No" first)
    qint32 panelNumber = 0;
    quint16 serial = 0;
    QString ip; // "a.b.c.d", blank when the address columns are all 0
    quint16 port = 0;
    QString name;
    qint32 order = 0; // "Sira No" of the row
    // Seconds the panel's clock was ahead of the station's when last read; empty until read.
    std::optional<qint32> clockOffset;
    // Users, groups or time groups changed in the database since they were last sent to the panel.
    bool outOfStep = false;

    // Takes part in walks over all panels: number, port and serial set, address not blank.
    bool isEligible() const;
    PanelAddress address() const;
    // The serial as four upper-case hex digits.
    QString serialText() const;

    bool operator==(const PanelEntry&) const = default;
};
