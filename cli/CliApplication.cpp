#include "CliApplication.h"

#include "CliCommandList.h"
#include "CliConsole.h"
#include "CliContext.h"
#include "CliExit.h"
#include "CliGlobalOptions.h"

using namespace Qt::Literals::StringLiterals;

CliApplication::CliApplication()
    : m_commands(CliCommandList())
{ }

CliApplication::~CliApplication() = default;

CliCommand* CliApplication::find(const QString& name) const
{
    for (const auto& command : m_commands) {
        if (command->name() == name)
            return command.get();
    }
    return nullptr;
}

QString CliApplication::overview() const
{
    QString text = u"usage: kx410ctl [OPTIONS] COMMAND [SUB-COMMAND] [ARGUMENTS]\n\n"
                   "The station's work from the command line, over the same operations as its windows.\n\n"
                   "Commands:\n"_s;
    for (const auto& command : m_commands)
        text += QString(u"  "_s + command->name()).leftJustified(16) + u' ' + command->summary() + u'\n';
    text += u'\n' + CliGlobalOptions::helpText();
    text += u"\nExit status: 0 done; 1 the operation failed or stopped on a failure; 2 wrong command line;\n"
            "3 the station could not start (not set up, database unreachable); 4 a question needed --yes or\n"
            "--no, or administrator rights were missing; 5 a question was answered No before anything was done.\n"
            "\nkx410ctl COMMAND --help describes a command.\n"_s;
    return text;
}

int CliApplication::run(const QStringList& arguments)
{
    CliGlobalOptions options;
    QString error;
    if (!options.parse(arguments, &error)) {
        CliConsole::errLine(u"kx410ctl: "_s + error + u" (see kx410ctl --help)"_s);
        return CliExit::Usage;
    }
    if (options.rest.isEmpty()) {
        if (options.help) {
            CliConsole::out(overview());
            return CliExit::Success;
        }
        CliConsole::errLine(overview());
        return CliExit::Usage;
    }
    const QString name = options.rest.first();
    if (name == u"help"_s) {
        const CliCommand* about = find(options.rest.value(1));
        CliConsole::out(about ? about->help() : overview());
        return CliExit::Success;
    }
    CliCommand* command = find(name);
    if (!command) {
        CliConsole::errLine(u"kx410ctl: unknown command "_s + name + u" (see kx410ctl --help)"_s);
        return CliExit::Usage;
    }
    if (options.help) {
        CliConsole::out(command->help());
        return CliExit::Success;
    }
    if (const int wrong = command->check(options.rest.mid(1)); wrong >= 0)
        return wrong;
    CliContext context(options);
    if (command->needsStation()) {
        if (const int started = context.start(); started != CliExit::Success)
            return started;
    }
    return command->run(context, options.rest.mid(1));
}
