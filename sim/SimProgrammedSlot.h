#pragma once

#include <QByteArray>
#include <QTime>
#include <array>
#include <optional>

// One weekly programmed slot: between its start and end the panel holds the chosen doors open and
// the chosen relays on.
struct SimProgrammedSlot
{
    static constexpr int kFieldsSize = 28;
    static constexpr int kSlotsPerDay = 16;

    int weekday = 1; // 1 = Monday
    int slot = 1;
    bool active = false;
    QTime start{ 0, 0 };
    QTime end{ 0, 0 };
    std::array<bool, 4> doors{};
    std::array<bool, 4> relays{};

    bool covers(int dayOfWeek, const QTime& time) const;

    // Weekday, slot, active, start hhmm, end hhmm, four doors, "0000", four relays, "0000".
    static std::optional<SimProgrammedSlot> fromFields(const QByteArray& fields);
    QByteArray toFields() const;
};
