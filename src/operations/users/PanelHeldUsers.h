#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QMap>
#include <QString>

class Database;

// The users each panel acknowledged, as the user blocks it took: what a send of changed users
// compares the database with. Kept up to date after every send, full or changed-only, with only
// what the panel answered for, so that a user the panel did not take is sent again next time.
class PanelHeldUsers
{
public:
    // ID -> user block, as the panel last acknowledged it.
    using Blocks = QMap<qint32, QByteArray>;

    explicit PanelHeldUsers(Database& db);

    bool load(qint32 panelNumber, Blocks* held, QString* error = nullptr) const;
    // Notes the blocks the panel took and the IDs it deleted since `held` was read (what the
    // panel held then, the caller's one reading), and brings `held` up to what it holds now. Only
    // the rows that differ from `held` are written; one transaction.
    bool noteRows(qint32 panelNumber, Blocks& held, const Blocks& taken, const QList<qint32>& deleted,
                  QString* error = nullptr);
    // noteRows, and the send time and the fingerprint of what the panel holds now in the send log,
    // in the same transaction.
    bool update(qint32 panelNumber, Blocks& held, const Blocks& taken, const QList<qint32>& deleted,
                const QDateTime& at, QString* error = nullptr);
    // The same, reading what the panel held first.
    bool update(qint32 panelNumber, const Blocks& taken, const QList<qint32>& deleted, const QDateTime& at,
                QString* error = nullptr);

private:
    bool write(qint32 panelNumber, Blocks& held, const Blocks& taken, const QList<qint32>& deleted, const QDateTime* at,
               QString* error);

    Database& m_db;
};
