#pragma once

#include "CliArguments.h"
#include "CliCommand.h"

#include <QList>
#include <functional>

// A command made of sub-commands ("users send", "users list"...), each with its own options and
// help line. Derived classes list their sub-commands in the constructor.
class CliGroupCommand : public CliCommand
{
public:
    using Handler = std::function<int(CliContext&, const CliArguments&)>;

    struct SubCommand
    {
        QString name;
        QString synopsis; // "--panel N | --all-panels [--first N --last N]"
        QString description;
        QList<CliArguments::Option> options;
        Handler handler;
        // How many words may follow the sub-command (a file name, a text).
        int maxWords = 0;
    };

    QString help() const override;
    int check(const QStringList& arguments) const override;
    int run(CliContext& context, const QStringList& arguments) override;

protected:
    void addSubCommand(const SubCommand& sub);
    // Text after the sub-command list in the help: examples, notes.
    virtual QString helpFooter() const { return {}; }

private:
    // The sub-command named by the first word with its arguments parsed; null after printing why.
    const SubCommand* parse(const QStringList& arguments, CliArguments* args) const;

    QList<SubCommand> m_subCommands;
};
