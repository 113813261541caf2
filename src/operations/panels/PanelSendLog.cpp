#include "operations/panels/PanelSendLog.h"

#include "operations/users/SendableUsers.h"
#include "store/Database.h"

#include <QCryptographicHash>
#include <QHash>
#include <QSqlQuery>
#include <QSqlRecord>
#include <charconv>

using namespace Qt::StringLiterals;

namespace {

const QString kTable = u"PanelSends"_s;

QByteArray currentUsersFingerprint(const Database& db)
{
    QMap<qint32, QByteArray> blocks;
    for (const UserRecord& user : SendableUsers::load(db, UserSelection::all()).sendable)
        blocks.insert(user.id, SendableUsers::fingerprint(user));
    return PanelSendLog::usersFingerprint(blocks);
}

} // namespace

PanelSendLog::PanelSendLog(const Database& db)
    : m_db(db)
{ }

bool PanelSendLog::noteSent(qint32 panelNumber, SentData what, const QDateTime& at, QString* error)
{
    QString why;
    const QByteArray fingerprint = currentFingerprint(panelNumber, what, &why);
    if (!why.isEmpty()) {
        if (error)
            *error = why;
        return false;
    }
    return noteFingerprint(panelNumber, what, at, fingerprint, error);
}

bool PanelSendLog::noteFingerprint(qint32 panelNumber, SentData what, const QDateTime& at,
                                   const QByteArray& fingerprint, QString* error)
{
    return m_db.upsert(kTable, { u"Panel No"_s, u"Veri"_s }, { u"Panel No"_s, u"Veri"_s, u"Tarih"_s, u"Imza"_s },
                       { panelNumber, static_cast<int>(what), m_db.toSql(at), QString::fromLatin1(fingerprint) },
                       error);
}

QList<PanelSendLog::Entry> PanelSendLog::entries(QString* error) const
{
    QList<Entry> list;
    const auto rows = m_db.rows(u"SELECT \"Panel No\", \"Veri\", \"Tarih\", \"Imza\" FROM "_s + Database::quoted(kTable)
                                    + u" ORDER BY \"Panel No\", \"Veri\""_s,
                                {}, error);
    for (const QVariantList& row : rows) {
        Entry e;
        e.panelNumber = row.at(0).toInt();
        e.what = static_cast<SentData>(row.at(1).toInt());
        e.at = Database::dateTime(row.at(2));
        e.fingerprint = row.at(3).toString().toLatin1();
        list << e;
    }
    return list;
}

std::optional<PanelSendLog::Entry> PanelSendLog::last(qint32 panelNumber, SentData what, QString* error) const
{
    for (const Entry& e : entries(error)) {
        if (e.panelNumber == panelNumber && e.what == what)
            return e;
    }
    return std::nullopt;
}

QByteArray PanelSendLog::currentFingerprint(qint32 panelNumber, SentData what, QString* error) const
{
    switch (what) {
    case SentData::Users:
        return currentUsersFingerprint(m_db);
    case SentData::TimeGroups:
        return rowsFingerprint(u"SELECT * FROM \"TimeGroups\" ORDER BY \"Zaman Grup No\""_s, {}, error);
    case SentData::Groups:
        // The groups, and the door rules of this panel's doors.
        return rowsFingerprint(u"SELECT * FROM \"GroupsMaster\" ORDER BY \"Grup No\""_s, {}, error)
            + rowsFingerprint(
                   u"SELECT * FROM \"GroupsDetail\" WHERE \"Panel No\" = ? ORDER BY \"Grup No\", \"Kayit No\""_s,
                   { panelNumber }, error);
    }
    return {};
}

QList<qint32> PanelSendLog::outOfStep(QString* error) const
{
    QList<qint32> panels;
    // Users and time groups are the same for every panel: worked out once.
    QHash<int, QByteArray> shared;
    for (const Entry& e : entries(error)) {
        if (!panels.isEmpty() && panels.last() == e.panelNumber)
            continue;
        QByteArray now;
        if (e.what == SentData::Groups) {
            now = currentFingerprint(e.panelNumber, e.what, error);
        } else {
            const int key = static_cast<int>(e.what);
            if (!shared.contains(key))
                shared.insert(key, currentFingerprint(e.panelNumber, e.what, error));
            now = shared.value(key);
        }
        if (now != e.fingerprint)
            panels << e.panelNumber;
    }
    return panels;
}

QByteArray PanelSendLog::usersFingerprint(const QMap<qint32, QByteArray>& blocks)
{
    return usersFingerprint(blocks, {}, {});
}

QByteArray PanelSendLog::usersFingerprint(const QMap<qint32, QByteArray>& blocks, const QMap<qint32, QByteArray>& taken,
                                          const QSet<qint32>& deleted)
{
    QCryptographicHash hash(QCryptographicHash::Sha1);
    // "id:block\n" in ID order; the ID written without an allocation, 20000 times a panel.
    const auto add = [&hash](qint32 id, const QByteArray& block) {
        char head[16];
        const auto end = std::to_chars(head, head + sizeof head - 1, id).ptr;
        *end = ':';
        hash.addData(QByteArrayView(head, end - head + 1));
        hash.addData(block);
        hash.addData("\n");
    };
    auto kept = blocks.cbegin();
    auto added = taken.cbegin();
    while (kept != blocks.cend() || added != taken.cend()) {
        // A taken block wins over the one held under the same ID.
        if (added != taken.cend() && (kept == blocks.cend() || added.key() <= kept.key())) {
            if (kept != blocks.cend() && kept.key() == added.key())
                ++kept;
            add(added.key(), added.value());
            ++added;
        } else {
            if (!deleted.contains(kept.key()))
                add(kept.key(), kept.value());
            ++kept;
        }
    }
    return hash.result().toHex();
}

QByteArray PanelSendLog::rowsFingerprint(const QString& sql, const QVariantList& params, QString* error) const
{
    QCryptographicHash hash(QCryptographicHash::Sha1);
    QSqlQuery q = m_db.query(sql, params, error);
    while (q.next()) {
        const QSqlRecord record = q.record();
        for (int i = 0; i < record.count(); ++i) {
            hash.addData(q.value(i).toString().toUtf8());
            hash.addData("\x1f");
        }
        hash.addData("\x1e");
    }
    return hash.result().toHex();
}
