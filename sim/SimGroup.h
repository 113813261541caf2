#pragma once

#include <QByteArray>
#include <array>
#include <optional>

// One access group of a panel's group memory: the doors it may pass, the time group of each door,
// its counting limits and its rule switches.
struct SimGroup
{
    static constexpr int kFieldsSize = 40;

    int number = 0;
    std::array<int, 4> doorTimeGroup{};
    std::array<bool, 4> doorAllowed{};
    int accessLimit = 0; // passages allowed per user; 0 means no limit
    int accessZone = 1;
    int insideLimit = 0; // members inside at once; 0 means no limit
    int insideZone = 1;
    bool repeatBlockOff = false;
    bool localCapacityOff = false;
    bool clearInsideAtNight = false;
    bool antiPassbackOff = false;
    bool dailyApprovalRequired = false;

    // The group's fields as they follow the head of a group write frame.
    static std::optional<SimGroup> fromFields(const QByteArray& fields);
    QByteArray toFields() const;
};
