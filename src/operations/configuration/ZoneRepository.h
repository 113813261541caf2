#pragma once

#include "store/Message.h"

#include <QList>
#include <QString>

class Database;

// The site's global zones: number and name. Each panel maps its two local zones to them, and the
// access groups name them for their doors and counts.
//
// Zone numbers are kept to 1..64, the range a panel's local zones can point at: a zone above it
// could never hold a door. A zone still named by a panel in use or by an access group is not
// deleted, so nothing sent to the panels points at a zone that is gone.
class ZoneRepository
{
public:
    static constexpr int FirstNumber = 1;
    static constexpr int LastNumber = 64;

    struct Row
    {
        int number = 0;
        QString name;
        bool operator==(const Row&) const = default;
    };

    // What keeps a zone from being deleted.
    struct Usage
    {
        QList<int> panels; // panels in use that map a local zone to it
        QList<int> groups; // access groups whose doors or counts name it
        bool isEmpty() const { return panels.isEmpty() && groups.isEmpty(); }
    };

    struct Result
    {
        bool ok = false;
        int number = 0; // the zone concerned (on a refusal, the refused one)
        Message message; // for the person when refused or failed
        QString error; // database text, for the log
    };

    // Reading only (the pickers and reports); the changes need the other constructor.
    explicit ZoneRepository(const Database& db);
    explicit ZoneRepository(Database& db);

    // Every global zone in number order.
    QList<Row> list(QString* error = nullptr) const;
    // The lowest number of 1..64 neither stored nor in alsoTaken; 0 when none is left.
    int nextFreeNumber(const QList<int>& alsoTaken = {}, QString* error = nullptr) const;
    Usage usage(int number, QString* error = nullptr) const;

    // A new zone. Without a number (0) it takes the lowest free one.
    Result add(const Row& row) const;
    Result rename(int number, const QString& name) const;
    // Refused while the zone is in use (see usage()).
    Result remove(int number) const;
    // Renames and additions of one editing session together: all stored, or none.
    Result store(const QList<Row>& renamed, const QList<Row>& added) const;

    // The question asked before a zone is deleted.
    static Message deleteQuestion(int number);
    // The refusal for a zone in use, naming what uses it.
    static Message inUseMessage(int number, const Usage& usage);

private:
    Result addRow(const Row& row) const;
    Result renameRow(int number, const QString& name) const;
    bool exists(int number, QString* error) const;

    const Database& m_db;
    // Null for a reading-only repository.
    Database* m_writable = nullptr;
};
