#pragma once

#include <QString>

class Database;

// Scope guard: begins a transaction (or a savepoint when one is already open) and rolls it back
// on scope exit unless commit() succeeded.
class Transaction
{
public:
    explicit Transaction(Database& db);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    // False when the transaction could not be begun; error() says why.
    bool isActive() const { return m_active; }
    QString error() const { return m_error; }

    bool commit(QString* error = nullptr);
    void rollback();

private:
    Database& m_db;
    bool m_active = false;
    QString m_error;
};
