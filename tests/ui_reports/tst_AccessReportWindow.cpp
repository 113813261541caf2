// The personnel passage window over the small site: every control reaches the report's filter,
// the count beside the grid agrees, a refused filter empties the grid, the grid reads a big result
// a screen at a time, and a backup database is used or given up.

#include "ReportFixture.h"
#include "ReportWindowFixture.h"
#include "reports/BackupDatabase.h"
#include "reports/ReportBuilder.h"
#include "ui/common/FileDialog.h"
#include "ui/common/MessageBox.h"
#include "ui/common/ZoneChoiceBox.h"
#include "ui/common/frmParameter.h"
#include "ui/reports/ReportGridModel.h"
#include "ui/reports/frmReports.h"
#include "ui/users/PersonFilterBox.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTimeEdit>
#include <QTimer>

using namespace Qt::StringLiterals;
using F = ReportWindowFixture;

namespace {

// The window on the site's day, every other choice left at "all".
void onTheDay(const frmReports& w)
{
    F::setChecked(&w, u"chkAllDates"_s, false);
    F::find<QDateEdit>(&w, u"dateStart"_s)->setDate(ReportFixture::day());
}

} // namespace

class AccessReportWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void filtersReachTheReport()
    {
        F site;
        QVERIFY2(site.isReady(), qPrintable(site.error()));
        frmReports w(site.context());
        w.show();

        // Every personnel record, operation records included; never the visitor's.
        QVERIFY(F::setChecked(&w, u"chkAllDates"_s, true));
        QVERIFY(F::click(&w, u"cmdMakeReport"_s));
        QCOMPARE(F::recordCount(&w), u"11"_s);
        QVERIFY(!F::columnTexts(w.model(), u"card"_s).contains(u"9001"_s));

        // The day in the zone "Ana Bina", newest first; the zone's name fills a column.
        onTheDay(w);
        QVERIFY(w.zones()->choose(1));
        QVERIFY(F::click(&w, u"cmdMakeReport"_s));
        QCOMPARE(F::recordCount(&w), u"6"_s);
        QCOMPARE(F::columnTexts(w.model(), u"date"_s).first(), u"14/03/2024 17:30:00"_s);
        QCOMPARE(F::columnTexts(w.model(), u"zone"_s).first(), u"Ana Bina"_s);

        // Granted passages are shown on their own background.
        const QColor allColour = F::find<QTableView>(&w, u"grdReports"_s)->palette().color(QPalette::Base);
        QVERIFY(F::setChecked(&w, u"opsAccessResult1"_s, true));
        QVERIFY(F::click(&w, u"cmdMakeReport"_s));
        QVERIFY(F::find<QTableView>(&w, u"grdReports"_s)->palette().color(QPalette::Base) != allColour);

        // Every other control reaches the filter the report is made from (what each filter leaves
        // is the statements' test).
        F::setChecked(&w, u"chkTwoHour"_s, true);
        F::find<QTimeEdit>(&w, u"dtHourStart"_s)->setTime(QTime(8, 0));
        F::find<QTimeEdit>(&w, u"dtHourEnd"_s)->setTime(QTime(12, 0));
        F::setChecked(&w, u"chkTwoDate"_s, true);
        F::find<QDateEdit>(&w, u"dateEnd"_s)->setDate(ReportFixture::day().addDays(1));
        F::setChecked(&w, u"chkAllStations"_s, false);
        F::tickList(&w, u"lstPanel"_s, { 2 });
        F::setChecked(&w, u"chkAllReaders"_s, false);
        F::setChecked(&w, u"chkReaders1"_s, true);
        F::setChecked(&w, u"opsAccessResult4"_s, true);
        F::setChecked(&w, u"chkAllTypes"_s, false);
        F::setChecked(&w, u"opsType1"_s, true);
        for (const auto& [all, list, key] :
             { std::tuple(u"chkAllGroups"_s, u"cmbGroups"_s, 2), std::tuple(u"chkAllSirket"_s, u"cmbSirket"_s, 1),
               std::tuple(u"chkAllDepartman"_s, u"cmbDepartman"_s, 2),
               std::tuple(u"chkAllBlocks"_s, u"cmbBlok"_s, 1) }) {
            F::setChecked(&w, all, false);
            auto* combo = F::find<QComboBox>(&w, list);
            combo->setCurrentIndex(combo->findData(key));
        }
        F::setChecked(&w, u"chkAllPlates"_s, false);
        F::find<QLineEdit>(&w, u"txtPlate"_s)->setText(u"34 O'NEIL 1"_s);
        F::setChecked(&w, u"chkAllFlats"_s, false);
        F::find<QLineEdit>(&w, u"txtDaire"_s)->setText(u"5"_s);
        w.persons()->setPerson(4, u"أحمد Çelik"_s);
        const ReportFilter f = w.filter();
        QVERIFY(f.twoHours && f.hourStart == QTime(8, 0) && f.hourEnd == QTime(12, 0));
        QVERIFY(f.twoDates && f.dateEnd == ReportFixture::day().addDays(1));
        QVERIFY(!f.allPanels && f.panels == QList<int>{ 2 });
        QVERIFY(!f.allDoors && f.doors == QList<int>{ 2 });
        QCOMPARE(f.result, ReportFilter::Result::Unknown);
        QCOMPARE(f.direction, ReportFilter::Direction::Exit);
        QVERIFY(f.group == 2 && f.company == 1 && f.department == 2 && f.block == 1);
        QVERIFY(f.plate == u"34 O'NEIL 1"_s && f.flat == u"5"_s);
        QCOMPARE(f.person, 4);
        QCOMPARE(F::find<QLabel>(&w, u"lblPersonel"_s)->text(), u"4"_s);
    }

    void hostilePlateRefusedFlatAndClientPanels()
    {
        F site;
        QVERIFY2(site.isReady(), qPrintable(site.error()));
        frmReports w(site.context());
        onTheDay(w);
        // A plate that would widen the query were it joined into it finds nothing, quietly.
        QVERIFY(F::setChecked(&w, u"chkAllPlates"_s, false));
        F::find<QLineEdit>(&w, u"txtPlate"_s)->setText(u"' OR '1'='1"_s);
        QVERIFY(F::click(&w, u"cmdMakeReport"_s));
        QVERIFY(w.model()->rowCount() == 0 && MessageBox::shownTexts().isEmpty());
        // A flat with letters is refused with a message and leaves the grid empty.
        QVERIFY(F::setChecked(&w, u"chkAllFlats"_s, false));
        F::find<QLineEdit>(&w, u"txtDaire"_s)->setText(u"5a"_s);
        QVERIFY(F::click(&w, u"cmdMakeReport"_s));
        QCOMPARE(MessageBox::lastShownText(), ReportBuilder::flatNotNumberMessage().turkish());
        QCOMPARE(w.model()->rowCount(), 0);
        QCOMPARE(F::recordCount(&w), u"0"_s);

        // A client is offered its watched panels only, and sees their passages only.
        frmReports client(site.clientContext({ 1, 2 }));
        onTheDay(client);
        QCOMPARE(F::find<QListWidget>(&client, u"lstPanel"_s)->count(), 2);
        QVERIFY(F::click(&client, u"cmdMakeReport"_s));
        QCOMPARE(F::recordCount(&client), u"7"_s);
    }

    void personFoundThroughTheSearchDialog()
    {
        F site;
        QVERIFY2(site.isReady(), qPrintable(site.error()));
        frmReports w(site.context());
        onTheDay(w);
        QVERIFY(F::setChecked(&w, u"chkAllPersonel"_s, false));
        // Search by surname.
        F::find<QComboBox>(&w, u"cmbSearchCriter"_s)->setCurrentIndex(3);
        QString searchColumn;
        QTimer::singleShot(0, [&] {
            auto* dialog = qobject_cast<frmParameter*>(QApplication::activeModalWidget());
            if (!dialog)
                return;
            searchColumn = dialog->searchColumn();
            F::find<QLineEdit>(dialog, u"txtSearchText"_s)->setText(u"Yıl"_s);
            F::click(dialog, u"cmdSelect"_s);
        });
        QVERIFY(F::click(&w, u"cmdAra"_s));
        QCOMPARE(searchColumn, u"Soyadi"_s);
        QCOMPARE(F::find<QLabel>(&w, u"lblPersonel"_s)->text(), u"2"_s);
        QCOMPARE(F::find<QLabel>(&w, u"lblPersonelAdi"_s)->text(), u"Ayşe Yılmaz"_s);
        QCOMPARE(w.filter().person, 2);
    }

    void gridAndPrintReadAScreenAtATime()
    {
        F site;
        QVERIFY2(site.isReady(), qPrintable(site.error()));
        QVERIFY2(site.addPassages(400), qPrintable(site.error()));
        frmReports w(site.context());
        w.resize(1100, 760);
        w.show();
        onTheDay(w);
        QVERIFY(F::click(&w, u"cmdMakeReport"_s));
        // The count is the whole report's; the grid holds only the first screen.
        QCOMPARE(F::recordCount(&w), u"409"_s);
        QCOMPARE(w.model()->rowCount(), ReportGridModel::firstScreen());
        // Scrolling to the end reads more.
        F::find<QTableView>(&w, u"grdReports"_s)->scrollToBottom();
        QTRY_VERIFY(w.model()->rowCount() > ReportGridModel::firstScreen());
        // The model keeps to the rules views rely on, also when a new report replaces the rows and
        // when the print preview reads the rest of them to lay them on its pages.
        QAbstractItemModelTester tester(w.model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        QVERIFY(F::click(&w, u"cmdMakeReport"_s));
        QCOMPARE(w.model()->rowCount(), ReportGridModel::firstScreen());
        QVERIFY(F::click(&w, u"cmdPrint"_s));
        auto* preview = w.findChild<QPrintPreviewDialog*>(u"dlgPrintPreview"_s);
        QVERIFY(preview);
        QTRY_VERIFY(preview->isVisible());
        QTRY_VERIFY(preview->findChild<QPrintPreviewWidget*>()->pageCount() > 3);
        QCOMPARE(w.model()->rowCount(), 409);
        F::screenshot(preview, u"printPreview"_s);
        preview->close();
        QTRY_VERIFY(!w.findChild<QPrintPreviewDialog*>(u"dlgPrintPreview"_s));
    }

    void backupDatabaseOrItsFallBack()
    {
        F site;
        QVERIFY2(site.isReady(), qPrintable(site.error()));
        QString error;
        const QString backup = site.makeBackup(&error);
        QVERIFY2(!backup.isEmpty(), qPrintable(error));
        frmReports w(site.context());
        QVERIFY(F::setChecked(&w, u"chkAllDates"_s, true));

        // The file choice is only open while the backup option is chosen; no name is refused.
        QVERIFY(!F::find<QPushButton>(&w, u"cmdSelectDB"_s)->isEnabled());
        QVERIFY(F::setChecked(&w, u"opsDBType1"_s, true));
        FileDialog::setNextFileName(QString());
        QVERIFY(F::click(&w, u"cmdSelectDB"_s));
        QCOMPARE(MessageBox::lastShownText(), BackupDatabase::invalidFileMessage().turkish());

        // A real backup: its records, not the main database's.
        FileDialog::setNextFileName(backup);
        QVERIFY(F::click(&w, u"cmdSelectDB"_s));
        QCOMPARE(F::made(w, u"card"_s), (QStringList{ u"7777"_s }));
        // Going back to the main database does not take the shown report away from the files.
        QVERIFY(F::setChecked(&w, u"opsDBType0"_s, true));
        const QString csv = QDir(site.folder()).filePath(u"from-backup.csv"_s);
        FileDialog::setNextFileName(csv);
        QVERIFY(F::click(&w, u"cmdExportCsv"_s));
        QFile written(csv);
        QVERIFY(written.open(QIODevice::ReadOnly));
        QVERIFY(written.readAll().contains("7777"));
        QVERIFY(F::setChecked(&w, u"opsDBType1"_s, true));

        // A file that is no database (the CSV just written): told so, and the main database is used.
        FileDialog::setNextFileName(csv);
        QVERIFY(F::click(&w, u"cmdSelectDB"_s));
        MessageBox::clearShownTexts();
        QVERIFY(F::click(&w, u"cmdMakeReport"_s));
        QCOMPARE(MessageBox::shownTexts(), QStringList{ BackupDatabase::fallbackMessage().turkish() });
        QCOMPARE(F::recordCount(&w), u"11"_s);
        QVERIFY(F::find<QAbstractButton>(&w, u"opsDBType0"_s)->isChecked());
    }
};

QTEST_MAIN(AccessReportWindowTest)
#include "tst_AccessReportWindow.moc"
