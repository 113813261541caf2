#pragma once

#include "protocol/PassageCode.h"
#include "ui/records/PassageRow.h"

#include <QHash>
#include <QList>
#include <QString>

class Database;

// Puts names and event texts on passages that arrive without them (live rows): the people's
// names are read with one query per batch for the numbers not seen before, the visitors' names
// likewise, and the event texts once.
class PassageNames
{
public:
    explicit PassageNames(const Database& db);

    QList<PassageRow> resolve(const QList<RecordRow>& rows);
    // The Turkish text of an event code (CodeDefinition), empty when it has none.
    QString eventText(PassageCode code);
    // Forgets what was read (names may have changed).
    void clear();

private:
    void loadEvents();
    void loadUsers(const QList<qint32>& ids);

    const Database& m_db;
    QHash<qint32, QString> m_users;
    QHash<qint32, QString> m_events;
    bool m_eventsLoaded = false;
};
