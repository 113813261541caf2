#pragma once

#include "operations/records/RecordRow.h"

#include <QList>
#include <QString>

class Database;

// The stored passages read back for the record grid: newest first, a page at a time, each with
// the name of the person who passed. PassageStore writes them.
class PassageHistory
{
public:
    struct Entry
    {
        RecordRow record;
        // The visitor's own name for a visitor card's passage whose visit is stored, else the card
        // holder's name; empty for a door operation, whose user column holds an operation code.
        QString name;
    };

    explicit PassageHistory(const Database& db);

    // Up to `count` passages older than row `before` ("Kayit No"), newest first; the newest ones
    // when before is 0.
    QList<Entry> page(qint64 before, int count, QString* error = nullptr) const;

private:
    const Database& m_db;
};
