#pragma once

#include "SimCalendar.h"
#include "SimGroup.h"
#include "SimPanelSettings.h"
#include "SimProgrammedSlot.h"
#include "SimRecordMemory.h"
#include "SimTimeGroup.h"
#include "SimUser.h"
#include "SimUserSlots.h"
#include "protocol/Direction.h"
#include "protocol/PassageCode.h"

#include <QDateTime>
#include <QHash>
#include <QMap>
#include <QSet>
#include <array>
#include <optional>

// Everything a panel remembers. Plain data; the panel guards it with its lock.
struct SimPanelState
{
    static constexpr int kUserSlots = 20000;
    static constexpr int kGroups = 1280;
    static constexpr int kTimeGroups = 16;
    static constexpr int kCalendars = 8;
    static constexpr int kReaders = 4;

    struct Reader
    {
        int power = 30;
        int buzzer = 1;
        int led = 1;
    };

    QHash<int, SimUser> users; // by user number 1..20000
    QHash<qint64, int> cardIndex; // card number -> user number
    SimUserSlots userSlots; // the numbers in use, for a random card holder
    int announcedUserCount = 0;
    QHash<int, SimGroup> groups; // by group number 1..1280
    QHash<int, SimTimeGroup> timeGroups; // 1..16
    QHash<int, SimCalendar> calendars; // 1..8
    QMap<int, SimProgrammedSlot> programmedSlots; // key weekday * 100 + slot
    QSet<int> dailyApproved;
    QHash<int, int> accessCounts; // user -> counted passages
    QHash<int, std::array<int, 3>> canteenCounts; // user -> passages in each canteen window
    QHash<int, int> insideCounts; // group -> members inside
    std::array<int, 2> zoneCounters{};
    QHash<int, Direction> antiPassback; // user * 10 + local zone -> last direction
    QHash<int, QDateTime> lastPassage; // user -> last granted passage, for the repeated-access block
    std::array<Reader, kReaders> readers{};
    std::array<int, 4> doorStates{}; // 0 closed, 1 open, 2 held open by the station or a programme
    std::array<QDateTime, 4> doorPulseUntil{}; // a triggered door closes again at this panel time
    std::array<bool, 4> programmedOpen{};
    std::array<bool, 4> programmedRelay{};
    std::array<int, 4> lineStates{ { 1, 1, 1, 1 } }; // 1 reader line up, 0 down
    bool alarm = false;
    bool fire = false;
    qint64 clockOffsetMs = 0;
    QDate lastNight; // the last day whose night clearing has been done
    SimPanelSettings settings;
    SimRecordMemory records;

    // The panel's own clock: the host clock moved by the offset the station set, as a plain local
    // date and time.
    QDateTime now() const;
    void setClock(const QDateTime& panelTime);

    // Users change only through these three, which keep the card and slot indexes with them.
    void putUser(const SimUser& user);
    bool removeUser(int id);
    void clearUsers();
    const SimUser* userByCard(qint64 card) const;
    int recordCapacity() const;
    void applySettings(const SimPanelSettings& newSettings);
    // Stores an operation record (door or relay event) with its source as the user number.
    void storeOperation(PassageCode code, int door, int source, const QDateTime& moment);
};
