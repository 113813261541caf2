#include "protocol/GroupCommands.h"

#include "protocol/AnswerReading.h"
#include "protocol/CommandRun.h"
#include "protocol/Formatters.h"

using namespace AnswerReading;

namespace {

QByteArray hhmm(const QTime& time)
{
    return time.isValid() ? PadDigits(time.hour(), 2) + PadDigits(time.minute(), 2) : QByteArray("0000");
}

QByteArray ddMMyy(const QDate& date)
{
    return date.isValid() ? PadDigits(date.day(), 2) + PadDigits(date.month(), 2) + PadDigits(date.year() % 100, 2)
                          : QByteArray("000000");
}

QByteArray zoneDigits(qint32 zone)
{
    return zone >= 1 && zone <= 99 ? PadDigits(zone, 2) : QByteArray("01");
}

QByteArray basicArea(const TimeGroupRecord& group)
{
    switch (group.restrictionType) {
    case 1:
    case 2:
        return ddMMyy(group.startDate) + ddMMyy(group.endDate);
    case 3:
    case 4:
        return hhmm(group.startTime) + hhmm(group.endTime) + "0000";
    case 10:
        return hhmm(group.startTimes[0]) + hhmm(group.startTimes[1]) + hhmm(group.startTimes[2]);
    case 11:
    case 12: {
        QByteArray area;
        for (const qint32 hour : group.hours)
            area += PadDigits(hour, 2);
        return area;
    }
    default:
        return QByteArray(12, '0');
    }
}

bool carriesCalendarPlan(qint32 type)
{
    return type == 5 || type == 6 || type == 8 || type == 9 || type == 13;
}

QByteArray extendedArea(const TimeGroupRecord& group)
{
    QByteArray area;
    area.reserve(105);
    const bool plan = carriesCalendarPlan(group.restrictionType);
    for (const bool day : group.weekdays)
        area += FlagDigit(plan && day);
    for (int day = 0; day < 7; ++day)
        area += plan ? hhmm(group.weekdayStart[day]) + hhmm(group.weekdayEnd[day]) : QByteArray(8, '0');
    for (const bool day : group.monthDays)
        area += FlagDigit(plan && day);
    area += FlagDigit(plan && group.extraWindow);
    area += plan ? hhmm(group.extraStart) + hhmm(group.extraEnd) : QByteArray(8, '0');
    const bool hours = plan || group.restrictionType == 10;
    area += hours ? PadDigits(group.extraHours, 1) + PadDigits(group.extraHours2, 1) : QByteArray("00");
    return area;
}

} // namespace

QByteArray BuildGroupFrame(const PanelAddress& panel, const AccessGroupRecord& group)
{
    QByteArray fields = PadDigits(group.groupNo, 4);
    for (const qint32 timeGroup : group.doorTimeGroups)
        fields += PadDigits(timeGroup, 3);
    fields += group.accessCountLimit >= 0 && group.accessCountLimit < 256 ? PadDigits(group.accessCountLimit, 3)
                                                                          : QByteArray("000");
    fields += zoneDigits(group.accessCountZone);
    fields += group.insideCountLimit >= 0 && group.insideCountLimit < 10000 ? PadDigits(group.insideCountLimit, 4)
                                                                            : QByteArray("0000");
    fields += zoneDigits(group.insideCountZone);
    fields += FlagDigit(group.dailyApprovalRequired);
    for (const bool door : group.doors)
        fields += FlagDigit(door);
    fields += "0000";
    fields += FlagDigit(group.repeatedAccessBlockOff) + FlagDigit(group.localCapacityOff)
        + FlagDigit(group.clearInsideCountAtNight) + FlagDigit(group.antiPassbackOff);
    return panel.request("TN", fields);
}

QByteArray BuildEraseGroupsFrame(const PanelAddress& panel)
{
    return panel.request("TE");
}

QByteArray BuildEraseTimeGroupsFrame(const PanelAddress& panel)
{
    return panel.request("EG");
}

QByteArray BuildTimeGroupFields(const TimeGroupRecord& timeGroup)
{
    return PadDigits(timeGroup.number, 2) + PadDigits(timeGroup.restrictionType, 2) + basicArea(timeGroup)
        + extendedArea(timeGroup);
}

QByteArray BuildTimeGroupFrame(const PanelAddress& panel, const TimeGroupRecord& timeGroup)
{
    return panel.request("NG", BuildTimeGroupFields(timeGroup));
}

CommandResult<> SendGroup(PanelLink& link, const PanelAddress& panel, const AccessGroupRecord& group)
{
    return acceptedByO(run(link, PanelCommand::SendGroup, BuildGroupFrame(panel, group)), panel.answerCode("TN"));
}

CommandResult<> EraseGroups(PanelLink& link, const PanelAddress& panel)
{
    return codeAnywhere(run(link, PanelCommand::EraseGroups, BuildEraseGroupsFrame(panel)), panel.answerCode("TE"));
}

CommandResult<> EraseTimeGroups(PanelLink& link, const PanelAddress& panel)
{
    return codeAnywhere(run(link, PanelCommand::EraseTimeGroups, BuildEraseTimeGroupsFrame(panel)),
                        panel.answerCode("EG"));
}

CommandResult<> SendTimeGroup(PanelLink& link, const PanelAddress& panel, const TimeGroupRecord& timeGroup)
{
    return acceptedByO(run(link, PanelCommand::SendTimeGroup, BuildTimeGroupFrame(panel, timeGroup)),
                       panel.answerCode("NG"));
}
