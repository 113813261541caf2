#pragma once

#include "CliGroupCommand.h"

// `kx410ctl backup`: checked backups of the station's database in its backup folder.
class BackupCommand : public CliGroupCommand
{
public:
    BackupCommand();

    QString name() const override;
    QString summary() const override;
    int check(const QStringList& arguments) const override;

protected:
    QString helpFooter() const override;

private:
    static int now(CliContext& context, const CliArguments& args);
    static int list(CliContext& context, const CliArguments& args);
    static int verify(CliContext& context, const CliArguments& args);
};
