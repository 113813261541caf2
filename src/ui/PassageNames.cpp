#include "ui/PassageNames.h"

#include "store/Database.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace {
// "?, ?, ?" for a list of bound values.
QString placeholders(qsizetype count)
{
    QStringList marks;
    marks.reserve(count);
    for (qsizetype i = 0; i < count; ++i)
        marks << u"?"_s;
    return marks.join(u", "_s);
}
} // namespace

PassageNames::PassageNames(const Database& db)
    : m_db(db)
{ }

QString PassageNames::fullName(const QString& first, const QString& last)
{
    return QString(first.trimmed() + u' ' + last.trimmed()).trimmed();
}

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
    for (const QVariantList& row : m_db.rows(u"SELECT \"TKod\", \"Operasyon\" FROM \"CodeDefinition\""_s))
        m_events.insert(row.value(0).toInt(), row.value(1).toString());
}

void PassageNames::loadUsers(const QList<qint32>& ids)
{
    if (ids.isEmpty())
        return;
    QVariantList params;
    for (qint32 id : ids) {
        params << id;
        // Remembered as nameless unless the query finds the person, so a stranger is asked once.
        m_users.insert(id, QString());
    }
    const QString sql
        = u"SELECT \"ID\", \"Adi\", \"Soyadi\" FROM \"Users\" WHERE \"ID\" IN ("_s + placeholders(params.size()) + u')';
    for (const QVariantList& row : m_db.rows(sql, params))
        m_users.insert(row.value(0).toInt(), fullName(row.value(1).toString(), row.value(2).toString()));
}

QHash<qint64, QString> PassageNames::visitorNames(const QList<qint64>& visits) const
{
    QHash<qint64, QString> names;
    if (visits.isEmpty())
        return names;
    QVariantList params;
    for (qint64 visit : visits)
        params << visit;
    const QString sql = u"SELECT \"Kayit No\", \"Adi\", \"Soyadi\" FROM \"Visitors\" WHERE \"Kayit No\" IN ("_s
        + placeholders(params.size()) + u')';
    for (const QVariantList& row : m_db.rows(sql, params))
        names.insert(row.value(0).toLongLong(), fullName(row.value(1).toString(), row.value(2).toString()));
    return names;
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
    const QHash<qint64, QString> visitors = visitorNames(visits.values());

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
