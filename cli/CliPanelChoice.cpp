#include "CliPanelChoice.h"

#include "CliConsole.h"
#include "CliContext.h"
#include "CliExit.h"
#include "operations/panels/OperationContext.h"
#include "operations/panels/WalkResult.h"

using namespace Qt::Literals::StringLiterals;

QList<CliArguments::Option> CliPanelChoice::options(Allowed allowed)
{
    QList<CliArguments::Option> list = { { u"--panel"_s, u"N"_s, u"the panel with number N"_s } };
    if (allowed == Allowed::SelectedOrAll)
        list.append({ u"--all-panels"_s, {}, u"every usable panel of the list, in list order"_s });
    return list;
}

int CliPanelChoice::apply(CliContext& context, const CliArguments& args, Allowed allowed, PanelTarget* target)
{
    const bool all = args.has(u"--all-panels"_s);
    const bool one = args.has(u"--panel"_s);
    if (all && one) {
        CliConsole::errLine(u"give either --panel N or --all-panels, not both"_s);
        return CliExit::Usage;
    }
    if (all) {
        *target = PanelTarget::All;
        return -1;
    }
    if (!one) {
        CliConsole::errLine(allowed == Allowed::SelectedOrAll ? u"give --panel N or --all-panels"_s
                                                              : u"give --panel N (this works on one panel)"_s);
        return CliExit::Usage;
    }
    QString error;
    const auto number = args.number(u"--panel"_s, 1, 999, &error);
    if (!number) {
        CliConsole::errLine(error);
        return CliExit::Usage;
    }
    const auto entry = context.roster().entryForPanel(*number);
    if (!entry) {
        CliConsole::errLine(u"panel "_s + QString::number(*number) + u" is not in the panel list (see panels list)"_s);
        return CliExit::Failed;
    }
    const Message refusal = context.roster().open(entry->position);
    if (!refusal.isEmpty()) {
        CliContext::printError(refusal);
        return CliExit::Failed;
    }
    *target = PanelTarget::Selected;
    return -1;
}

int CliPanelChoice::runWalk(CliContext& context, const CliArguments& args, Allowed allowed, const Walk& walk)
{
    PanelTarget target = PanelTarget::Selected;
    if (const int stop = apply(context, args, allowed, &target); stop >= 0)
        return stop;
    if (const int stop = context.rightsFirst(); stop >= 0)
        return stop;
    OperationContext operation = context.operationContext();
    return context.exitFor(walk(operation, target));
}
