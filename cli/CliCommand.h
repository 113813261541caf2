#pragma once

#include <QString>
#include <QStringList>

class CliContext;

// One command of kx410ctl ("users", "panels", ...). A command gets the words after its name
// (its sub-command, its own options) with the global options already taken out.
//
// Adding a command: write a class deriving from this one in cli/, and add one line for it to
// CliCommandList.cpp.
class CliCommand
{
public:
    virtual ~CliCommand() = default;

    // The word that selects the command.
    virtual QString name() const = 0;
    // One line for the overview of `kx410ctl --help`.
    virtual QString summary() const = 0;
    // The full text of `kx410ctl COMMAND --help`: sub-commands, options and examples.
    virtual QString help() const = 0;
    // False for commands that work without a started station (the set-up command); those are
    // handed a context that is not started and start it themselves.
    virtual bool needsStation() const { return true; }
    // Checks the words and options before the station starts, so that a mistake costs nothing;
    // returns -1 when they may be run, else the exit status after printing why.
    virtual int check(const QStringList& arguments) const
    {
        Q_UNUSED(arguments);
        return -1;
    }
    // Runs the command and returns the exit status (see CliExit.h).
    virtual int run(CliContext& context, const QStringList& arguments) = 0;
};
