#include "CliGroupOptions.h"

#include <QRegularExpression>
#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace {

struct Switch
{
    QString option;
    bool GroupMasterRow::*field;
};

const QList<Switch>& switches()
{
    static const QList<Switch> list{ { u"--daily-approval"_s, &GroupMasterRow::dailyApprovalRequired },
                                     { u"--repeat-block-off"_s, &GroupMasterRow::repeatedAccessBlockOff },
                                     { u"--local-capacity-off"_s, &GroupMasterRow::localCapacityOff },
                                     { u"--clear-inside-at-night"_s, &GroupMasterRow::clearInsideCountAtNight },
                                     { u"--anti-passback-off"_s, &GroupMasterRow::antiPassbackOff } };
    return list;
}

struct Count
{
    QString option;
    int GroupMasterRow::*field;
    int fresh;
};

const QList<Count>& counts()
{
    static const QList<Count> list{ { u"--access-count"_s, &GroupMasterRow::accessCount, 0 },
                                    { u"--access-count-zone"_s, &GroupMasterRow::accessCountZone, 1 },
                                    { u"--inside-count"_s, &GroupMasterRow::insideCount, 0 },
                                    { u"--inside-count-zone"_s, &GroupMasterRow::insideCountZone, 1 } };
    return list;
}

std::optional<bool> onOff(const QString& text)
{
    const QString t = text.trimmed().toLower();
    if (t == u"on"_s || t == u"1"_s || t == u"yes"_s)
        return true;
    if (t == u"off"_s || t == u"0"_s || t == u"no"_s)
        return false;
    return std::nullopt;
}

// Four whole numbers "1,1,0,0".
std::optional<std::array<int, 4>> fourNumbers(const QString& text)
{
    const QStringList parts = text.split(u',');
    if (parts.size() != 4)
        return std::nullopt;
    std::array<int, 4> values{};
    for (int i = 0; i < 4; ++i) {
        const auto n = CliArguments::toNumber(parts.at(i).trimmed(), 0, 999);
        if (!n)
            return std::nullopt;
        values[i] = int(*n);
    }
    return values;
}

QString joined(const std::array<int, 4>& values)
{
    QStringList parts;
    for (const int v : values)
        parts << QString::number(v);
    return parts.join(u',');
}

} // namespace

QList<CliArguments::Option> CliGroupOptions::masterOptions()
{
    return { { u"--access-count"_s, u"N"_s, u"passages allowed, 0 = no limit (over 255 is sent as 0)"_s },
             { u"--access-count-zone"_s, u"ZONE"_s, u"global zone the passages are counted in"_s },
             { u"--inside-count"_s, u"N"_s, u"members inside at once, 0 = no limit (over 9999 is sent as 0)"_s },
             { u"--inside-count-zone"_s, u"ZONE"_s, u"global zone the members inside are counted in"_s },
             { u"--daily-approval"_s, u"on|off"_s, u"members need the daily permission"_s },
             { u"--repeat-block-off"_s, u"on|off"_s, u"the panel's repeated-passage block does not apply"_s },
             { u"--local-capacity-off"_s, u"on|off"_s, u"the local capacity control does not apply"_s },
             { u"--clear-inside-at-night"_s, u"on|off"_s, u"the inside count is cleared at night"_s },
             { u"--anti-passback-off"_s, u"on|off"_s, u"anti-passback does not apply"_s } };
}

QList<CliArguments::Option> CliGroupOptions::doorOptions()
{
    return { { u"--doors"_s, u"1100"_s, u"the doors 1..4 the group may pass, one 0 or 1 each"_s },
             { u"--time-groups"_s, u"T,T,T,T"_s, u"each door's time group, 0 = none"_s },
             { u"--zones"_s, u"Z,Z,Z,Z"_s, u"each door's global zone"_s } };
}

bool CliGroupOptions::applyMaster(const CliArguments& args, GroupMasterRow* row, QString* error)
{
    for (const Count& count : counts()) {
        if (!args.has(count.option))
            continue;
        // Any whole number is kept; what a panel cannot take is fitted when sent.
        const auto n
            = args.number(count.option, std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), error);
        if (!n)
            return false;
        row->*count.field = *n;
    }
    for (const Switch& s : switches()) {
        if (!args.has(s.option))
            continue;
        const std::optional<bool> on = onOff(args.value(s.option));
        if (!on) {
            *error = s.option + u" takes on or off"_s;
            return false;
        }
        row->*s.field = *on;
    }
    return true;
}

bool CliGroupOptions::applyDoors(const CliArguments& args, GroupDetailRow* row, QString* error)
{
    if (args.has(u"--doors"_s)) {
        const QString doors = args.value(u"--doors"_s).trimmed();
        if (doors.size() != 4 || doors.contains(QRegularExpression(u"[^01]"_s))) {
            *error = u"--doors takes four places of 0 or 1, door 1 first (1100)"_s;
            return false;
        }
        for (int d = 0; d < 4; ++d)
            row->doors[d] = doors.at(d) == u'1';
    }
    const QList<std::pair<QString, std::array<int, 4> GroupDetailRow::*>> lists{
        { u"--time-groups"_s, &GroupDetailRow::doorTimeGroups }, { u"--zones"_s, &GroupDetailRow::doorZones }
    };
    for (const auto& [option, field] : lists) {
        if (!args.has(option))
            continue;
        const auto values = fourNumbers(args.value(option));
        if (!values) {
            *error = option + u" takes four numbers, door 1 first (1,1,0,0)"_s;
            return false;
        }
        row->*field = *values;
    }
    return true;
}

QString CliGroupOptions::describe(const GroupMasterRow& row)
{
    QStringList parts;
    for (const Count& count : counts()) {
        if (row.*count.field != count.fresh)
            parts << count.option + u' ' + QString::number(row.*count.field);
    }
    for (const Switch& s : switches()) {
        if (row.*s.field)
            parts << s.option + u" on"_s;
    }
    return parts.join(u' ');
}

QString CliGroupOptions::describe(const GroupDetailRow& row)
{
    const GroupDetailRow fresh;
    if (row.doors == fresh.doors && row.doorTimeGroups == fresh.doorTimeGroups && row.doorZones == fresh.doorZones)
        return {};
    QString doors;
    for (const bool open : row.doors)
        doors += open ? u'1' : u'0';
    return u"--panel "_s + QString::number(row.panelNo) + u" --doors "_s + doors + u" --time-groups "_s
        + joined(row.doorTimeGroups) + u" --zones "_s + joined(row.doorZones);
}
