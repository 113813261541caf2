#pragma once

#include <QString>

class Database;

// Makes the kept whereabouts again from every stored passage, with the passage writers held off
// so that nothing stored meanwhile is missed.
class WhereaboutsRepair
{
public:
    // The number of rows made, -1 on failure (error says why).
    static qint64 run(Database& db, QString* error = nullptr);
};
