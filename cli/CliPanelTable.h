#pragma once

#include "store/Message.h"

#include <QString>

class Database;

// Adding rows to the panel list by hand, for sites built from scripts: the command
// line's checks and texts over PanelRepository.
class CliPanelTable
{
public:
    struct NewPanel
    {
        int number = 0; // 1..64
        int serial = 0; // 1..0xFFFF
        QString ip; // IPv4 "a.b.c.d"
        int port = 0; // 1..65535
        QString name;
        int order = 0; // list position ("Sira No"); 0: after the last
    };

    explicit CliPanelTable(Database& db);

    // Refuses a number outside 1..64, a serial of 0, a bad address or port, and a number that is
    // in the list already; error holds the reason.
    bool add(const NewPanel& panel, QString* error);

private:
    Database& m_db;
};
