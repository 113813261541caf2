#include "operations/records/RecordErasures.h"

#include "store/Database.h"

using namespace Qt::StringLiterals;

RecordErasures::RecordErasures(Database& db)
    : m_db(db)
{ }

std::optional<RecordErasures::Mark> RecordErasures::current(QString* error) const
{
    QSqlQuery q = m_db.query(u"SELECT (SELECT max(\"Kayit No\") FROM \"AccessDatas\"), "
                             u"(SELECT max(\"Kayit No\") FROM \"UnreadRecords\")"_s,
                             {}, error);
    if (!q.isActive())
        return std::nullopt;
    Mark mark;
    if (q.next()) {
        mark.lastPassage = q.value(0).toLongLong();
        mark.lastUnread = q.value(1).toLongLong();
    }
    return mark;
}

bool RecordErasures::markErased(qint32 panel, const Mark& mark, const QDateTime& at, QString* error)
{
    return m_db.upsert(u"RecordErasures"_s, { u"Panel ID"_s },
                       { u"Panel ID"_s, u"Son Kayit No"_s, u"Son Okunamayan No"_s, u"Tarih"_s },
                       { panel, mark.lastPassage, mark.lastUnread, m_db.toSql(at) }, error);
}

bool RecordErasures::load(qint32 panel, Mark* mark, QString* error) const
{
    *mark = Mark();
    QSqlQuery q
        = m_db.query(u"SELECT \"Son Kayit No\", \"Son Okunamayan No\" FROM \"RecordErasures\" WHERE \"Panel ID\" = ?"_s,
                     { panel }, error);
    if (!q.isActive())
        return false;
    if (q.next())
        *mark = Mark{ q.value(0).toLongLong(), q.value(1).toLongLong() };
    return true;
}

bool RecordErasures::loadAll(QHash<qint32, Mark>* marks, QString* error) const
{
    marks->clear();
    QSqlQuery q = m_db.query(u"SELECT \"Panel ID\", \"Son Kayit No\", \"Son Okunamayan No\" FROM \"RecordErasures\""_s,
                             {}, error);
    if (!q.isActive())
        return false;
    while (q.next())
        marks->insert(q.value(0).toInt(), Mark{ q.value(1).toLongLong(), q.value(2).toLongLong() });
    return true;
}
