#include "GroupsCommand.h"

#include "CliConsole.h"
#include "CliContext.h"
#include "CliExit.h"
#include "CliGroupTable.h"

using namespace Qt::Literals::StringLiterals;

GroupsCommand::GroupsCommand()
{
    addSubCommand({ u"list"_s, {}, u"Shows the access groups in number order."_s, {}, &GroupsCommand::list });
    addSubCommand({ u"add"_s,
                    u"NAME --number N"_s,
                    u"Adds an access group (administrator), with every rule off."_s,
                    { { u"--number"_s, u"N"_s, u"group number 1..1280"_s } },
                    &GroupsCommand::add,
                    1 });
}

QString GroupsCommand::name() const
{
    return u"groups"_s;
}

QString GroupsCommand::summary() const
{
    return u"access groups: list, add"_s;
}

int GroupsCommand::list(CliContext& context, const CliArguments&)
{
    QString error;
    const QList<CliGroupTable::Row> rows = CliGroupTable(context.db()).rows(&error);
    if (!error.isEmpty()) {
        CliConsole::errLine(u"groups list: "_s + error);
        return CliExit::Failed;
    }
    CliConsole::outLine(u"NUMBER  NAME"_s);
    for (const CliGroupTable::Row& row : rows)
        CliConsole::outLine(QString::number(row.number).leftJustified(7) + u' ' + row.name);
    return CliExit::Success;
}

int GroupsCommand::add(CliContext& context, const CliArguments& args)
{
    QString error;
    const auto number = args.number(u"--number"_s, 1, 1280, &error);
    if (!number || args.words().isEmpty()) {
        CliConsole::errLine(u"groups add: "_s + (number ? u"give the name"_s : error));
        return CliExit::Usage;
    }
    if (!context.requireAdministrator())
        return CliExit::NeedsAnswer;
    if (!CliGroupTable(context.db()).add({ *number, args.word(0) }, &error)) {
        CliConsole::errLine(u"groups add: "_s + error);
        return CliExit::Failed;
    }
    CliConsole::outLine(u"group "_s + QString::number(*number) + u" added"_s);
    return CliExit::Success;
}
