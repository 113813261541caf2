#include "SetupCommand.h"

#include "CliArguments.h"
#include "CliConsole.h"
#include "CliContext.h"
#include "CliExit.h"
#include "CliStartupUi.h"
#include "store/ConfigFile.h"
#include "store/DataFolder.h"

using namespace Qt::Literals::StringLiterals;

namespace {
const QList<CliArguments::Option> kOptions = {
    { u"--server"_s, {}, u"this station owns the database in its data folder"_s },
    { u"--client"_s, {}, u"this station works on another station's database"_s },
    { u"--remote-db"_s, u"PATH"_s, u"the database a client works on (file path or postgresql:// URL)"_s },
    { u"--watch"_s, u"LIST"_s, u"panels a client watches, e.g. 1,2,5-8 (default 1)"_s },
    { u"--force"_s, {}, u"rewrite the settings of a folder that is set up already"_s },
};

// "1,2,5-8" to panel numbers; false for anything else.
bool parsePanelList(const QString& text, QList<int>* panels)
{
    for (const QString& part : text.split(u',', Qt::SkipEmptyParts)) {
        const QStringList bounds = part.split(u'-');
        const auto first = CliArguments::toNumber(bounds.value(0), 1, 64);
        const auto last = bounds.size() == 2 ? CliArguments::toNumber(bounds.value(1), 1, 64) : first;
        if (bounds.size() > 2 || !first || !last || *first > *last)
            return false;
        for (qint64 n = *first; n <= *last; ++n)
            panels->append(static_cast<int>(n));
    }
    return true;
}
} // namespace

QString SetupCommand::name() const
{
    return u"setup"_s;
}

QString SetupCommand::summary() const
{
    return u"set up a data folder as a server or client station"_s;
}

QString SetupCommand::help() const
{
    return u"usage: kx410ctl [--data-dir DIR] [--db URL] [--lang tr|en|ar] --admin-password N setup --server\n"
           "       kx410ctl [--data-dir DIR] setup --client --remote-db PATH [--watch LIST]\n\n"
           "Writes the station settings (Config.cfg) of the data folder, creates the database with its\n"
           "tables (a server's own database, or the one --db names) and sets the administrator password of\n"
           "a database that has none. --lang is stored as the station's language.\n\n"_s
        + CliArguments::describe(kOptions)
        + u"\nExample:\n  kx410ctl --data-dir /srv/kx410 --admin-password 1234 setup --server\n"_s;
}

int SetupCommand::run(CliContext& context, const QStringList& arguments)
{
    CliArguments args;
    QString error;
    if (!args.parse(arguments, kOptions, &error) || !args.words().isEmpty()) {
        CliConsole::errLine(u"setup: "_s + (error.isEmpty() ? u"unexpected "_s + args.word(0) : error));
        return CliExit::Usage;
    }
    if (args.has(u"--server"_s) == args.has(u"--client"_s)) {
        CliConsole::errLine(u"setup: give either --server or --client"_s);
        return CliExit::Usage;
    }
    const bool server = args.has(u"--server"_s);
    QList<int> watched;
    if (args.has(u"--watch"_s) && !parsePanelList(args.value(u"--watch"_s), &watched)) {
        CliConsole::errLine(u"setup: --watch takes panel numbers 1..64 such as 1,2,5-8"_s);
        return CliExit::Usage;
    }

    const CliGlobalOptions& options = context.options();
    const DataFolder folder(options.dataDir);
    const ConfigFile::ReadResult read = ConfigFile::read(folder.configFile());
    StationSettings settings = read.settings;
    const int language = options.language >= 0 ? options.language : settings.language;
    const Message refused = settings.applyStartChoices(server, args.value(u"--remote-db"_s), watched, language);
    if (!refused.isEmpty()) {
        CliContext::printError(refused);
        return CliExit::Failed;
    }
    // Running the same set-up again only completes what is missing (a database, the password);
    // other choices on a folder that is set up need --force.
    const bool keep = read.settings.isSetUp() && !args.has(u"--force"_s);
    if (keep && settings != read.settings) {
        CliConsole::errLine(
            u"setup: "_s + folder.root()
            + u" is set up already with other settings; --force rewrites them (the database is kept)"_s);
        return CliExit::Failed;
    }
    if (!keep && (!folder.ensureExists(&error) || !ConfigFile::write(folder.configFile(), settings, &error))) {
        CliConsole::errLine(u"setup: "_s + error);
        return CliExit::Failed;
    }

    CliStartupUi ui;
    ui.setInitialSettings(settings);
    if (!options.adminPassword.isEmpty())
        ui.setAdminPassword(options.adminPassword);
    if (const int started = context.start(ui); started != CliExit::Success) {
        if (!ui.passwordRefusal().isEmpty())
            CliContext::printError(ui.passwordRefusal());
        if (options.adminPassword.isEmpty())
            CliConsole::errLine(u"setup: a new database needs --admin-password N (digits only)"_s);
        return started;
    }
    CliConsole::outLine(context.settings().isServer() ? u"server"_s : u"client"_s);
    CliConsole::outLine(u"data folder: "_s + context.folder().root());
    CliConsole::outLine(u"database: "_s + context.databaseLocation());
    return CliExit::Success;
}
