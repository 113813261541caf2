// The door operations, visitor, personnel list, who-is-inside and monthly windows over the small
// site, and the main window's reports menu that opens them.

#include "MainWindowFixture.h"
#include "ReportFixture.h"
#include "ReportWindowFixture.h"
#include "ui/main/frmMain.h"
#include "ui/reports/ReportGridModel.h"
#include "ui/reports/ReportsMenu.h"
#include "ui/reports/frmInOutReport.h"
#include "ui/reports/frmMonthlyView.h"
#include "ui/reports/frmOtherReports.h"
#include "ui/reports/frmPersonnelList.h"
#include "ui/reports/frmReports.h"
#include "ui/reports/frmVisitorReport.h"

#include <QAction>
#include <QDateEdit>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QTest>

using namespace Qt::StringLiterals;
using F = ReportWindowFixture;

class OtherReportWindowsTest : public QObject
{
    Q_OBJECT

private slots:
    void eachWindowMakesItsReport()
    {
        F site;
        QVERIFY2(site.isReady(), qPrintable(site.error()));
        frmOtherReports w(site.context());
        w.show();
        // The backup choice has its own name on this window.
        QVERIFY(w.findChild<QWidget*>(u"frBackupDB"_s));

        // Operations only, whatever else is stored; their texts and who carried each out are the
        // statements' test.
        QVERIFY(F::setChecked(&w, u"chkAllDates"_s, true));
        QCOMPARE(F::made(w, u"id"_s), (QStringList{ u"42"_s, u"6"_s }));

        // Option 1 is the operator's opening, code 6; the panels ticked are passed on too.
        QVERIFY(F::setChecked(&w, u"chkAllOperations"_s, false));
        QVERIFY(F::setChecked(&w, u"opsAccessResult1"_s, true));
        QCOMPARE(F::made(w, u"id"_s), QStringList{ u"6"_s });
        QVERIFY(F::setChecked(&w, u"chkAllStations"_s, false));
        F::tickList(&w, u"lstPanel"_s, { 2 });
        QCOMPARE(w.filter().panels, QList<int>{ 2 });
        F::screenshot(&w, u"frmOtherReports"_s);

        // The visitor's passage on the day.
        frmVisitorReport visitors(site.context());
        F::setChecked(&visitors, u"chkAllDates"_s, false);
        F::find<QDateEdit>(&visitors, u"dateStart"_s)->setDate(ReportFixture::day());
        QCOMPARE(F::made(visitors, u"name"_s), QStringList{ u"Can"_s });
        QVERIFY(F::setChecked(&visitors, u"chkAllPlates"_s, false));
        F::find<QLineEdit>(&visitors, u"txtPlate"_s)->setText(u"06 ZZ"_s);
        QVERIFY(visitors.filter().plate == u"06 ZZ"_s);

        // The personnel list: personnel only, and its person filters.
        frmPersonnelList personnel(site.context());
        QCOMPARE(F::made(personnel, u"id"_s), (QStringList{ u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s }));
        QVERIFY(F::setChecked(&personnel, u"chkAllPlates"_s, false));
        F::find<QLineEdit>(&personnel, u"txtPlate"_s)->setText(u"50%OFF"_s);
        QVERIFY(personnel.filter().plate == u"50%OFF"_s);

        // Inside now: person 2 entered "Ana Bina" last; the others left or were set outside.
        frmInOutReport inside(site.context());
        QCOMPARE(F::made(inside, u"id"_s), QStringList{ u"2"_s });

        // The month: one row per person with granted passages.
        frmMonthlyView month(site.context());
        F::find<QDateEdit>(&month, u"dateMonth"_s)->setDate(ReportFixture::day());
        QCOMPARE(F::made(month, u"id"_s), (QStringList{ u"1"_s, u"2"_s, u"4"_s }));
        F::screenshot(&month, u"frmMonthlyView"_s);
    }

    void reportsMenuOpensEachWindowOnce()
    {
        MainWindowFixture main;
        QVERIFY2(main.ok(), qPrintable(main.error()));
        QString error;
        QVERIFY2(ReportFixture::seed(main.database(), &error), qPrintable(error));
        frmMain& window = main.window();
        auto* menu = window.findChild<QMenu*>(u"mnuReports"_s);

        auto* entry = window.findChild<QAction*>(u"mnuReport_access"_s);
        entry->trigger();
        QCOMPARE(window.findChildren<frmReports*>().size(), 1);
        frmReports* report = window.findChildren<frmReports*>().first();
        QVERIFY(report->isVisible());
        // The main window's panels are offered.
        QCOMPARE(F::find<QListWidget>(report, u"lstPanel"_s)->count(), 3);
        entry->trigger();
        QCOMPARE(window.findChildren<frmReports*>().size(), 1);

        // Every entry opens its window.
        for (QAction* action : menu->actions())
            action->trigger();
        QCOMPARE(window.findChildren<ReportWindow*>().size(), ReportsMenu::entries().size());
        for (ReportWindow* w : window.findChildren<ReportWindow*>()) {
            QVERIFY(F::click(w, u"cmdMakeReport"_s));
            QVERIFY2(w->model()->columnCount() > 0, qPrintable(w->objectName()));
        }

        // Closing one lets it go.
        QVERIFY(F::click(report, u"cmdClose"_s));
        QTRY_COMPARE(window.findChildren<frmReports*>().size(), 0);
    }
};

QTEST_MAIN(OtherReportWindowsTest)
#include "tst_OtherReportWindows.moc"
