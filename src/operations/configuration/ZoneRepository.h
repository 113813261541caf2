#pragma once

#include <QList>
#include <QString>

class Database;

// The site's global zones: number and name. Each panel maps its two local zones to them.
class ZoneRepository
{
public:
    struct Row
    {
        int number = 0;
        QString name;
    };

    explicit ZoneRepository(const Database& db);

    // Every global zone in number order.
    QList<Row> list(QString* error = nullptr) const;

private:
    const Database& m_db;
};
