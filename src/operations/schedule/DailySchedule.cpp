#include "operations/schedule/DailySchedule.h"

#include "store/StationSettings.h"

DailySchedule DailySchedule::from(const StationSettings& settings)
{
    return { settings.dailySendOn, settings.dailySendTime(), settings.dailyReceiveOn, settings.dailyReceiveTime() };
}

void DailySchedule::applyTo(StationSettings& settings) const
{
    settings.dailySendOn = sendOn;
    settings.setDailySendTime(sendTime);
    settings.dailyReceiveOn = retrievalOn;
    settings.setDailyReceiveTime(retrievalTime);
}
