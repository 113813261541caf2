#pragma once

#include "CliGroupCommand.h"
#include "store/LookupTable.h"

// `kx410ctl companies|departments|blocks`: the small tables that classify persons.
class LookupCommand : public CliGroupCommand
{
public:
    explicit LookupCommand(LookupTable::Kind kind);

    QString name() const override;
    QString summary() const override;

private:
    int list(CliContext& context) const;
    int add(CliContext& context, const CliArguments& args) const;
    int remove(CliContext& context, const CliArguments& args) const;

    LookupTable m_table;
};
