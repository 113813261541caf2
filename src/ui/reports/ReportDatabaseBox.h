#pragma once

#include "reports/BackupDatabase.h"

#include <QGroupBox>

class Database;
class QLabel;
class QPushButton;
class QRadioButton;

// The choice between the main database and a backup copy for a report: opsDBType(0) main,
// opsDBType(1) the file chosen with cmdSelectDB and shown in lblCurrentDB. A backup that cannot
// be opened is given up: the person is told, and the main database is used.
class ReportDatabaseBox : public QGroupBox
{
    Q_OBJECT

public:
    ReportDatabaseBox(const QString& objectName, const QString& backupFolder, QWidget* parent = nullptr);

    // The database the next report reads; shows the fall-back message when the backup fails.
    const Database& choose(const Database& main);

private:
    void selectFile();
    void optionChanged();

    QString m_folder;
    QString m_path;
    // The path m_backup was opened on; empty when closed.
    QString m_openedPath;
    BackupDatabase m_backup;
    QRadioButton* m_main = nullptr;
    QRadioButton* m_copy = nullptr;
    QPushButton* m_select = nullptr;
    QLabel* m_current = nullptr;
};
