#pragma once

#include "protocol/DownloadedRecord.h"

#include <QList>
#include <QString>
#include <functional>

class Database;

// Stores the records downloaded from one panel in one transaction: the passages already stored
// (same user, panel and second) are skipped, the user type, visit and global zone are resolved
// from look-ups read once for the whole panel, and the new rows go in with bulk inserts.
//
// Duplicates are counted, not only looked for: a download holding the same user twice in one
// second at a panel that has one such row stored adds the second one. So importing a panel
// twice adds nothing, and two real passages in one second are both kept.
class RecordImport
{
public:
    struct Summary
    {
        int records = 0;
        int added = 0;
        int duplicates = 0;
    };
    // Told now and then while rows are prepared: done of total.
    using Progress = std::function<void(int done, int total)>;

    explicit RecordImport(Database& db);

    // All or nothing: on failure nothing of this panel is stored, and error says why.
    bool store(qint32 panelNumber, const QList<DownloadedRecord>& records, Summary* summary = nullptr,
               QString* error = nullptr, const Progress& progress = {});

private:
    Database& m_db;
};
