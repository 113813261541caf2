#pragma once

#include "protocol/PanelSettingsRecord.h"

#include <QList>
#include <QString>

// The panel models the station knows (docs/protocol.md 3.3.1) and what each has. The settings
// window enables only what the chosen model has; the command line refuses the rest.
struct PanelModel
{
    qint32 code = 0;
    QString name; // a product name, shown as it is
    // Doors have relays of their own, each with its relay time ("KapiN Role").
    bool doorRelays = true;
    // UHF readers on the RS485 ports: output power, buzzer and LED; UHF reader models on doors.
    bool uhfReaders = false;
    // The inputs may be vehicle detectors, with their trigger time.
    bool vehicleDetectors = false;
    // A UHF reader reads a tag many times a second: the repeated-access block must cover the panel.
    bool requiresRepeatBlock = false;

    static const QList<PanelModel>& all();
    // The model with that code; the first one for a code the station does not know.
    static const PanelModel& byCode(qint32 code);

    // What follows when a panel is switched to this model: the repeated-access block raised to 2
    // with the time 1, UHF reader models and door relays dropped where the model has none.
    void applyTo(PanelSettingsRecord& settings) const;
    // The reader models a door of this model may have.
    bool allowsReaderModel(qint32 readerModel) const;
};
