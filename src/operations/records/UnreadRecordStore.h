#pragma once

#include "protocol/RecordDownloadCollector.h"

#include <QDateTime>
#include <QList>
#include <QString>

class Database;

// Keeps the pieces of record downloads that could not be stored as passages, so that nothing a
// panel sent is lost unseen: the operator can list them and judge them.
class UnreadRecordStore
{
public:
    struct Row
    {
        qint64 recordNo = 0;
        qint32 panel = 0;
        QDateTime received;
        QString text;
        QString reason;
    };

    explicit UnreadRecordStore(Database& db);

    // Adds the pieces of one download of a panel. A piece already kept for that panel (the panel
    // still holds it and was read again) is not added twice. Returns how many were added.
    int keep(qint32 panel, const QList<RecordDownloadCollector::UnreadPiece>& pieces, const QDateTime& at,
             QString* error = nullptr);
    // Every kept piece, newest first; only those of one panel when panel > 0.
    QList<Row> rows(qint32 panel = 0, QString* error = nullptr) const;

    // The reason as it is stored and shown, in Turkish.
    static QString reasonText(RecordDownloadCollector::UnreadReason reason);

private:
    Database& m_db;
};
