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
    explicit PanelHeldUsers(Database& db);

    // ID -> user block, as the panel last acknowledged it.
    bool load(qint32 panelNumber, QMap<qint32, QByteArray>* held, QString* error = nullptr) const;
    // Notes the blocks the panel took and the IDs it deleted, then the send time and the
    // fingerprint of what it holds now in the send log; one transaction.
    bool update(qint32 panelNumber, const QMap<qint32, QByteArray>& taken, const QList<qint32>& deleted,
                const QDateTime& at, QString* error = nullptr);

private:
    Database& m_db;
};
