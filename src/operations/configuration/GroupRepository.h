#pragma once

#include <QList>
#include <QString>

class Database;

// The access groups' master rows: number and name. Which doors a group may pass and when belong
// to the group settings; a new group starts with every rule off.
class GroupRepository
{
public:
    struct Row
    {
        int number = 0;
        QString name; // as stored, blanks included
    };

    explicit GroupRepository(const Database& db);

    // Every group in number order.
    QList<Row> list(QString* error = nullptr) const;
    // Stores a new group. A number in use already is refused: false, with *taken set.
    bool add(const Row& row, QString* error = nullptr, bool* taken = nullptr) const;

private:
    const Database& m_db;
};
