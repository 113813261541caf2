#pragma once

#include "operations/panels/PanelSettingsInput.h"
#include "operations/panels/WalkResult.h"

struct OperationContext;
class PanelRoster;

// The settings of one panel slot (named by its "Sira No"): save, send and remove, each with its
// question, the administrator check and the station's messages, and a slot for a new panel.
class PanelSettingsOperations
{
public:
    // How a send failed, as the person is told it.
    static Message sendFailed(bool timedOut);

    explicit PanelSettingsOperations(OperationContext& context);

    // Administrator check, "Değişiklikleri Kaydetmek İstiyor musunuz?", the checks of the input
    // (refusals told, corrections silent), then the slot's row and the serial of its access group
    // rows written in one transaction; the roster is read again. The slot as stored comes back
    // through *stored.
    WalkResult save(qint32 order, const PanelSettingsInput& input, PanelSlot* stored = nullptr);
    // Save first (a refused save stops here; a declined one sends what is stored), then
    // "Panele yeni ayarları göndermek istiyor musunuz?", the administrator check and "%DS" to the
    // panel: by TCP, or as a datagram to the broadcast address without waiting for an answer.
    WalkResult send(qint32 order, const PanelSettingsInput& input, bool byBroadcast);
    // Asks, checks rights, then stores the slot with the values of a removed panel: the row stays,
    // without serial, so it is no longer in use. Rows of other tables are left as they are.
    WalkResult remove(qint32 order, PanelSlot* stored = nullptr);
    // The "Sira No" of a slot for a new panel (the first slot not in use, or a new row); 0 when the
    // 64 slots are in use, after telling the person.
    qint32 newSlot();

    // Makes the roster position of that row the selected panel; false when the roster has none.
    static bool selectSlot(PanelRoster& roster, qint32 order);

private:
    // Writes a checked slot and reads the roster again; tells and returns the outcome.
    WalkResult::Outcome storeSlot(const PanelSlot& slot, bool carrySerial);
    WalkResult broadcast(const PanelSlot& slot);

    OperationContext& m_context;
};
