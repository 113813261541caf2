// The attendance window over the small site: who came on the day, who did not, and first and
// last passages; the day's edges, the zone and the person filters; the fields offered follow
// the chosen report.

#include "ReportFixture.h"
#include "ReportWindowFixture.h"
#include "ui/common/ZoneChoiceBox.h"
#include "ui/reports/ReportGridModel.h"
#include "ui/reports/frmGelmeyenFirstLastReports.h"

#include <QComboBox>
#include <QDateEdit>
#include <QListWidget>
#include <QTest>

using namespace Qt::StringLiterals;
using F = ReportWindowFixture;

namespace {

QStringList fieldKeys(const QWidget* w)
{
    QStringList keys;
    auto* list = F::find<QListWidget>(w, u"lstFields"_s);
    for (int row = 0; row < list->count(); ++row)
        keys.append(list->item(row)->data(Qt::UserRole).toString());
    return keys;
}

} // namespace

class AttendanceWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void reportsAndTheirFilters()
    {
        F site;
        QVERIFY2(site.isReady(), qPrintable(site.error()));
        frmGelmeyenFirstLastReports w(site.context());
        w.show();
        F::find<QDateEdit>(&w, u"dateGelmeyen"_s)->setDate(ReportFixture::day());

        // Came: a granted entry between 00:00:01 and 23:59:59. The midnight entry, an exit alone,
        // a denied request and the next day's entry do not count.
        QVERIFY(F::setChecked(&w, u"opsReportType0"_s, true));
        QCOMPARE(w.kind(), ReportKind::Came);
        QCOMPARE(F::made(w, u"id"_s), QStringList{ u"2"_s });

        // Did not come: everyone else with a number, the visitor card included.
        QVERIFY(F::setChecked(&w, u"opsReportType1"_s, true));
        QCOMPARE(F::made(w, u"id"_s), (QStringList{ u"1"_s, u"3"_s, u"4"_s, u"5"_s, u"6"_s }));

        // First and last granted passage, either direction (their times are the statements' test).
        QVERIFY(F::setChecked(&w, u"opsReportType2"_s, true));
        QVERIFY(fieldKeys(&w).contains(u"first"_s));
        QCOMPARE(F::made(w, u"id"_s), (QStringList{ u"1"_s, u"2"_s, u"4"_s }));
        F::screenshot(&w, u"frmGelmeyenFirstLastReports"_s);

        // The zone and the person filters reach the report: "Otopark" holds the door person 2 came
        // through, and group "Yönetim" is person 2 alone.
        QVERIFY(w.zones()->choose(2));
        QVERIFY(F::setChecked(&w, u"chkAllGroups"_s, false));
        auto* groups = F::find<QComboBox>(&w, u"cmbGroups"_s);
        groups->setCurrentIndex(groups->findData(2));
        QCOMPARE(F::made(w, u"zone"_s), QStringList{ u"Otopark"_s });
        QCOMPARE(w.filter().group, 2);
    }
};

QTEST_MAIN(AttendanceWindowTest)
#include "tst_AttendanceWindow.moc"
