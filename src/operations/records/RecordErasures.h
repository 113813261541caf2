#pragma once

#include <QDateTime>
#include <QHash>
#include <QString>
#include <optional>

class Database;

// Where each panel's record memory was last erased, as the highest row numbers of AccessDatas
// and UnreadRecords at that moment: what a panel holds afterwards is new unless it was stored
// after those rows.
class RecordErasures
{
public:
    struct Mark
    {
        qint64 lastPassage = 0; // AccessDatas."Kayit No"
        qint64 lastUnread = 0; // UnreadRecords."Kayit No"
    };

    explicit RecordErasures(Database& db);

    // The highest row numbers stored so far (0 for empty tables); empty on failure.
    std::optional<Mark> current(QString* error = nullptr) const;
    // Notes that the panel's memory was erased at this mark.
    bool markErased(qint32 panel, const Mark& mark, const QDateTime& at, QString* error = nullptr);
    // The panel's mark; a panel never erased has the zero mark (compare with every row).
    bool load(qint32 panel, Mark* mark, QString* error = nullptr) const;
    // Every panel's mark.
    bool loadAll(QHash<qint32, Mark>* marks, QString* error = nullptr) const;

private:
    Database& m_db;
};
