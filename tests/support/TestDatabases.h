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

// The start of a test function run once per engine: skips an engine that is not configured, then
// declares a TestDatabases and a fresh Database with the tables and delivered rows, or fails.
#define KX_OPEN_FRESH_DATABASE(dbs, db)                                                                                \
    QFETCH(int, engine);                                                                                               \
    KX_REQUIRE_ENGINE(TestDatabases::Engine(engine));                                                                  \
    TestDatabases dbs;                                                                                                 \
    Database db;                                                                                                       \
    do {                                                                                                               \
        QString openError;                                                                                             \
        QVERIFY2(dbs.openFresh(TestDatabases::Engine(engine), db, true, &openError), qPrintable(openError));           \
    } while (false)
