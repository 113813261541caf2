#include "support/TestDatabases.h"

#include "store/DatabaseLocation.h"
#include "store/Schema.h"

#include <QCoreApplication>
#include <QTest>

using namespace Qt::StringLiterals;

TestDatabases::TestDatabases()
    : m_dir(std::make_unique<QTemporaryDir>())
{ }

TestDatabases::~TestDatabases()
{
    if (m_serverDatabases.isEmpty())
        return;
    const DatabaseLocation server = DatabaseLocation::parse(serverUrl());
    Database admin;
    if (!admin.open(server.text(), Database::OpenMode::ExistingOnly))
        return;
    for (const QString& name : m_serverDatabases)
        admin.exec(u"DROP DATABASE IF EXISTS "_s + Database::quoted(name) + u" WITH (FORCE)"_s);
}

void TestDatabases::addEngineRows()
{
    QTest::addColumn<int>("engine");
    QTest::newRow("sqlite") << int(SQLite);
    QTest::newRow("postgresql") << int(PostgreSQL);
}

QString TestDatabases::serverUrl()
{
    return qEnvironmentVariable("KX_TEST_PG_URL").trimmed();
}

bool TestDatabases::available(Engine engine)
{
    return engine == SQLite || !serverUrl().isEmpty();
}

QString TestDatabases::skipReason()
{
    return u"PostgreSQL half skipped: KX_TEST_PG_URL is not set (eval \"$(scripts/pg-test-server.sh start)\")"_s;
}

QString TestDatabases::tempPath() const
{
    return m_dir->path();
}

QString TestDatabases::freshLocation(Engine engine, QString* error)
{
    ++m_counter;
    if (engine == SQLite)
        return m_dir->filePath(u"station-"_s + QString::number(m_counter) + u".db"_s);

    const DatabaseLocation server = DatabaseLocation::parse(serverUrl());
    if (server.kind() != DatabaseLocation::Kind::Server) {
        if (error)
            *error = u"KX_TEST_PG_URL is not a PostgreSQL address: "_s + serverUrl();
        return {};
    }
    const QString name
        = u"kx_test_"_s + QString::number(QCoreApplication::applicationPid()) + u'_' + QString::number(m_counter);
    Database admin;
    if (!admin.open(server.text(), Database::OpenMode::ExistingOnly, error))
        return {};
    if (admin.scalar(u"SELECT 1 FROM pg_database WHERE datname = ?"_s, { name }).isValid())
        admin.exec(u"DROP DATABASE "_s + Database::quoted(name) + u" WITH (FORCE)"_s);
    if (!admin.exec(u"CREATE DATABASE "_s + Database::quoted(name), {}, error))
        return {};
    m_serverDatabases << name;
    return server.withDatabaseName(name).text();
}

bool TestDatabases::openFresh(Engine engine, Database& db, bool createSchema, QString* error)
{
    const QString location = freshLocation(engine, error);
    if (location.isEmpty())
        return false;
    if (!db.open(location, Database::OpenMode::CreateIfMissing, error))
        return false;
    return !createSchema || Schema::createMain(db, error);
}
