#pragma once

#include <QList>
#include <QString>

class Database;

// Rows of the panel list for choice lists and for lists built by hand. The roster (PanelRoster)
// reads the full settings of every panel; this reads and writes only what identifies a panel.
class PanelRepository
{
public:
    struct Name
    {
        int number = 0;
        QString name; // as stored, blanks included
    };

    struct NewPanel
    {
        int number = 0;
        int serial = 0;
        quint32 ipv4 = 0; // the address as one number, the first part in the high byte
        int port = 0;
        QString name;
        int order = 0; // list position ("Sira No"); 0: after the last
    };

    struct Door
    {
        int panelNumber = 0;
        int door = 0; // 1..4
        QString name;
        bool active = false;
    };

    explicit PanelRepository(const Database& db);

    // Every panel's number and name in list order (then by number).
    QList<Name> names(QString* error = nullptr) const;
    // Stores a new row with the panel's identity and address; every other setting keeps its column
    // default. A number in the list already is refused: false, with *taken set.
    bool add(const NewPanel& panel, QString* error = nullptr, bool* taken = nullptr) const;
    // The four doors of every panel in use (serial at least 1), in list order.
    QList<Door> doors(QString* error = nullptr) const;
    // Removes the panel's row; false with *missing set when there is none.
    bool remove(int number, QString* error = nullptr, bool* missing = nullptr) const;

private:
    const Database& m_db;
};
