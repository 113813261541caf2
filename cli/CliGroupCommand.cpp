#include "CliGroupCommand.h"

#include "CliConsole.h"
#include "CliExit.h"

using namespace Qt::Literals::StringLiterals;

void CliGroupCommand::addSubCommand(const SubCommand& sub)
{
    m_subCommands.append(sub);
}

QString CliGroupCommand::help() const
{
    QString text = u"usage: kx410ctl [OPTIONS] "_s + name() + u" SUB-COMMAND ...\n\n"_s + summary() + u"\n"_s;
    for (const SubCommand& sub : m_subCommands) {
        text += u"\nkx410ctl "_s + name() + u' ' + sub.name;
        if (!sub.synopsis.isEmpty())
            text += u' ' + sub.synopsis;
        text += u"\n    "_s + QString(sub.description).replace(u"\n"_s, u"\n    "_s) + u'\n';
        text += CliArguments::describe(sub.options, 6);
    }
    const QString footer = helpFooter();
    if (!footer.isEmpty())
        text += u'\n' + footer;
    text += u"\nSee kx410ctl --help for the options of every command and the exit statuses.\n"_s;
    return text;
}

const CliGroupCommand::SubCommand* CliGroupCommand::parse(const QStringList& arguments, CliArguments* args) const
{
    const QString wanted = arguments.value(0);
    for (const SubCommand& sub : m_subCommands) {
        if (sub.name != wanted)
            continue;
        QString error;
        if (!args->parse(arguments.mid(1), sub.options, &error)) {
            CliConsole::errLine(name() + u' ' + sub.name + u": "_s + error);
            return nullptr;
        }
        if (args->words().size() > sub.maxWords) {
            CliConsole::errLine(name() + u' ' + sub.name + u": unexpected "_s + args->word(sub.maxWords));
            return nullptr;
        }
        return &sub;
    }
    QStringList names;
    for (const SubCommand& sub : m_subCommands)
        names << sub.name;
    CliConsole::errLine(
        name() + (wanted.isEmpty() ? u": give one of "_s : u": unknown sub-command "_s + wanted + u"; one of "_s)
        + names.join(u", "_s));
    return nullptr;
}

int CliGroupCommand::check(const QStringList& arguments) const
{
    CliArguments args;
    return parse(arguments, &args) ? -1 : CliExit::Usage;
}

int CliGroupCommand::run(CliContext& context, const QStringList& arguments)
{
    CliArguments args;
    const SubCommand* sub = parse(arguments, &args);
    return sub ? sub->handler(context, args) : CliExit::Usage;
}
