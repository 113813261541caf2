#pragma once

#include <QList>
#include <QString>

class Database;

// The access groups' master rows (number and name) for sites built from scripts: the command
// line's checks and texts over GroupRepository.
class CliGroupTable
{
public:
    struct Row
    {
        int number = 0;
        QString name;
    };

    explicit CliGroupTable(Database& db);

    QList<Row> rows(QString* error) const;
    // Refuses a number outside 1..1280 and a number that is taken.
    bool add(const Row& row, QString* error);

private:
    Database& m_db;
};
