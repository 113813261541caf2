#pragma once

#include "reports/ReportKind.h"

#include <QList>
#include <QObject>
#include <QPointer>

class Database;
class QMenu;
class ReportWindow;
class frmMain;

// The main window's reports menu: one entry per report window. A window already open is brought
// to the front instead of being opened twice.
class ReportsMenu : public QObject
{
    Q_OBJECT

public:
    // Adds the menu to the main window's menu bar; the windows read db (none open without one).
    static ReportsMenu* install(frmMain* main, Database* db);

    // Opens (or raises) the window of a report.
    ReportWindow* open(ReportKind kind);
    // The kinds that have an entry of their own (the attendance window covers three reports).
    static QList<ReportKind> entries();

private:
    ReportsMenu(frmMain* main, Database* db);
    ReportWindow* create(ReportKind kind);

    frmMain* m_main = nullptr;
    Database* m_db = nullptr;
    QList<QPointer<ReportWindow>> m_windows;
};
