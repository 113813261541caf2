#include "store/Transaction.h"

#include "store/Database.h"

Transaction::Transaction(Database& db)
    : m_db(db)
{
    m_active = m_db.beginTransaction(&m_error);
}

Transaction::~Transaction()
{
    rollback();
}

bool Transaction::commit(QString* error)
{
    if (!m_active) {
        if (error)
            *error = m_error.isEmpty() ? QStringLiteral("No transaction is open.") : m_error;
        return false;
    }
    m_active = false;
    if (!m_db.commit(&m_error)) {
        if (error)
            *error = m_error;
        return false;
    }
    return true;
}

void Transaction::rollback()
{
    if (!m_active)
        return;
    m_active = false;
    m_db.rollback();
}
