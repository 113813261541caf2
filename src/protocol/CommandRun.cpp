#include "protocol/CommandRun.h"

#include "protocol/CommandCatalogue.h"
#include "protocol/PanelLink.h"

ExchangeResult run(PanelLink& link, PanelCommand command, const QByteArray& frame)
{
    return link.exchange(frame, CommandCatalogue::info(command));
}
