#pragma once

#include "operations/panels/SentData.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QMap>
#include <QSet>
#include <QString>
#include <optional>

class Database;

// What the station last sent to each panel and when, so that it knows what each panel holds: a
// fingerprint of the data at the time of the send, compared with a fingerprint of the data now.
// A panel is out of step when any kind of data it was sent has changed since in the database.
class PanelSendLog
{
public:
    struct Entry
    {
        qint32 panelNumber = 0;
        SentData what = SentData::Users;
        QDateTime at;
        QByteArray fingerprint;
    };

    explicit PanelSendLog(const Database& db);

    // Notes that everything of this kind the database holds for the panel now was sent to it at
    // `at`. The group and time group sends call it once a panel has taken them all.
    bool noteSent(qint32 panelNumber, SentData what, const QDateTime& at, QString* error = nullptr);
    // Notes a fingerprint worked out by the caller (users: that of what the panel acknowledged).
    bool noteFingerprint(qint32 panelNumber, SentData what, const QDateTime& at, const QByteArray& fingerprint,
                         QString* error = nullptr);

    // Every panel's last sends.
    QList<Entry> entries(QString* error = nullptr) const;
    std::optional<Entry> last(qint32 panelNumber, SentData what, QString* error = nullptr) const;

    // The fingerprint of what a send of this kind would take to the panel now.
    QByteArray currentFingerprint(qint32 panelNumber, SentData what, QString* error = nullptr) const;
    // The panels whose data changed in the database since it was last sent to them.
    QList<qint32> outOfStep(QString* error = nullptr) const;

    // The fingerprint of a set of user blocks by ID.
    static QByteArray usersFingerprint(const QMap<qint32, QByteArray>& blocks);
    // The same of `blocks` once `taken` replaced or joined them and `deleted` left, without
    // building that set.
    static QByteArray usersFingerprint(const QMap<qint32, QByteArray>& blocks, const QMap<qint32, QByteArray>& taken,
                                       const QSet<qint32>& deleted);

private:
    QByteArray rowsFingerprint(const QString& sql, const QVariantList& params, QString* error) const;

    const Database& m_db;
};
