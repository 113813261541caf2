#pragma once

#include "CliCommand.h"

// `kx410ctl setup`: makes a data folder into a station, as the start-up dialog and the first
// password choice do in the windows, so that scripts can build a site.
class SetupCommand : public CliCommand
{
public:
    QString name() const override;
    QString summary() const override;
    QString help() const override;
    bool needsStation() const override { return false; }
    int run(CliContext& context, const QStringList& arguments) override;
};
