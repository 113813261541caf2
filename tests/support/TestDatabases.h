#pragma once

#include "store/Database.h"

#include <QStringList>
#include <QTemporaryDir>
#include <memory>

// Fresh databases for store tests: a SQLite file in a temporary folder, and, when KX_TEST_PG_URL
// names a PostgreSQL server, a new database on that server (dropped again by the destructor).
// Close every Database opened on a location before this object goes.
class TestDatabases
{
public:
    enum Engine
    {
        SQLite = 0,
        PostgreSQL = 1
    };

    TestDatabases();
    ~TestDatabases();
    TestDatabases(const TestDatabases&) = delete;
    TestDatabases& operator=(const TestDatabases&) = delete;

    // Adds an "engine" column and one data row per engine ("sqlite", "postgresql").
    static void addEngineRows();
    static QString serverUrl();
    static bool available(Engine engine);
    static QString skipReason();

    // Where a fresh database can be made: SQLite, a path that does not exist yet; PostgreSQL,
    // the address of a newly created empty database.
    QString freshLocation(Engine engine, QString* error = nullptr);
    // A fresh database opened (and, with createSchema, holding the tables and delivered rows).
    bool openFresh(Engine engine, Database& db, bool createSchema = true, QString* error = nullptr);

    QString tempPath() const;

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    QStringList m_serverDatabases;
    int m_counter = 0;
};

// Skips the current test function when its engine is not configured.
#define KX_REQUIRE_ENGINE(engine)                                                                                      \
    do {                                                                                                               \
        if (!TestDatabases::available(engine))                                                                         \
            QSKIP(qPrintable(TestDatabases::skipReason()));                                                            \
    } while (false)
