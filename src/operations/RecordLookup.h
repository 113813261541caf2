#pragma once

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
    std::optional<qint32> userType(qint64 cardId) const;

    // The visits of these cards (every card when the set is large) registered from first to last.
    bool loadVisits(const QSet<qint64>& cards, const QDate& first, const QDate& last, QString* error = nullptr);
    // The last visit of that card registered on the passage's day at a time before the passage;
    // empty when there is none.
    std::optional<qint64> visitorNo(qint64 cardId, const QDateTime& passage) const;

    // The per-door local zones and the two global zones of every panel, and the GlobalZones list.
    bool loadZones(QString* error = nullptr);
    // A live passage's local zone: the door's setting, 1 for a door outside 1..4 or an unknown
    // panel.
    qint32 liveLocalZone(qint32 panelNumber, qint32 door) const;
    // The panel's global zone for local zone 2 or, for any other local zone, zone 1; a value
    // outside 1..999 becomes 1.
    qint32 liveGlobalZone(qint32 panelNumber, qint32 localZone) const;
    // A downloaded record's global zone: chosen like the live one, kept only when GlobalZones
    // lists it; a zone GlobalZones does not list (or an unknown panel) maps to zone 1.
    qint32 offlineGlobalZone(qint32 panelNumber, qint32 localZone) const;

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
    QHash<qint64, std::optional<qint32>> m_userType;
    QHash<qint64, QList<Visit>> m_visits;
    QHash<qint32, PanelZones> m_zones;
    QSet<qint32> m_globalZones;
};
