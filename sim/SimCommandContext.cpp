#include "SimCommandContext.h"

#include "SimFrames.h"

SimCommandContext::SimCommandContext(SimPanelState& panelState, int panelSerial, int panelNumber,
                                     const QByteArray& requestCode, const QByteArray& requestFields)
    : state(panelState)
    , serial(panelSerial)
    , number(panelNumber)
    , code(requestCode)
    , fields(requestFields)
{ }

void SimCommandContext::confirm()
{
    answers.append(SimFrames::confirm(code, serial, number));
}

void SimCommandContext::refuse()
{
    answers.append(SimFrames::refusal(code, serial, number, answerLength(code)));
}

void SimCommandContext::answer(const QByteArray& answerFields)
{
    answers.append(SimFrames::answerHead(code, serial, number) + answerFields + "**");
}

int SimCommandContext::answerLength(const QByteArray& code)
{
    if (code == "UC")
        return 56;
    if (code == "ZR")
        return 41;
    if (code == "UR")
        return 27;
    if (code == "RP")
        return 21;
    if (code == "RC")
        return 17;
    if (code == "LR" || code == "MR" || code == "GR")
        return 16;
    if (code == "PR")
        return 15;
    return 13;
}
