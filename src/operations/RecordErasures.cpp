#include "operations/RecordErasures.h"

#include "store/Database.h"

using namespace Qt::StringLiterals;

RecordErasures::RecordErasures(Database& db)
    : m_db(db)
{ }

std::optional<qint64> RecordErasures::highestRecordNo(QString* error) const
{
    QSqlQuery q = m_db.query(u"SELECT max(\"Kayit No\") FROM \"AccessDatas\""_s, {}, error);
    if (!q.isActive())
        return std::nullopt;
    return q.next() ? q.value(0).toLongLong() : 0;
}

bool RecordErasures::markErased(qint32 panel, qint64 lastRecordNo, const QDateTime& at, QString* error)
{
    return m_db.upsert(u"RecordErasures"_s, { u"Panel ID"_s }, { u"Panel ID"_s, u"Son Kayit No"_s, u"Tarih"_s },
                       { panel, lastRecordNo, m_db.toSql(at) }, error);
}

bool RecordErasures::load(QHash<qint32, qint64>* marks, QString* error) const
{
    marks->clear();
    QSqlQuery q = m_db.query(u"SELECT \"Panel ID\", \"Son Kayit No\" FROM \"RecordErasures\""_s, {}, error);
    if (!q.isActive())
        return false;
    while (q.next())
        marks->insert(q.value(0).toInt(), q.value(1).toLongLong());
    return true;
}
