#include "store/StationSettings.h"

#include <cmath>

namespace {
constexpr int SecondsPerDay = 24 * 60 * 60;
// The days a stored date-time can hold: 1 January 100 to 31 December 9999.
constexpr double FirstDay = -657434.0;
constexpr double LastDay = 2958465.0;

// The stamp's day with the time of day put in. Before 1899 the day is negative and the time still
// counts forward from midnight, so it is taken away; a stamp that holds no date keeps only the time.
double withTimeOfDay(double stamp, double timeOfDay)
{
    const double day = std::isfinite(stamp) ? std::trunc(stamp) : 0.0;
    if (day < FirstDay || day > LastDay)
        return timeOfDay;
    return day < 0 ? day - timeOfDay : day + timeOfDay;
}
} // namespace

bool StationSettings::isSetUp() const
{
    return marker == SetUpMarker;
}

bool StationSettings::isServer() const
{
    return workingMode == Server;
}

bool StationSettings::isWatched(int panel) const
{
    return panel >= 1 && panel <= PanelCount && watched[panel - 1] != 0;
}

void StationSettings::setWatched(int panel, bool on)
{
    if (panel >= 1 && panel <= PanelCount)
        watched[panel - 1] = on ? 1 : 0;
}

QList<int> StationSettings::watchedPanels() const
{
    QList<int> panels;
    for (int panel = 1; panel <= PanelCount; ++panel) {
        if (isWatched(panel))
            panels.append(panel);
    }
    return panels;
}

QTime StationSettings::dailySendTime() const
{
    return timeOfStamp(dailySendStamp);
}

void StationSettings::setDailySendTime(const QTime& time)
{
    // Keep the date part the record already holds; only the time of day matters.
    dailySendStamp = withTimeOfDay(dailySendStamp, stampOfTime(time));
}

QTime StationSettings::dailyReceiveTime() const
{
    return timeOfStamp(dailyReceiveStamp);
}

void StationSettings::setDailyReceiveTime(const QTime& time)
{
    dailyReceiveStamp = withTimeOfDay(dailyReceiveStamp, stampOfTime(time));
}

Message StationSettings::applyStartChoices(bool serverMode, const QString& path, const QList<int>& panels,
                                           int languageIndex)
{
    if (serverMode) {
        workingMode = Server;
    } else {
        if (path.trimmed().isEmpty())
            return Message(QStringLiteral("Uzak veritabanı dosya adı belirtilmedi"));
        workingMode = Client;
        remotePath = path;
        watched.fill(0);
        for (const int panel : panels)
            setWatched(panel, true);
        // A client always watches at least one panel.
        if (watchedPanels().isEmpty())
            setWatched(1, true);
    }
    marker = SetUpMarker;
    language = static_cast<qint16>(languageIndex);
    return {};
}

QTime StationSettings::timeOfStamp(double stamp)
{
    if (!std::isfinite(stamp))
        return QTime(0, 0);
    // Before 1899 the fraction still counts forward from midnight, whatever the sign.
    const double fraction = std::fabs(stamp - std::trunc(stamp));
    const long long seconds = std::llround(fraction * SecondsPerDay) % SecondsPerDay;
    return QTime(0, 0).addSecs(static_cast<int>(seconds));
}

double StationSettings::stampOfTime(const QTime& time)
{
    if (!time.isValid())
        return 0.0;
    return static_cast<double>(time.msecsSinceStartOfDay()) / (SecondsPerDay * 1000.0);
}
