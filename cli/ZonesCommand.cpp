#include "ZonesCommand.h"

#include "CliConsole.h"
#include "CliContext.h"
#include "CliExit.h"
#include "operations/configuration/ZoneRepository.h"

#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace {
const CliArguments::Option kNumber{ u"--number"_s, u"N"_s, u"zone number 1..64"_s };

// Any whole number is taken here; the range is the zone rules' to refuse, in the station's words.
std::optional<int> zoneNumber(const QString& command, const CliArguments& args)
{
    QString error;
    const auto n = args.number(u"--number"_s, std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), &error);
    if (!n)
        CliConsole::errLine(u"zones "_s + command + u": "_s + error);
    return n;
}

int finish(const ZoneRepository::Result& result)
{
    return CliContext::exitForChange(result.ok, result.message, result.error);
}
} // namespace

ZonesCommand::ZonesCommand()
{
    addSubCommand({ u"list"_s, {}, u"Shows the global zones in number order."_s, {}, &ZonesCommand::list });
    addSubCommand({ u"add"_s,
                    u"NAME [--number N]"_s,
                    u"Adds a global zone (administrator); without --number it takes the lowest free number."_s,
                    { kNumber },
                    &ZonesCommand::add,
                    1 });
    addSubCommand({ u"rename"_s,
                    u"--number N NAME"_s,
                    u"Gives a global zone a new name (administrator)."_s,
                    { kNumber },
                    &ZonesCommand::rename,
                    1 });
    addSubCommand({ u"delete"_s,
                    u"--number N"_s,
                    u"Deletes a global zone (administrator; asks first, answer with --yes). A zone that a panel\n"
                    "in use or an access group still names is not deleted."_s,
                    { kNumber },
                    &ZonesCommand::remove });
}

QString ZonesCommand::name() const
{
    return u"zones"_s;
}

QString ZonesCommand::summary() const
{
    return u"global zones: list, add, rename, delete"_s;
}

int ZonesCommand::list(CliContext& context, const CliArguments&)
{
    QString error;
    const QList<ZoneRepository::Row> rows = ZoneRepository(context.db()).list(&error);
    if (!error.isEmpty()) {
        CliConsole::errLine(u"zones list: "_s + error);
        return CliExit::Failed;
    }
    CliConsole::outLine(u"NUMBER  NAME"_s);
    for (const ZoneRepository::Row& row : rows)
        CliConsole::outLine(QString::number(row.number).leftJustified(7) + u' ' + row.name);
    return CliExit::Success;
}

int ZonesCommand::add(CliContext& context, const CliArguments& args)
{
    if (args.words().isEmpty()) {
        CliConsole::errLine(u"zones add: give the name"_s);
        return CliExit::Usage;
    }
    int number = 0;
    if (args.has(u"--number"_s)) {
        const auto n = zoneNumber(u"add"_s, args);
        if (!n)
            return CliExit::Usage;
        number = *n;
    }
    if (!context.requireAdministrator())
        return CliExit::NeedsAnswer;
    const ZoneRepository::Result result = ZoneRepository(context.db()).add({ number, args.word(0) });
    if (result.ok)
        CliConsole::outLine(QString::number(result.number));
    return finish(result);
}

int ZonesCommand::rename(CliContext& context, const CliArguments& args)
{
    const auto number = zoneNumber(u"rename"_s, args);
    if (!number)
        return CliExit::Usage;
    if (args.words().isEmpty()) {
        CliConsole::errLine(u"zones rename: give the new name"_s);
        return CliExit::Usage;
    }
    if (!context.requireAdministrator())
        return CliExit::NeedsAnswer;
    return finish(ZoneRepository(context.db()).rename(*number, args.word(0)));
}

int ZonesCommand::remove(CliContext& context, const CliArguments& args)
{
    const auto number = zoneNumber(u"delete"_s, args);
    if (!number)
        return CliExit::Usage;
    if (!context.requireAdministrator())
        return CliExit::NeedsAnswer;
    const ZoneRepository zones(context.db());
    QString error;
    const ZoneRepository::Usage usage = zones.usage(*number, &error);
    if (!error.isEmpty()) {
        CliConsole::errLine(u"zones delete: "_s + error);
        return CliExit::Failed;
    }
    // A zone in use is refused before the question, as the window does.
    if (!usage.isEmpty()) {
        CliContext::printError(ZoneRepository::inUseMessage(*number, usage));
        return CliExit::Failed;
    }
    if (!context.op().ask(ZoneRepository::deleteQuestion(*number)))
        return context.op().unansweredQuestion().isEmpty() ? CliExit::Declined : context.exitFor(false);
    return finish(zones.remove(*number));
}
