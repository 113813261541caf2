#pragma once

#include "CliCommand.h"

// `kx410ctl report NAME [filters] --xlsx FILE | --pdf FILE | --csv FILE`: any report of the
// station, with the choices of its window as options, written to a file.
class ReportCommand : public CliCommand
{
public:
    QString name() const override;
    QString summary() const override;
    QString help() const override;
    int run(CliContext& context, const QStringList& arguments) override;
};
