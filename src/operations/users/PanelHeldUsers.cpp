#include "operations/users/PanelHeldUsers.h"

#include "operations/panels/PanelSendLog.h"
#include "store/Database.h"
#include "store/Transaction.h"

#include <QMutex>
#include <QSet>
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

bool PanelHeldUsers::load(qint32 panelNumber, Blocks* held, QString* error) const
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
    // The rows come in ID order: each goes at the end without a search.
    while (q.next())
        held->insert(held->cend(), q.value(0).toInt(), q.value(1).toString().toLatin1());
    return true;
}

bool PanelHeldUsers::noteRows(qint32 panelNumber, Blocks& held, const Blocks& taken, const QList<qint32>& deleted,
                              QString* error)
{
    return write(panelNumber, held, taken, deleted, nullptr, error);
}

bool PanelHeldUsers::update(qint32 panelNumber, Blocks& held, const Blocks& taken, const QList<qint32>& deleted,
                            const QDateTime& at, QString* error)
{
    return write(panelNumber, held, taken, deleted, &at, error);
}

bool PanelHeldUsers::update(qint32 panelNumber, const Blocks& taken, const QList<qint32>& deleted, const QDateTime& at,
                            QString* error)
{
    Blocks held;
    return load(panelNumber, &held, error) && update(panelNumber, held, taken, deleted, at, error);
}

bool PanelHeldUsers::write(qint32 panelNumber, Blocks& held, const Blocks& taken, const QList<qint32>& deleted,
                           const QDateTime* at, QString* error)
{
    // Only what differs from the panel's rows is written: a send that repeats what the panel
    // holds writes nothing but the send log.
    QList<qint32> gone;
    QList<QVariantList> rows;
    for (auto it = taken.cbegin(); it != taken.cend(); ++it) {
        const auto known = held.constFind(it.key());
        if (known != held.cend() && known.value() == it.value())
            continue;
        // Taken away first even when `held` has no row for it: another program may have noted it.
        gone << it.key();
        rows << QVariantList{ panelNumber, it.key(), QString::fromLatin1(it.value()) };
    }
    const QSet<qint32> deletedIds(deleted.cbegin(), deleted.cend());
    for (qint32 id : deletedIds) {
        if (!taken.contains(id))
            gone << id;
    }
    // Worked out before the write, so that the hashing stays out of the writers' turn, and without
    // a copy of what the panel holds: the caller's reading is brought up to date once written.
    const QByteArray fingerprint = at ? PanelSendLog::usersFingerprint(held, taken, deletedIds) : QByteArray();

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
    if (!rows.isEmpty() && !m_db.insertRows(kTable, { u"Panel No"_s, u"ID"_s, u"Imza"_s }, rows, error))
        return false;
    if (at && !PanelSendLog(m_db).noteFingerprint(panelNumber, SentData::Users, *at, fingerprint, error))
        return false;
    if (!transaction.commit(error))
        return false;
    for (qint32 id : deletedIds)
        held.remove(id);
    held.insert(taken);
    return true;
}
