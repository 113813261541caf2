#pragma once

#include "CliCommand.h"

// `kx410ctl live`: watches the panels as the monitoring page does, storing every passage, and
// prints each passage and status change as it arrives, until interrupted.
class LiveCommand : public CliCommand
{
public:
    QString name() const override;
    QString summary() const override;
    QString help() const override;
    int run(CliContext& context, const QStringList& arguments) override;
};
