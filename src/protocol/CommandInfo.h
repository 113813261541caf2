#pragma once

#include "protocol/PanelCommand.h"

#include <QByteArray>

// One line of the command catalogue.
struct CommandInfo
{
    PanelCommand command;
    const char* code; // two letters, without "%"
    int timeoutMs;
    int minAnswerLength;
    int attempts;
    ResultConvention convention;
};
