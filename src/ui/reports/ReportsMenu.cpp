#include "ui/reports/ReportsMenu.h"

#include "reports/ReportCatalogue.h"
#include "store/StationSettings.h"
#include "ui/common/Caption.h"
#include "ui/main/frmMain.h"
#include "ui/reports/ReportContext.h"
#include "ui/reports/frmGelmeyenFirstLastReports.h"
#include "ui/reports/frmInOutReport.h"
#include "ui/reports/frmMonthlyView.h"
#include "ui/reports/frmOtherReports.h"
#include "ui/reports/frmPersonnelList.h"
#include "ui/reports/frmReports.h"
#include "ui/reports/frmVisitorReport.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

using namespace Qt::StringLiterals;

ReportsMenu::ReportsMenu(frmMain* main, Database* db)
    : QObject(main)
    , m_main(main)
    , m_db(db)
{
    setObjectName(u"ReportsMenu"_s);
}

QList<ReportKind> ReportsMenu::entries()
{
    return { ReportKind::Access,    ReportKind::Came,  ReportKind::DoorOperations, ReportKind::Visitors,
             ReportKind::Personnel, ReportKind::InOut, ReportKind::Monthly };
}

ReportsMenu* ReportsMenu::install(frmMain* main, Database* db)
{
    auto* reports = new ReportsMenu(main, db);
    QMenu* menu = main->menuBar()->addMenu(QString());
    menu->setObjectName(u"mnuReports"_s);
    setCaption(menu, u"Raporlar"_s);
    for (ReportKind kind : entries()) {
        QAction* entry = menu->addAction(QString());
        entry->setObjectName(u"mnuReport_"_s + ReportCatalogue::cliName(kind));
        setCaption(entry, ReportCatalogue::formTitle(kind));
        connect(entry, &QAction::triggered, reports, [reports, kind] { reports->open(kind); });
    }
    return reports;
}

ReportWindow* ReportsMenu::open(ReportKind kind)
{
    const QString title = ReportCatalogue::formTitle(kind);
    for (const QPointer<ReportWindow>& window : std::as_const(m_windows)) {
        if (window && Caption::key(window) == title) {
            window->reload();
            window->showNormal();
            window->raise();
            window->activateWindow();
            return window;
        }
    }
    ReportWindow* window = create(kind);
    if (!window)
        return nullptr;
    window->setAttribute(Qt::WA_DeleteOnClose);
    m_windows.removeAll(nullptr);
    m_windows.append(window);
    window->show();
    return window;
}

ReportWindow* ReportsMenu::create(ReportKind kind)
{
    if (!m_db)
        return nullptr;
    const StationSettings settings = m_main->settings();
    ReportContext context;
    context.db = m_db;
    context.clientStation = !settings.isServer();
    context.watchedPanels = settings.watchedPanels();
    context.backupFolder = m_main->folder().backupFolder();
    context.clock = &m_main->clock();
    switch (kind) {
    case ReportKind::Access:
        return new frmReports(context, m_main);
    case ReportKind::Came:
    case ReportKind::NotCome:
    case ReportKind::FirstInLastOut:
        return new frmGelmeyenFirstLastReports(context, m_main);
    case ReportKind::DoorOperations:
        return new frmOtherReports(context, m_main);
    case ReportKind::Visitors:
        return new frmVisitorReport(context, m_main);
    case ReportKind::Personnel:
        return new frmPersonnelList(context, m_main);
    case ReportKind::InOut:
        return new frmInOutReport(context, m_main);
    case ReportKind::Monthly:
        return new frmMonthlyView(context, m_main);
    }
    return nullptr;
}
