#include "ApbCommand.h"

#include "CliConsole.h"
#include "CliContext.h"
#include "CliExit.h"
#include "CliPanelChoice.h"
#include "CliUserChoice.h"
#include "operations/doors/CounterOperations.h"

using namespace Qt::Literals::StringLiterals;

ApbCommand::ApbCommand()
{
    const auto panels = CliPanelChoice::options(CliPanelChoice::Allowed::SelectedOrAll);
    addSubCommand({ u"reset-all"_s, u"--panel N | --all-panels"_s,
                    u"Clears the anti-passback memory of every user in the panels."_s, panels, &ApbCommand::resetAll });
    addSubCommand({ u"reset-user"_s, u"--user ID --panel N | --all-panels"_s,
                    u"Clears one user's anti-passback memory in the panels."_s,
                    panels + QList<CliArguments::Option>{ CliUserChoice::option(u"the user's ID"_s) },
                    &ApbCommand::resetUser });
}

QString ApbCommand::name() const
{
    return u"apb"_s;
}

QString ApbCommand::summary() const
{
    return u"anti-passback memory: reset-all, reset-user"_s;
}

int ApbCommand::resetAll(CliContext& context, const CliArguments& args)
{
    PanelTarget target = PanelTarget::Selected;
    if (const int stop = CliPanelChoice::apply(context, args, CliPanelChoice::Allowed::SelectedOrAll, &target);
        stop >= 0)
        return stop;
    if (const int stop = context.rightsFirst(); stop >= 0)
        return stop;
    OperationContext operation = context.operationContext();
    return context.exitFor(CounterOperations(operation).resetAllAntiPassback(target));
}

int ApbCommand::resetUser(CliContext& context, const CliArguments& args)
{
    if (!args.has(u"--user"_s)) {
        CliConsole::errLine(u"apb reset-user: give --user ID"_s);
        return CliExit::Usage;
    }
    PanelTarget target = PanelTarget::Selected;
    if (const int stop = CliPanelChoice::apply(context, args, CliPanelChoice::Allowed::SelectedOrAll, &target);
        stop >= 0)
        return stop;
    const qint64 recordNo = CliUserChoice::recordNo(context, args);
    if (recordNo == 0)
        return CliExit::Failed;
    if (const int stop = context.rightsFirst(); stop >= 0)
        return stop;
    OperationContext operation = context.operationContext();
    return context.exitFor(CounterOperations(operation).resetUserAntiPassback(target, recordNo));
}
