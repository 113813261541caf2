#pragma once

#include <QHash>
#include <QList>
#include <QString>

class Database;

// A person's name as lists and grids show it: first name, a blank, last name, with the blanks
// the columns may carry trimmed away.
class PersonName
{
public:
    static QString join(const QString& first, const QString& last);

    // The joined names of the rows of `table` (people or visits) whose `keyColumn` is one of
    // `keys`, in one statement; keys without a row are left out.
    static QHash<qint64, QString> namesByKey(const Database& db, const QString& table, const QString& keyColumn,
                                             const QList<qint64>& keys, QString* error = nullptr);
};
