#include "operations/users/PanelHeldUsers.h"

#include "operations/panels/PanelSendLog.h"
#include "store/Database.h"
#include "store/Transaction.h"

#include <QMutex>
#include <QSqlQuery>

using namespace Qt::StringLiterals;

namespace {

const QString kTable = u"PanelUsers"_s;
// IDs per DELETE: well below either engine's limit of bound values.
constexpr qsizetype kChunk = 500;

} // namespace

PanelHeldUsers::PanelHeldUsers(Database& db)
    : m_db(db)
{ }

bool PanelHeldUsers::load(qint32 panelNumber, QMap<qint32, QByteArray>* held, QString* error) const
{
    held->clear();
    QString why;
    QSqlQuery q = m_db.query(u"SELECT \"ID\", \"Imza\" FROM "_s + Database::quoted(kTable)
                                 + u" WHERE \"Panel No\" = ? ORDER BY \"ID\""_s,
                             { panelNumber }, &why);
    if (!q.isActive()) {
        if (error)
            *error = why;
        return false;
    }
    while (q.next())
        held->insert(q.value(0).toInt(), q.value(1).toString().toLatin1());
    return true;
}

bool PanelHeldUsers::update(qint32 panelNumber, const QMap<qint32, QByteArray>& taken, const QList<qint32>& deleted,
                            const QDateTime& at, QString* error)
{
    // What the panel holds afterwards, worked out before the write: only this panel's lane writes
    // its rows, and the reading and hashing stay out of the writers' turn.
    QMap<qint32, QByteArray> held;
    if (!load(panelNumber, &held, error))
        return false;
    for (qint32 id : deleted)
        held.remove(id);
    held.insert(taken);
    const QByteArray fingerprint = PanelSendLog::usersFingerprint(held);

    // The lanes of a parallel send write one at a time here rather than wait on SQLite's lock,
    // whose patience is shorter than 64 panels' worth of writes.
    static QMutex writers;
    QMutexLocker lock(&writers);
    Transaction transaction(m_db);
    if (!transaction.isActive()) {
        if (error)
            *error = transaction.error();
        return false;
    }
    QList<qint32> gone = taken.keys();
    gone += deleted;
    for (qsizetype from = 0; from < gone.size(); from += kChunk) {
        const QList<qint32> chunk = gone.mid(from, kChunk);
        QVariantList params{ panelNumber };
        for (qint32 id : chunk)
            params << id;
        if (!m_db.exec(u"DELETE FROM "_s + Database::quoted(kTable) + u" WHERE \"Panel No\" = ? AND \"ID\" IN ("_s
                           + Database::placeholders(chunk.size()) + u")"_s,
                       params, error))
            return false;
    }
    QList<QVariantList> rows;
    rows.reserve(taken.size());
    for (auto it = taken.cbegin(); it != taken.cend(); ++it)
        rows << QVariantList{ panelNumber, it.key(), QString::fromLatin1(it.value()) };
    if (!rows.isEmpty() && !m_db.insertRows(kTable, { u"Panel No"_s, u"ID"_s, u"Imza"_s }, rows, error))
        return false;
    if (!PanelSendLog(m_db).noteFingerprint(panelNumber, SentData::Users, at, fingerprint, error))
        return false;
    return transaction.commit(error);
}
