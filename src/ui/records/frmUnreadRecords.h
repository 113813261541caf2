#pragma once

#include <QDialog>

class Database;
class QTableWidget;

// "Okunamayan Kayıtlar": what record downloads brought that could not be stored as passages
// (stray bytes, damaged records, records without a user), newest first, with the panel, when it
// came, why it was kept apart and its text. Read only: the pieces stay for whoever judges them.
class frmUnreadRecords : public QDialog
{
    Q_OBJECT

public:
    explicit frmUnreadRecords(Database& db, QWidget* parent = nullptr);

    // Reads the pieces again; the number shown.
    int reload();

protected:
    void changeEvent(QEvent* event) override;

private:
    void setHeaders();

    Database& m_db;
    QTableWidget* m_table = nullptr;
};
