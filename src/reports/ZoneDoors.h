#pragma once

#include <QList>
#include <QMap>
#include <QString>

class Database;

// The doors of one global zone, panel by panel, as the panel settings place them: a door
// belongs to the local zone its settings name (1 or 2), and each local zone of a panel to a
// global zone.
class ZoneDoors
{
public:
    // Reads the zone's doors; panels outside `onlyPanels` (when given) take no part.
    static ZoneDoors load(const Database& db, int zone, const QList<int>* onlyPanels = nullptr,
                          QString* error = nullptr);
    static QString zoneName(const Database& db, int zone);

    bool isEmpty() const { return m_doors.isEmpty(); }
    // Panel number -> its doors in the zone (ascending), panels ascending.
    const QMap<int, QList<int>>& doors() const { return m_doors; }

private:
    QMap<int, QList<int>> m_doors;
};
