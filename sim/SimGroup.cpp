#include "SimGroup.h"

#include "SimText.h"

std::optional<SimGroup> SimGroup::fromFields(const QByteArray& f)
{
    if (f.size() < kFieldsSize)
        return std::nullopt;
    SimGroup group;
    const auto number = SimText::digits(f, 0, 4);
    const auto accessLimit = SimText::digits(f, 16, 3);
    const auto accessZone = SimText::digits(f, 19, 2);
    const auto insideLimit = SimText::digits(f, 21, 4);
    const auto insideZone = SimText::digits(f, 25, 2);
    const auto firstFlag = SimText::flag(f, 27);
    if (!number || !accessLimit || !accessZone || !insideLimit || !insideZone || !firstFlag)
        return std::nullopt;
    for (int door = 0; door < 4; ++door) {
        const auto timeGroup = SimText::digits(f, 4 + door * 3, 3);
        const auto allowed = SimText::flag(f, 28 + door);
        if (!timeGroup || !allowed)
            return std::nullopt;
        group.doorTimeGroup[door] = *timeGroup;
        group.doorAllowed[door] = *allowed;
    }
    std::array<bool, 4> more{};
    for (int i = 0; i < 4; ++i) {
        const auto value = SimText::flag(f, 36 + i);
        if (!value)
            return std::nullopt;
        more[i] = *value;
    }
    group.number = *number;
    group.accessLimit = *accessLimit;
    group.accessZone = *accessZone;
    group.insideLimit = *insideLimit;
    group.insideZone = *insideZone;
    group.dailyApprovalRequired = *firstFlag;
    group.repeatBlockOff = more[0];
    group.localCapacityOff = more[1];
    group.clearInsideAtNight = more[2];
    group.antiPassbackOff = more[3];
    return group;
}

QByteArray SimGroup::toFields() const
{
    QByteArray f = SimText::number(number, 4);
    for (int timeGroup : doorTimeGroup)
        f += SimText::number(timeGroup, 3);
    f += SimText::number(accessLimit, 3);
    f += SimText::number(accessZone, 2);
    f += SimText::number(insideLimit, 4);
    f += SimText::number(insideZone, 2);
    f += dailyApprovalRequired ? '1' : '0';
    for (bool allowed : doorAllowed)
        f += allowed ? '1' : '0';
    f += "0000";
    for (bool value : { repeatBlockOff, localCapacityOff, clearInsideAtNight, antiPassbackOff })
        f += value ? '1' : '0';
    return f;
}
