#include "LookupCommand.h"

#include "CliConsole.h"
#include "CliContext.h"
#include "CliExit.h"

using namespace Qt::Literals::StringLiterals;

LookupCommand::LookupCommand(LookupTable::Kind kind)
    : m_table(kind)
{
    const CliArguments::Option number{ u"--number"_s, u"N"_s, u"the row's number"_s };
    addSubCommand(
        { u"list"_s, {}, u"Shows the rows in number order."_s, {}, [this](CliContext& c, const CliArguments&) {
             return list(c);
         } });
    addSubCommand({ u"add"_s,
                    u"NAME [--number N]"_s,
                    u"Adds a row (administrator); without --number it takes the next free number."_s,
                    { number },
                    [this](CliContext& c, const CliArguments& a) { return add(c, a); },
                    1 });
    addSubCommand({ u"remove"_s,
                    u"--number N"_s,
                    u"Deletes a row (administrator)."_s,
                    { number },
                    [this](CliContext& c, const CliArguments& a) { return remove(c, a); } });
}

QString LookupCommand::name() const
{
    switch (m_table.kind()) {
    case LookupTable::Kind::Companies:
        return u"companies"_s;
    case LookupTable::Kind::Departments:
        return u"departments"_s;
    case LookupTable::Kind::Blocks:
        break;
    }
    return u"blocks"_s;
}

QString LookupCommand::summary() const
{
    return u"the "_s + name() + u" table: list, add, remove"_s;
}

int LookupCommand::list(CliContext& context) const
{
    QString error;
    const QList<LookupTable::Row> rows = m_table.rows(context.db(), &error);
    if (!error.isEmpty()) {
        CliConsole::errLine(name() + u" list: "_s + error);
        return CliExit::Failed;
    }
    CliConsole::outLine(u"NUMBER  NAME"_s);
    for (const LookupTable::Row& row : rows)
        CliConsole::outLine(QString::number(row.key).leftJustified(7) + u' ' + row.name);
    return CliExit::Success;
}

int LookupCommand::add(CliContext& context, const CliArguments& args) const
{
    if (args.words().isEmpty() || args.word(0).trimmed().isEmpty()) {
        CliConsole::errLine(name() + u" add: give the name"_s);
        return CliExit::Usage;
    }
    int key = 0;
    if (args.has(u"--number"_s)) {
        QString error;
        const auto n = args.number(u"--number"_s, 1, 999999, &error);
        if (!n) {
            CliConsole::errLine(name() + u" add: "_s + error);
            return CliExit::Usage;
        }
        key = *n;
    }
    if (!context.requireAdministrator())
        return CliExit::NeedsAnswer;
    const LookupTable::Result result = m_table.add(context.db(), args.word(0), key);
    if (!result.ok)
        return CliContext::exitForChange(false, result.message, result.error);
    CliConsole::outLine(QString::number(result.key));
    return CliExit::Success;
}

int LookupCommand::remove(CliContext& context, const CliArguments& args) const
{
    QString error;
    const auto n = args.number(u"--number"_s, 1, 999999, &error);
    if (!n) {
        CliConsole::errLine(name() + u" remove: "_s + error);
        return CliExit::Usage;
    }
    if (!context.requireAdministrator())
        return CliExit::NeedsAnswer;
    const LookupTable::Result result = m_table.remove(context.db(), *n);
    return CliContext::exitForChange(result.ok, result.message, QString());
}
