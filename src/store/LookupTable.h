#pragma once

#include "store/Message.h"

#include <QList>
#include <QString>

class Database;

// One of the three small tables that classify persons: companies, departments, blocks. Rows are
// a number and a name. A new row takes the number the operator typed, or, when none was typed
// (0), the next free number: one above the highest in use.
class LookupTable
{
public:
    enum class Kind
    {
        Companies,
        Departments,
        Blocks
    };

    struct Row
    {
        int key = 0;
        QString name;
        bool operator==(const Row&) const = default;
    };

    struct Result
    {
        bool ok = false;
        int key = 0; // the row's number after the change
        Message message; // for the person when refused or failed
        QString error; // database text, for the log
    };

    explicit LookupTable(Kind kind);

    Kind kind() const { return m_kind; }
    QString tableName() const;
    QString keyColumn() const;
    QString nameColumn() const;
    // Title of the editing form ("Şirket Girişleri", ...) and its object name ("frmSirketler", ...).
    QString formTitle() const;
    QString formName() const;

    // All rows ordered by number.
    QList<Row> rows(const Database& db, QString* error = nullptr) const;
    int nextFreeKey(const Database& db) const;

    Result add(Database& db, const QString& name, int key = 0) const;
    // Renames row oldKey and, when newKey differs, renumbers it.
    Result update(Database& db, int oldKey, int newKey, const QString& name) const;
    Result remove(Database& db, int key) const;

    // Position of the current row after deleting row `deletedRow` when `rowsLeft` remain: the row
    // that followed, or the new last row when the deleted one was last; -1 when none is left.
    static int rowAfterDelete(int deletedRow, int rowsLeft);

private:
    Result failed(bool duplicate, const QString& error) const;

    Kind m_kind;
};
