#pragma once

#include <QList>
#include <QString>

class Database;

// The code tables delivered with the database, which give numbers their Turkish names: the user
// types, the passage modes, the passage event codes and the time groups' restriction types. The station reads them,
// never edits them.
class CodeTable
{
public:
    enum class Kind
    {
        UserTypes,
        PassageModes,
        EventCodes,
        RestrictionTypes
    };

    struct Row
    {
        int code = 0;
        QString name;
    };

    explicit CodeTable(Kind kind);

    // All rows ordered by code, names as stored.
    QList<Row> rows(const Database& db, QString* error = nullptr) const;

private:
    QString tableName() const;
    QString codeColumn() const;
    QString nameColumn() const;

    Kind m_kind;
};
