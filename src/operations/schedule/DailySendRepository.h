#pragma once

#include <QString>

class Database;

// How the daily scheduled send is made, kept in the station-wide settings row beside the other
// schedule settings: every user, or only the users changed since each panel's last send.
class DailySendRepository
{
public:
    explicit DailySendRepository(Database& db);

    // False (every user) when nothing was chosen or the row cannot be read.
    bool changedOnly(QString* error = nullptr) const;
    bool saveChangedOnly(bool changedOnly, QString* error = nullptr);

    static QString column();

private:
    Database& m_db;
};
