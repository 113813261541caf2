#pragma once

#include "protocol/ProgrammedSlot.h"
#include "store/Message.h"

#include <QList>

class Database;

// The programmed door operations of each panel (ProgRelay2): per weekday (1 = Monday .. 7) the
// slots 1..16 that switch doors and relays between a start and an end time, the same number of
// slots a panel keeps. A panel's 7 x 16 rows are made together, inactive and 00:00-00:00, the
// first time its programme is opened for editing (ensurePanel); sending and reading back touch
// only the rows that exist. Changes of several rows are one transaction: refused or failed, the
// table is left as it was.
class ProgrammedSlotRepository
{
public:
    static constexpr int Weekdays = 7;
    static constexpr int SlotsPerDay = 16;

    struct Result
    {
        bool ok = false;
        Message message;
        QString error;
    };

    explicit ProgrammedSlotRepository(Database& db);

    // The slots of one weekday in slot order.
    QList<ProgrammedSlot> day(int panel, int weekday, QString* error = nullptr) const;
    // Every slot of the panel by weekday, then slot.
    QList<ProgrammedSlot> panel(int panel, QString* error = nullptr) const;
    // Makes the panel's rows when it has none.
    Result ensurePanel(int panel) const;
    // Stores every given slot (all eight doors and relays), adding a row that is missing.
    Result store(int panel, const QList<ProgrammedSlot>& slotList) const;
    // Copies Monday's slots, position by position, onto the slots of the weekday; refused for Monday.
    Result copyFromMonday(int panel, int weekday) const;
    // What a panel gave back for one slot: active, times, doors and relays 1..4; the rest stays.
    Result storeReceived(int panel, const ProgrammedSlot& slot) const;

    // The message for a slot that cannot be stored as it is; empty when it can.
    static Message check(const ProgrammedSlot& slot);

private:
    Database& m_db;
};
