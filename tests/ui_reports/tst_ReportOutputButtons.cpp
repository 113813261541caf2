// The output buttons of a report window: the spreadsheet, PDF and CSV files hold the report the
// window shows (title, the fields ticked in lstFields, every row, the count), a cancelled file
// choice writes nothing, a failed write says so, and the print preview pages through the rows.

#include "ExportReader.h"
#include "ReportFixture.h"
#include "ReportWindowFixture.h"
#include "ui/common/FileDialog.h"
#include "ui/common/MessageBox.h"
#include "ui/common/ZoneChoiceBox.h"
#include "ui/reports/ReportGridModel.h"
#include "ui/reports/frmGelmeyenFirstLastReports.h"
#include "ui/reports/frmReports.h"

#include <QDateEdit>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QListWidget>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QTest>

using namespace Qt::StringLiterals;
using F = ReportWindowFixture;

namespace {

QStringList texts(const QJsonArray& row)
{
    QStringList list;
    for (const QJsonValue& v : row)
        list.append(v.isDouble() ? QString::number(v.toDouble()) : v.toString());
    return list;
}

// The window on the site's day showing granted passages.
void grantedOnTheDay(const frmReports& w)
{
    F::setChecked(&w, u"chkAllDates"_s, false);
    F::find<QDateEdit>(&w, u"dateStart"_s)->setDate(ReportFixture::day());
    F::setChecked(&w, u"opsAccessResult1"_s, true);
}

// Leaves only these fields ticked.
void keepFields(const QWidget* w, const QStringList& keys)
{
    auto* list = F::find<QListWidget>(w, u"lstFields"_s);
    for (int row = 0; row < list->count(); ++row) {
        QListWidgetItem* item = list->item(row);
        item->setCheckState(keys.contains(item->data(Qt::UserRole).toString()) ? Qt::Checked : Qt::Unchecked);
    }
}

} // namespace

class ReportOutputButtonsTest : public QObject
{
    Q_OBJECT

private slots:
    void spreadsheetHoldsTheChosenFields()
    {
        F site;
        QVERIFY2(site.isReady(), qPrintable(site.error()));
        frmReports w(site.context());
        grantedOnTheDay(w);
        // No report made yet: the button makes it first.
        keepFields(&w, { u"id"_s, u"name"_s, u"direction"_s, u"date"_s });
        const QString path = QDir(site.folder()).filePath(u"granted.xlsx"_s);
        FileDialog::setNextFileName(path);
        MessageBox::clearShownTexts();
        QVERIFY(F::click(&w, u"cmdExportExcel"_s));
        QCOMPARE(F::recordCount(&w), u"5"_s);
        QVERIFY(QFile::exists(path));
        QCOMPARE(MessageBox::lastShownText().section(u'\n', 0, 0), u"Rapor dosyaya yazıldı."_s);

        const QJsonObject sheet = ExportReader::xlsx(path);
        const QJsonArray rows = sheet.value(u"cells"_s).toArray();
        QCOMPARE(sheet.value(u"merged"_s).toArray().first().toString(), u"A1:F1"_s);
        QCOMPARE(rows.at(0).toArray().at(0).toString(), u"Personel Raporu"_s);
        QCOMPARE(texts(rows.at(1).toArray()).mid(0, 4), (QStringList{ u"ID"_s, u"Adı"_s, u"Geçiş"_s, u"Tarih"_s }));
        // Title, captions, five rows, the count.
        QCOMPARE(rows.size(), 8);
        QCOMPARE(texts(rows.at(2).toArray()).mid(0, 4),
                 (QStringList{ u"2"_s, u"Ayşe"_s, u"Giriş"_s, u"2024-03-14 23:59:59"_s }));
        QVERIFY(rows.at(7).toArray().at(0).toString().startsWith(u"Kayıt Sayısı"_s));
        QVERIFY(rows.at(7).toArray().at(0).toString().endsWith(u"5"_s));

        // Once the fields change, the next file follows them without a new report.
        keepFields(&w, { u"card"_s });
        FileDialog::setNextFileName(path);
        QVERIFY(F::click(&w, u"cmdExportExcel"_s));
        QCOMPARE(ExportReader::xlsx(path).value(u"cells"_s).toArray().at(1).toArray().at(0).toString(), u"Kart ID"_s);
    }

    void pdfAndCsvFiles()
    {
        F site;
        QVERIFY2(site.isReady(), qPrintable(site.error()));
        frmReports w(site.context());
        grantedOnTheDay(w);
        QVERIFY(F::click(&w, u"cmdMakeReport"_s));

        // The printed title names the result shown.
        const QString pdf = QDir(site.folder()).filePath(u"granted.pdf"_s);
        FileDialog::setNextFileName(pdf);
        QVERIFY(F::click(&w, u"cmdExportPdf"_s));
        const QString text = ExportReader::pdfText(pdf);
        QVERIFY2(text.contains(u"Personel Raporu - Onaylanan Geçişler"_s), qPrintable(text.left(400)));
        QVERIFY(text.contains(u"Ayşe"_s));
        QVERIFY(text.contains(u"Kayıt Sayısı: 5"_s));

        // A name without an ending gets the format's own.
        keepFields(&w, { u"id"_s, u"plate"_s });
        const QString csvBase = QDir(site.folder()).filePath(u"granted"_s);
        FileDialog::setNextFileName(csvBase);
        QVERIFY(F::click(&w, u"cmdExportCsv"_s));
        QFile csv(csvBase + u".csv"_s);
        QVERIFY(csv.open(QIODevice::ReadOnly));
        const QStringList lines = QString::fromUtf8(csv.readAll()).split(u'\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), 6);
        QCOMPARE(lines.at(0).trimmed(), u"ID,Plaka_Sicil"_s);
        QVERIFY(lines.contains(u"1,34 O'NEIL 1"_s) || lines.contains(u"1,34 O'NEIL 1\r"_s));
    }

    void cancelledOrFailedWrites()
    {
        F site;
        QVERIFY2(site.isReady(), qPrintable(site.error()));
        frmReports w(site.context());
        grantedOnTheDay(w);
        QVERIFY(F::click(&w, u"cmdMakeReport"_s));

        // Cancel: nothing written, nothing said.
        MessageBox::clearShownTexts();
        FileDialog::setNextFileName(QString());
        QVERIFY(F::click(&w, u"cmdExportExcel"_s));
        QVERIFY(MessageBox::shownTexts().isEmpty());
        QVERIFY(QDir(site.folder()).entryList({ u"*.xlsx"_s }).isEmpty());

        // A folder that does not exist: told, and no file left behind.
        const QString path = QDir(site.folder()).filePath(u"missing/folder/report.csv"_s);
        FileDialog::setNextFileName(path);
        QVERIFY(F::click(&w, u"cmdExportCsv"_s));
        QCOMPARE(MessageBox::lastShownText().section(u'\n', 0, 0), u"Rapor dosyaya yazılamadı!"_s);
        QVERIFY(!QFile::exists(path));
    }

    void attendanceSheetNamesTheZone()
    {
        F site;
        QVERIFY2(site.isReady(), qPrintable(site.error()));
        frmGelmeyenFirstLastReports w(site.context());
        F::find<QDateEdit>(&w, u"dateGelmeyen"_s)->setDate(ReportFixture::day());
        QVERIFY(w.zones()->choose(2));
        QVERIFY(F::click(&w, u"cmdMakeReport"_s));
        const QString path = QDir(site.folder()).filePath(u"came.xlsx"_s);
        FileDialog::setNextFileName(path);
        QVERIFY(F::click(&w, u"cmdExportExcel"_s));
        const QJsonArray rows = ExportReader::xlsx(path).value(u"cells"_s).toArray();
        QCOMPARE(rows.at(0).toArray().at(0).toString(), u"Gelen Personel Raporu Global Bölge: Otopark"_s);
        QCOMPARE(rows.size(), 4);
    }

    void printPreviewPagesThroughTheRows()
    {
        F site;
        QVERIFY2(site.isReady(), qPrintable(site.error()));
        QVERIFY2(site.addPassages(400), qPrintable(site.error()));
        frmReports w(site.context());
        w.show();
        grantedOnTheDay(w);
        QVERIFY(F::click(&w, u"cmdMakeReport"_s));
        QCOMPARE(F::recordCount(&w), u"405"_s);
        QVERIFY(F::click(&w, u"cmdPrint"_s));
        auto* preview = w.findChild<QPrintPreviewDialog*>(u"dlgPrintPreview"_s);
        QVERIFY(preview);
        QTRY_VERIFY(preview->isVisible());
        auto* pages = preview->findChild<QPrintPreviewWidget*>();
        QVERIFY(pages);
        // Far more rows than one page holds; the grid itself still holds only its first screen.
        QTRY_VERIFY(pages->pageCount() > 3);
        QCOMPARE(w.model()->rowCount(), ReportGridModel::firstScreen());
        F::screenshot(preview, u"printPreview"_s);
        preview->close();
        QTRY_VERIFY(!w.findChild<QPrintPreviewDialog*>(u"dlgPrintPreview"_s));
    }
};

QTEST_MAIN(ReportOutputButtonsTest)
#include "tst_ReportOutputButtons.moc"
