#pragma once

#include "protocol/ExchangeResult.h"
#include "protocol/PanelCommand.h"

#include <QByteArray>

class PanelLink;

// One exchange of a command with the catalogue's time-out, awaited length and attempts.
ExchangeResult run(PanelLink& link, PanelCommand command, const QByteArray& frame);
