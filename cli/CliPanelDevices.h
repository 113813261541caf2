#pragma once

#include "CliArguments.h"

#include <QList>

class CliContext;

// `kx410ctl panels clock|counter|reader`: the panel clocks (with the offset kept for the list), the
// local zone counters and the UHF readers, as the panel settings window drives them.
class CliPanelDevices
{
public:
    static QList<CliArguments::Option> clockOptions();
    static QList<CliArguments::Option> counterOptions();
    static QList<CliArguments::Option> readerOptions();
    static int clock(CliContext& context, const CliArguments& args);
    static int counter(CliContext& context, const CliArguments& args);
    static int reader(CliContext& context, const CliArguments& args);
};
