#include "CliParallelOptions.h"

using namespace Qt::StringLiterals;

QList<CliArguments::Option> CliParallelOptions::options()
{
    return { { u"--parallel"_s, u"N"_s,
               u"walk up to N panels at once (1..64, with --all-panels); nothing is asked on the way\n"
               "and the failing panels are reported together at the end"_s },
             { u"--give-up-after"_s, u"K"_s,
               u"with --parallel: leave a panel that did not answer K requests in a row (default 3, 0 never)"_s } };
}

std::optional<ParallelWalk::Options> CliParallelOptions::parse(const CliArguments& args, bool allPanels, QString* error)
{
    if (!args.has(u"--parallel"_s)) {
        if (args.has(u"--give-up-after"_s))
            *error = u"--give-up-after goes with --parallel"_s;
        return std::nullopt;
    }
    if (!allPanels) {
        *error = u"--parallel goes with --all-panels"_s;
        return std::nullopt;
    }
    ParallelWalk::Options walk;
    const auto parallel = args.number(u"--parallel"_s, 1, 64, error);
    if (!parallel)
        return std::nullopt;
    walk.parallel = *parallel;
    if (args.has(u"--give-up-after"_s)) {
        const auto giveUp = args.number(u"--give-up-after"_s, 0, 1000, error);
        if (!giveUp)
            return std::nullopt;
        walk.giveUpAfter = *giveUp;
    }
    return walk;
}
