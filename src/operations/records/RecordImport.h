#pragma once

#include "protocol/DownloadedRecord.h"

#include <QList>
#include <QString>
#include <functional>

class Database;

// Stores the records downloaded from one panel, in one transaction, through the passage store:
// the passages already stored are skipped (see PassageStore for the rule), the user type, visit
// and zones are resolved, and the new rows go in with bulk inserts.
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
