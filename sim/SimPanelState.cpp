#include "SimPanelState.h"

#include <algorithm>

QDateTime SimPanelState::now() const
{
    const QDateTime host = QDateTime::currentDateTime().addMSecs(clockOffsetMs);
    return QDateTime(host.date(), host.time(), Qt::UTC);
}

void SimPanelState::setClock(const QDateTime& panelTime)
{
    const QDateTime host = QDateTime::currentDateTime();
    const QDateTime hostPlain(host.date(), host.time(), Qt::UTC);
    const QDateTime wanted(panelTime.date(), panelTime.time(), Qt::UTC);
    clockOffsetMs = hostPlain.msecsTo(wanted);
}

void SimPanelState::putUser(const SimUser& user)
{
    removeUser(user.id);
    users.insert(user.id, user);
    userSlots.insert(user.id);
    if (user.card > 0)
        cardIndex.insert(user.card, user.id);
}

bool SimPanelState::removeUser(int id)
{
    const auto it = users.constFind(id);
    if (it == users.constEnd())
        return false;
    const auto card = cardIndex.constFind(it->card);
    if (card != cardIndex.constEnd() && card.value() == id)
        cardIndex.erase(card);
    users.erase(it);
    userSlots.remove(id);
    return true;
}

void SimPanelState::clearUsers()
{
    users.clear();
    cardIndex.clear();
    userSlots.clear();
    announcedUserCount = 0;
}

const SimUser* SimPanelState::userByCard(qint64 card) const
{
    const auto it = cardIndex.constFind(card);
    if (it == cardIndex.constEnd())
        return nullptr;
    const auto user = users.constFind(it.value());
    return user == users.constEnd() ? nullptr : &user.value();
}

int SimPanelState::recordCapacity() const
{
    return settings.temporaryGroupsOn ? SimRecordMemory::kCapacityWithTemporaryGroups : SimRecordMemory::kCapacity;
}

void SimPanelState::applySettings(const SimPanelSettings& newSettings)
{
    settings = newSettings;
    records.setCapacity(recordCapacity());
}

void SimPanelState::storeOperation(PassageCode code, int door, int source, const QDateTime& moment)
{
    SimRecord record;
    record.door = door;
    record.localZone = settings.doors[std::clamp(door, 1, 4) - 1].localZone;
    record.direction = Direction::Entry;
    record.code = code;
    record.userId = source;
    record.time = moment;
    records.append(record);
}
