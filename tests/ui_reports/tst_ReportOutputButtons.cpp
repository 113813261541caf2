// The output buttons of a report window: the spreadsheet, PDF and CSV files hold the report the
// window shows (the fields ticked in lstFields, every row), a cancelled file choice writes nothing,
// a failed write says so; the window in the three languages.

#include "ExportReader.h"
#include "ReportFixture.h"
#include "ReportWindowFixture.h"
#include "ShippedLanguage.h"
#include "ui/common/FileDialog.h"
#include "ui/common/MessageBox.h"
#include "ui/main/LanguageSwitch.h"
#include "ui/reports/ReportGridModel.h"
#include "ui/reports/frmReports.h"

#include <QDateEdit>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QListWidget>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTimeEdit>

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
    // A test that stopped half-way must not leave the next one in another language.
    void cleanup() { LanguageSwitch::apply(0); }

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
        QCOMPARE(MessageBox::lastShownText().section(u'\n', 0, 0), u"Rapor dosyaya yazıldı."_s);

        // The ticked fields and the five rows shown; the sheet's layout is the exporter's own test.
        const QJsonArray rows = ExportReader::xlsx(path).value(u"cells"_s).toArray();
        QCOMPARE(texts(rows.at(1).toArray()).mid(0, 4), (QStringList{ u"ID"_s, u"Adı"_s, u"Geçiş"_s, u"Tarih"_s }));
        QCOMPARE(rows.size(), 2 + 5 + 1);

        // Once the fields change, the next file follows them without a new report.
        keepFields(&w, { u"card"_s });
        FileDialog::setNextFileName(path);
        QVERIFY(F::click(&w, u"cmdExportExcel"_s));
        QCOMPARE(ExportReader::xlsx(path).value(u"cells"_s).toArray().at(1).toArray().at(0).toString(), u"Kart ID"_s);

        // A name without an ending gets the format's own.
        const QString csvBase = QDir(site.folder()).filePath(u"granted"_s);
        FileDialog::setNextFileName(csvBase);
        QVERIFY(F::click(&w, u"cmdExportCsv"_s));
        QFile csv(csvBase + u".csv"_s);
        QVERIFY(csv.open(QIODevice::ReadOnly));
        QCOMPARE(QString::fromUtf8(csv.readAll()).split(u'\n', Qt::SkipEmptyParts).size(), 1 + 5);

        // Cancelled: nothing written, nothing said. A folder that does not exist: told, no file left.
        MessageBox::clearShownTexts();
        const QStringList before = QDir(site.folder()).entryList(QDir::Files);
        FileDialog::setNextFileName(QString());
        QVERIFY(F::click(&w, u"cmdExportExcel"_s));
        QVERIFY(MessageBox::shownTexts().isEmpty());
        QCOMPARE(QDir(site.folder()).entryList(QDir::Files), before);
        const QString missing = QDir(site.folder()).filePath(u"missing/folder/report.csv"_s);
        FileDialog::setNextFileName(missing);
        QVERIFY(F::click(&w, u"cmdExportCsv"_s));
        QCOMPARE(MessageBox::lastShownText().section(u'\n', 0, 0), u"Rapor dosyaya yazılamadı!"_s);
        QVERIFY(!QFile::exists(missing));
    }

    void filesHoldTheRowsShownWithTheirResults()
    {
        F site;
        QVERIFY2(site.isReady(), qPrintable(site.error()));
        ShippedLanguage shipped;
        QVERIFY2(shipped.isReady(), qPrintable(shipped.error()));
        LanguageSwitch::apply(1);
        QString error;

        frmReports w(site.context());
        w.show();
        F::setChecked(&w, u"chkAllDates"_s, false);
        F::find<QDateEdit>(&w, u"dateStart"_s)->setDate(ReportFixture::day());
        keepFields(&w, { u"card"_s, u"direction"_s, u"result"_s, u"date"_s });
        QVERIFY(F::click(&w, u"cmdMakeReport"_s));
        // Title, buttons, the grid's headers and the fields offered for export follow the language.
        QCOMPARE(w.windowTitle(), u"User Reports"_s);
        QCOMPARE(F::find<QPushButton>(&w, u"cmdMakeReport"_s)->text(), u"Make Report"_s);
        const int date = F::columnOf(w.model(), u"date"_s);
        QCOMPARE(w.model()->headerData(date, Qt::Horizontal).toString(), u"Date"_s);
        QCOMPARE(F::find<QListWidget>(&w, u"lstFields"_s)->item(date)->text(), u"Date"_s);
        // Each passage's result beside its direction, both in the chosen language.
        const QStringList cards = F::columnTexts(w.model(), u"card"_s);
        const QStringList results = F::columnTexts(w.model(), u"result"_s);
        const QStringList directions = F::columnTexts(w.model(), u"direction"_s);
        QCOMPARE(results.at(cards.indexOf(u"1005"_s)), u"Passage Denied"_s);
        QCOMPARE(directions.at(cards.indexOf(u"1004"_s)), u"Exit"_s);

        // A passage stored after the report was made is not in the files written from it.
        QVERIFY(ReportFixture::addRecords(
            site.db(), { { 1, 1, 1, 3, 1003, ReportFixture::at(0, 14, 0, 0), 0, 2, 0, 0 } }, &error));
        const QString csvPath = QDir(site.folder()).filePath(u"shown.csv"_s);
        FileDialog::setNextFileName(csvPath);
        QVERIFY(F::click(&w, u"cmdExportCsv"_s));
        QFile csv(csvPath);
        QVERIFY(csv.open(QIODevice::ReadOnly));
        const QString csvText = QString::fromUtf8(csv.readAll());
        QCOMPARE(csvText.split(u'\n', Qt::SkipEmptyParts).size(), 1 + 9);
        QVERIFY(!csvText.contains(u"1003"_s));
        QVERIFY(csvText.contains(u"1005,Entry,Passage Denied,"_s));

        // Arabic: dates keep their order in the right-to-left grid and the hour pickers read
        // left to right.
        LanguageSwitch::apply(2);
        QVERIFY(F::click(&w, u"cmdMakeReport"_s));
        QCOMPARE(w.model()->index(0, date).data().toString(), QChar(0x2066) + u"14/03/2024 23:59:59"_s + QChar(0x2069));
        QCOMPARE(F::find<QTimeEdit>(&w, u"dtHourEnd"_s)->layoutDirection(), Qt::LeftToRight);
        QCOMPARE(F::columnTexts(w.model(), u"direction"_s).first(), QChar(0x2068) + u"دخول"_s + QChar(0x2069));
        const QString arabicPdf = QDir(site.folder()).filePath(u"shown-ar.pdf"_s);
        FileDialog::setNextFileName(arabicPdf);
        QVERIFY(F::click(&w, u"cmdExportPdf"_s));
        QVERIFY(ExportReader::pdfText(arabicPdf).contains(u"14/03/2024 23:59:59"_s));
        F::screenshot(&w, u"frmReports-results-ar"_s);
        LanguageSwitch::apply(1);
        F::screenshot(&w, u"frmReports-results-en"_s);
        LanguageSwitch::apply(0);
        F::screenshot(&w, u"frmReports-results-tr"_s);
        QCOMPARE(F::find<QListWidget>(&w, u"lstFields"_s)->item(date)->text(), u"Tarih"_s);
        QCOMPARE(w.windowTitle(), u"Personel Raporları"_s);
    }
};

QTEST_MAIN(ReportOutputButtonsTest)
#include "tst_ReportOutputButtons.moc"
