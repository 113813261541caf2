#pragma once

#include "CliCommand.h"

#include <QStringList>
#include <memory>
#include <vector>

// Parses the command line, starts the station when the command needs it and runs the command.
class CliApplication
{
public:
    CliApplication();
    ~CliApplication();

    // arguments without the program name; returns the exit status.
    int run(const QStringList& arguments);

    QString overview() const;

private:
    CliCommand* find(const QString& name) const;

    std::vector<std::unique_ptr<CliCommand>> m_commands;
};
