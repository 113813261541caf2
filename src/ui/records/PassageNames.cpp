#include "ui/records/PassageNames.h"

#include "operations/users/UserRepository.h"
#include "operations/users/VisitorRepository.h"
#include "store/CodeTable.h"

#include <QSet>

PassageNames::PassageNames(const Database& db)
    : m_db(db)
{ }

void PassageNames::clear()
{
    m_users.clear();
    m_events.clear();
    m_eventsLoaded = false;
}

QString PassageNames::eventText(PassageCode code)
{
    if (!m_eventsLoaded)
        loadEvents();
    return m_events.value(storedNumber(code));
}

void PassageNames::loadEvents()
{
    m_eventsLoaded = true;
    for (const CodeTable::Row& row : CodeTable(CodeTable::Kind::EventCodes).rows(m_db))
        m_events.insert(row.code, row.name);
}

void PassageNames::loadUsers(const QList<qint32>& ids)
{
    if (ids.isEmpty())
        return;
    // Remembered as nameless unless the person is found, so a stranger is asked for once.
    for (qint32 id : ids)
        m_users.insert(id, QString());
    m_users.insert(UserRepository(m_db).namesOf(ids));
}

QList<PassageRow> PassageNames::resolve(const QList<RecordRow>& rows)
{
    QSet<qint32> unknownUsers;
    QSet<qint64> visits;
    for (const RecordRow& row : rows) {
        // Door operation records carry an operation's number instead of a person's.
        if (!namesPerson(row.code))
            continue;
        if (row.visitorNo)
            visits.insert(*row.visitorNo);
        if (!m_users.contains(row.userId))
            unknownUsers.insert(row.userId);
    }
    loadUsers(unknownUsers.values());
    const QHash<qint64, QString> visitors = VisitorRepository(m_db).namesOf(visits.values());

    QList<PassageRow> resolved;
    resolved.reserve(rows.size());
    for (const RecordRow& row : rows) {
        PassageRow passage{ row, QString(), eventText(row.code) };
        if (namesPerson(row.code)) {
            if (row.visitorNo && visitors.contains(*row.visitorNo))
                passage.name = visitors.value(*row.visitorNo);
            else
                passage.name = m_users.value(row.userId);
        }
        resolved << passage;
    }
    return resolved;
}
