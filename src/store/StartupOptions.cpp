#include "store/StartupOptions.h"

StartupOptions StartupOptions::fromArguments(const QStringList& arguments)
{
    StartupOptions options;
    const auto take = [&](qsizetype& i, const QString& name, QString* target) {
        const QString& arg = arguments.at(i);
        if (arg == name) {
            if (i + 1 < arguments.size())
                *target = arguments.at(++i);
            return true;
        }
        const QString prefix = name + u'=';
        if (arg.startsWith(prefix)) {
            *target = arg.mid(prefix.size());
            return true;
        }
        return false;
    };
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        if (take(i, QStringLiteral("--data-dir"), &options.dataDir))
            continue;
        take(i, QStringLiteral("--db"), &options.databaseOverride);
    }
    return options;
}
