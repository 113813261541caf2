#pragma once

#include "protocol/UserType.h"

#include <QDate>
#include <QDateTime>
#include <QHash>
#include <QList>
#include <QSet>
#include <QString>
#include <optional>

class Database;

// What a passage record needs from the rest of the database, read with a few queries per panel
// or per batch instead of one per record: the card number of a user, the user type of a card,
// the visits of a card on a day, and the panels' zone settings.
class RecordLookup
{
public:
    explicit RecordLookup(const Database& db);

    // Every user's card number (for decoding downloaded records, which carry only the user).
    bool loadUserCards(QString* error = nullptr);
    // 0 when no user has that number.
    qint64 cardOfUser(qint32 userId) const;

    // The user type of these cards (every card when the set is large); the user created first
    // wins when a card appears twice.
    bool loadUserTypes(const QSet<qint64>& cards, QString* error = nullptr);
    // Empty when no user holds the card.
    std::optional<UserType> userType(qint64 cardId) const;

    // The visits of these cards (every card when the set is large) registered from first to last.
    bool loadVisits(const QSet<qint64>& cards, const QDate& first, const QDate& last, QString* error = nullptr);
    // The last visit of that card registered on the passage's day at a time before the passage;
    // empty when there is none.
    std::optional<qint64> visitorNo(qint64 cardId, const QDateTime& passage) const;

    // The per-door local zones and the two global zones of every panel.
    bool loadZones(QString* error = nullptr);
    // Where a passage happened: the local zone of the door (1 or 2) and the global zone the
    // panel maps it to.
    struct Zones
    {
        qint32 local = 1;
        qint32 global = 1;
    };
    // The one zone mapping of every stored passage. The local zone is the door's setting; for a
    // door outside 1..4 or a panel not in the list it is the zone the panel reported (when 1 or
    // 2), else 1. The global zone is the panel's setting for local zone 2 or, for zone 1, its
    // first one; a value outside 1..999 (or none) becomes 1.
    Zones zonesOf(qint32 panelNumber, qint32 door, std::optional<qint32> reportedZone = std::nullopt) const;

    // Cards above this many are looked up by reading the whole table instead of a list.
    static constexpr int ListLimit = 400;

private:
    struct PanelZones
    {
        qint32 doorZone[4] = { 1, 1, 1, 1 };
        qint32 global1 = 1;
        qint32 global2 = 1;
    };
    struct Visit
    {
        qint64 visitNo = 0;
        QDate date;
        QTime time;
        bool timeSet = false;
    };

    const Database& m_db;
    QHash<qint32, qint64> m_cardOfUser;
    QHash<qint64, std::optional<UserType>> m_userType;
    QHash<qint64, QList<Visit>> m_visits;
    QHash<qint32, PanelZones> m_zones;
};
