#include "SimUserCommands.h"

#include "SimCommandContext.h"
#include "SimFrames.h"
#include "SimPanelState.h"
#include "SimText.h"

namespace {
std::optional<int> userNumber(const SimCommandContext& c)
{
    const auto id = SimText::digits(c.fields, 0, 5);
    if (!id || *id < 1 || *id > SimPanelState::kUserSlots)
        return std::nullopt;
    return id;
}

void writeUser(SimCommandContext& c)
{
    const auto user = SimUser::fromBlock(c.fields);
    if (!user || user->id < 1 || user->id > SimPanelState::kUserSlots) {
        c.refuse();
        return;
    }
    c.state.putUser(*user);
    c.confirm();
}

void readUser(SimCommandContext& c)
{
    const auto id = userNumber(c);
    if (!id) {
        c.refuse();
        return;
    }
    const auto it = c.state.users.constFind(*id);
    c.answer(it == c.state.users.constEnd() ? SimUser::emptyBlock(*id) : it->toBlock());
}

void setClock(SimCommandContext& c)
{
    const auto day = SimText::digits(c.fields, 0, 2);
    const auto month = SimText::digits(c.fields, 2, 2);
    const auto year = SimText::digits(c.fields, 4, 2);
    const auto hour = SimText::digits(c.fields, 6, 2);
    const auto minute = SimText::digits(c.fields, 8, 2);
    const auto second = SimText::digits(c.fields, 10, 2);
    const auto weekday = SimText::digits(c.fields, 12, 2);
    if (!day || !month || !year || !hour || !minute || !second || !weekday) {
        c.refuse();
        return;
    }
    const QDate date(2000 + *year, *month, *day);
    const QTime time(*hour, *minute, *second);
    if (!date.isValid() || !time.isValid()) {
        c.refuse();
        return;
    }
    // The panel keeps its own weekday counter; it takes the station's as it is sent.
    c.state.setClock(QDateTime(date, time, Qt::UTC));
    c.confirm();
}

void dailyApproval(SimCommandContext& c)
{
    const auto id = userNumber(c);
    const auto approved = SimText::flag(c.fields, 5);
    if (!id || !approved) {
        c.refuse();
        return;
    }
    if (*approved)
        c.state.dailyApproved.insert(*id);
    else
        c.state.dailyApproved.remove(*id);
    c.confirm();
}
} // namespace

bool SimUserCommands::handle(SimCommandContext& c)
{
    if (c.code == "NC") {
        writeUser(c);
    } else if (c.code == "UC") {
        readUser(c);
    } else if (c.code == "DC") {
        const auto id = userNumber(c);
        if (id)
            c.state.removeUser(*id);
        id ? c.confirm() : c.refuse();
    } else if (c.code == "EC") {
        c.state.clearUsers();
        c.confirm();
    } else if (c.code == "MU") {
        const auto count = SimText::digits(c.fields, 0, 5);
        if (count)
            c.state.announcedUserCount = *count;
        count ? c.confirm() : c.refuse();
    } else if (c.code == "UR") {
        const QDateTime now = c.state.now();
        c.answer(SimFrames::stamp(now) + SimText::number(now.date().dayOfWeek(), 2) + '0');
    } else if (c.code == "DR") {
        setClock(c);
    } else if (c.code == "CS") {
        dailyApproval(c);
    } else {
        return false;
    }
    return true;
}
