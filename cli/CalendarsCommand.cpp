#include "CalendarsCommand.h"

#include "CliConsole.h"
#include "CliContext.h"
#include "CliExit.h"
#include "CliPanelChoice.h"
#include "CliTimeText.h"
#include "operations/configuration/GroupCalendarRepository.h"
#include "operations/configuration/GroupCalendarTransfer.h"

#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace {
using Allowed = CliPanelChoice::Allowed;

const CliArguments::Option kNumber{ u"--number"_s, u"N"_s, u"calendar number 1..8"_s };
const CliArguments::Option kName{ u"--name"_s, u"NAME"_s, u"the new name"_s };

QList<CliArguments::Option> fieldOptions()
{
    return { { u"--type"_s, u"hours|dates"_s, u"switch at times of day, or at dates with times (the default)"_s },
             { u"--group1"_s, u"G"_s, u"the first access group"_s },
             { u"--date1"_s, u"DATE"_s, u"first switch date (dates type)"_s },
             { u"--time1"_s, u"HH:MM"_s, u"first switch time"_s },
             { u"--group2"_s, u"G"_s, u"the second access group"_s },
             { u"--date2"_s, u"DATE"_s, u"second switch date (dates type)"_s },
             { u"--time2"_s, u"HH:MM"_s, u"second switch time"_s },
             { u"--group3"_s, u"G"_s, u"the third access group"_s } };
}

bool fail(const QString& command, const QString& error)
{
    CliConsole::errLine(u"calendars "_s + command + u": "_s + error);
    return false;
}

// Takes the given fields into the record; false after printing why.
bool readFields(const QString& command, const CliArguments& args, GroupCalendarRecord* c)
{
    QString error;
    if (args.has(u"--type"_s)) {
        const QString type = args.value(u"--type"_s);
        if (type == u"hours"_s)
            c->typeText = GroupCalendarRepository::betweenHours();
        else if (type == u"dates"_s)
            c->typeText = GroupCalendarRepository::betweenDates();
        else
            return fail(command, u"--type is hours or dates"_s);
    }
    const std::array<std::pair<QString, qint32*>, 3> groups{
        { { u"--group1"_s, &c->group1 }, { u"--group2"_s, &c->group2 }, { u"--group3"_s, &c->group3 } }
    };
    for (const auto& [option, field] : groups) {
        if (!args.has(option))
            continue;
        const auto n = args.number(option, 0, 9999, &error);
        if (!n)
            return fail(command, error);
        *field = *n;
    }
    for (const auto& [option, field] :
         std::array<std::pair<QString, QDate*>, 2>{ { { u"--date1"_s, &c->date1 }, { u"--date2"_s, &c->date2 } } }) {
        if (!args.has(option))
            continue;
        const auto d = CliTimeText::date(args.value(option), &error);
        if (!d)
            return fail(command, option + u": "_s + error);
        *field = *d;
    }
    for (const auto& [option, field] :
         std::array<std::pair<QString, QTime*>, 2>{ { { u"--time1"_s, &c->time1 }, { u"--time2"_s, &c->time2 } } }) {
        if (!args.has(option))
            continue;
        const auto t = CliTimeText::timeOfDay(args.value(option), &error);
        if (!t)
            return fail(command, option + u": "_s + error);
        *field = *t;
    }
    return true;
}

std::optional<int> calendarNumber(const QString& command, const CliArguments& args)
{
    QString error;
    const auto n = args.number(u"--number"_s, std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), &error);
    if (!n)
        fail(command, error);
    return n;
}

int finish(const GroupCalendarRepository::Result& result)
{
    return CliContext::exitForChange(result.ok, result.message, result.error);
}

QString dateText(const QDate& date)
{
    return date.isValid() ? date.toString(u"dd/MM/yyyy"_s) : u"-"_s;
}
} // namespace

CalendarsCommand::CalendarsCommand()
{
    addSubCommand({ u"list"_s, {}, u"Shows the group calendars 1..8 in number order."_s, {}, &CalendarsCommand::list });
    addSubCommand({ u"add"_s, u"NAME --number N [fields]"_s, u"Adds a group calendar (administrator)."_s,
                    QList<CliArguments::Option>{ kNumber } + fieldOptions(), &CalendarsCommand::add, 1 });
    addSubCommand({ u"set"_s, u"--number N [--name NAME] [fields]"_s,
                    u"Changes the given fields of a group calendar (administrator); the others stay."_s,
                    QList<CliArguments::Option>{ kNumber, kName } + fieldOptions(), &CalendarsCommand::set });
    addSubCommand({ u"delete"_s,
                    u"--number N"_s,
                    u"Deletes a group calendar (administrator)."_s,
                    { kNumber },
                    &CalendarsCommand::remove });
    addSubCommand({ u"send"_s, u"--panel N | --all-panels"_s,
                    u"Sends every group calendar to the panel or to every panel (administrator; asks first)."_s,
                    CliPanelChoice::options(Allowed::SelectedOrAll), &CalendarsCommand::send });
}

QString CalendarsCommand::name() const
{
    return u"calendars"_s;
}

QString CalendarsCommand::summary() const
{
    return u"group calendars: list, add, set, delete, send"_s;
}

QString CalendarsCommand::helpFooter() const
{
    return u"A user who follows a calendar is in group 1 until the first switch point, in group 2 until the\n"
           "second, then in group 3. Dates are 2026-03-01 or 01/03/2026, times 08:30.\n"
           "\n"
           "Examples:\n"
           "  kx410ctl --admin-password 1234 calendars add Vardiya --number 1 --type hours --group1 1 "
           "--time1 08:00 --group2 2 --time2 17:00 --group3 3\n"
           "  kx410ctl --yes --admin-password 1234 calendars send --all-panels\n"_s;
}

int CalendarsCommand::list(CliContext& context, const CliArguments&)
{
    QString error;
    const QList<GroupCalendarRow> rows = GroupCalendarRepository(context.db()).list(&error);
    if (!error.isEmpty()) {
        CliConsole::errLine(u"calendars list: "_s + error);
        return CliExit::Failed;
    }
    CliConsole::outLine(u"NUMBER  TYPE   GROUP1  SWITCH1            GROUP2  SWITCH2            GROUP3  NAME"_s);
    for (const GroupCalendarRow& row : rows) {
        const GroupCalendarRecord& c = row.record;
        const bool hours = GroupCalendarRepository::isBetweenHours(c.typeText);
        const auto at = [hours](const QDate& d, const QTime& t) {
            return QString((hours ? QString() : dateText(d) + u' ') + t.toString(u"HH:mm"_s)).leftJustified(18);
        };
        CliConsole::outLine(QString::number(c.number).leftJustified(7) + u' '
                            + QString(hours ? u"hours"_s : u"dates"_s).leftJustified(6) + u' '
                            + QString::number(c.group1).leftJustified(7) + u' ' + at(c.date1, c.time1) + u' '
                            + QString::number(c.group2).leftJustified(7) + u' ' + at(c.date2, c.time2) + u' '
                            + QString::number(c.group3).leftJustified(7) + u' ' + row.name);
    }
    return CliExit::Success;
}

int CalendarsCommand::add(CliContext& context, const CliArguments& args)
{
    if (args.words().isEmpty() || !args.has(u"--number"_s)) {
        CliConsole::errLine(u"calendars add: give the name and --number"_s);
        return CliExit::Usage;
    }
    const auto number = calendarNumber(u"add"_s, args);
    if (!number)
        return CliExit::Usage;
    GroupCalendarRow row;
    row.name = args.word(0);
    row.record.number = *number;
    row.record.typeText = GroupCalendarRepository::betweenDates();
    row.record.time1 = QTime(0, 0);
    row.record.time2 = QTime(0, 0);
    if (!readFields(u"add"_s, args, &row.record))
        return CliExit::Usage;
    if (!context.requireAdministrator())
        return CliExit::NeedsAnswer;
    return finish(GroupCalendarRepository(context.db()).add(row));
}

int CalendarsCommand::set(CliContext& context, const CliArguments& args)
{
    const auto number = calendarNumber(u"set"_s, args);
    if (!number)
        return CliExit::Usage;
    GroupCalendarRecord probe;
    if (!readFields(u"set"_s, args, &probe))
        return CliExit::Usage;
    if (!context.requireAdministrator())
        return CliExit::NeedsAnswer;
    const GroupCalendarRepository calendars(context.db());
    QString error;
    std::optional<GroupCalendarRow> row = calendars.find(*number, &error);
    if (!row) {
        if (!error.isEmpty()) {
            CliConsole::errLine(u"calendars set: "_s + error);
            return CliExit::Failed;
        }
        GroupCalendarRow missing;
        missing.record = probe;
        missing.record.number = *number;
        missing.record.time1 = QTime(0, 0);
        missing.record.time2 = QTime(0, 0);
        missing.record.typeText = GroupCalendarRepository::betweenHours();
        return finish(calendars.update(missing));
    }
    if (args.has(u"--name"_s))
        row->name = args.value(u"--name"_s);
    readFields(u"set"_s, args, &row->record);
    return finish(calendars.update(*row));
}

int CalendarsCommand::remove(CliContext& context, const CliArguments& args)
{
    const auto number = calendarNumber(u"delete"_s, args);
    if (!number)
        return CliExit::Usage;
    if (!context.requireAdministrator())
        return CliExit::NeedsAnswer;
    return finish(GroupCalendarRepository(context.db()).remove(*number));
}

int CalendarsCommand::send(CliContext& context, const CliArguments& args)
{
    return CliPanelChoice::runWalk(context, args, Allowed::SelectedOrAll, [](OperationContext& c, PanelTarget target) {
        return GroupCalendarTransfer(c).send(target);
    });
}
