#pragma once

#include <QTableWidget>

class Database;
class PanelRoster;

// The doors of every panel in use: panel, door, name and whether the door is in use ("Evet" /
// "Hayır"). Built again whenever the panel list is reloaded, so a stored panel shows at once.
class PanelDoorList : public QTableWidget
{
    Q_OBJECT

public:
    PanelDoorList(const Database& db, PanelRoster& roster, QWidget* parent = nullptr);

    void fill();
    void retranslate();

private:
    const Database& m_db;
};
