#pragma once

#include <QDateTime>
#include <QHash>
#include <QString>
#include <optional>

class Database;

// Where each panel's record memory was last erased, as the highest "Kayit No" of AccessDatas at
// that moment: what a panel holds afterwards is new unless it was stored after that row.
class RecordErasures
{
public:
    explicit RecordErasures(Database& db);

    // The highest "Kayit No" stored so far (0 for an empty table); empty on failure.
    std::optional<qint64> highestRecordNo(QString* error = nullptr) const;
    // Notes that the panel's memory was erased when lastRecordNo was the highest row.
    bool markErased(qint32 panel, qint64 lastRecordNo, const QDateTime& at, QString* error = nullptr);
    // Every panel's mark; panels never erased have none (compare with every row).
    bool load(QHash<qint32, qint64>* marks, QString* error = nullptr) const;

private:
    Database& m_db;
};
