// What the reports write, read back with independent readers: the .xlsx with openpyxl, the PDF
// with pdftotext, the CSV as text; and the failure paths of writing and of a backup database.

#include "ExportReader.h"
#include "ReportFixture.h"
#include "reports/BackupDatabase.h"
#include "reports/CsvWriter.h"
#include "reports/ReportBuilder.h"
#include "reports/ReportExport.h"
#include "reports/ReportRowSource.h"
#include "store/Clock.h"
#include "support/TestDatabases.h"

#include <QBuffer>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// A device that accepts a number of bytes and then fails, as a full disk does.
class FailingDevice : public QIODevice
{
public:
    explicit FailingDevice(qint64 budget)
        : m_budget(budget)
    {
        open(QIODevice::WriteOnly);
        setErrorString(u"No space left on device"_s);
    }

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char*, qint64 size) override
    {
        if (m_budget < size)
            return -1;
        m_budget -= size;
        return size;
    }

private:
    qint64 m_budget;
};

} // namespace

class ReportOutputTest : public QObject
{
    Q_OBJECT

private:
    TestDatabases m_dbs;
    Database m_db;
    QTemporaryDir m_out;
    // The station's clock when the reports are made.
    ManualClock m_clock{ QDateTime(QDate(2019, 7, 2), QTime(14, 3, 9)) };

    ReportExport::Outcome exportTo(ReportKind kind, const ReportFilter& f, ReportExport::Format format,
                                   const QString& path)
    {
        return ReportExport::run(m_db, kind, f, format, path, m_clock.now());
    }

private slots:
    void initTestCase()
    {
        QString error;
        QVERIFY2(m_dbs.openFresh(TestDatabases::SQLite, m_db, true, &error), qPrintable(error));
        QVERIFY2(ReportFixture::seed(m_db, &error), qPrintable(error));
    }

    void cleanupTestCase() { m_db.close(); }

    void spreadsheetHasTitleHeadersDatesAndCount()
    {
        const QString path = m_out.filePath(u"access.xlsx"_s);
        ReportFilter f = ReportFixture::oneDay();
        f.zone = 2;
        const ReportExport::Outcome out = exportTo(ReportKind::Access, f, ReportExport::Format::Xlsx, path);
        QVERIFY2(out.ok, qPrintable(out.error));
        QCOMPARE(out.rows, 2);
        const QJsonObject book = ExportReader::xlsx(path);
        QCOMPARE(book.value(u"merged"_s).toArray().first().toString(), u"A1:F1"_s);
        const QJsonArray cells = book.value(u"cells"_s).toArray();
        QCOMPARE(cells.at(0).toArray().at(0).toString(), u"Personel Raporu Global Bölge: Otopark"_s);
        const QJsonArray header = cells.at(1).toArray();
        QCOMPARE(header.size(), 17);
        QCOMPARE(header.at(16).toString(), u"Global Bölge Adı"_s);
        const QJsonArray first = cells.at(2).toArray();
        QCOMPARE(first.at(2).toString(), u"Ayşe"_s);
        QCOMPARE(first.at(15).toString(), u"2024-03-14 23:59:59"_s);
        QCOMPARE(first.at(16).toString(), u"Otopark"_s);
        QCOMPARE(book.value(u"formats"_s).toObject().value(u"P3"_s).toString(), u"dd/mm/yyyy hh:mm:ss"_s);
        QCOMPARE(cells.at(4).toArray().at(0).toString(), u"Kayıt Sayısı:2"_s);
        QCOMPARE(cells.size(), 5);
        // The attendance reports name their zone the same way; door operations have a title of their own.
        const auto sheetTitle = [&](ReportKind kind, const ReportFilter& filter) {
            return ReportExport::document(kind, filter, ReportBuilder::build(m_db, kind, filter), m_clock.now())
                .sheetTitle;
        };
        ReportFilter came;
        came.day = ReportFixture::day();
        came.zone = 2;
        QCOMPARE(sheetTitle(ReportKind::Came, came), u"Gelen Personel Raporu Global Bölge: Otopark"_s);
        QCOMPARE(sheetTitle(ReportKind::DoorOperations, ReportFixture::oneDay()), u"Diğer Geçiş Raporu"_s);
    }

    void spreadsheetKeepsAnyText()
    {
        // Markup characters, blanks at the ends, letters beyond two bytes and a control character
        // (which a workbook cannot hold and is left out) all come back as the reader sees text.
        QString error;
        const QString first = u"  Ayşe & <Ali> \"x\" 'y' 😀"_s;
        const QString last = u"أحمد\u0001Öz "_s;
        QVERIFY2(m_db.insertRows(u"Users"_s, { u"ID"_s, u"Kart ID"_s, u"Adi"_s, u"Soyadi"_s, u"Kullanici Tipi"_s },
                                 { { 99, 9999, first, last, 0 } }, &error),
                 qPrintable(error));
        ReportFilter f;
        f.person = 99;
        const QString path = m_out.filePath(u"text.xlsx"_s);
        const ReportExport::Outcome out = exportTo(ReportKind::Personnel, f, ReportExport::Format::Xlsx, path);
        QVERIFY2(out.ok, qPrintable(out.error));
        const QJsonArray cells = ExportReader::xlsx(path).value(u"cells"_s).toArray();
        QCOMPARE(cells.size(), 4);
        const QJsonArray row = cells.at(2).toArray();
        QCOMPARE(row.at(0).toInt(), 99);
        QCOMPARE(row.at(2).toString(), first);
        QCOMPARE(row.at(3).toString(), u"أحمدÖz "_s);
        QVERIFY(m_db.exec(u"DELETE FROM \"Users\" WHERE \"ID\" = 99"_s));
    }

    void emptyAndRefusedReports()
    {
        // An empty result is still a workbook with its title, captions and a count of 0.
        const QString path = m_out.filePath(u"empty.xlsx"_s);
        ReportFilter f = ReportFixture::oneDay();
        f.allPanels = false;
        QVERIFY(exportTo(ReportKind::Access, f, ReportExport::Format::Xlsx, path).ok);
        const QJsonArray cells = ExportReader::xlsx(path).value(u"cells"_s).toArray();
        QCOMPARE(cells.size(), 3);
        QCOMPARE(cells.at(2).toArray().at(0).toString(), u"Kayıt Sayısı:0"_s);
        // A refused filter writes nothing and says why.
        f = ReportFixture::oneDay();
        f.flat = u"12B"_s;
        const QString refusedPath = m_out.filePath(u"refused.xlsx"_s);
        const ReportExport::Outcome out = exportTo(ReportKind::Access, f, ReportExport::Format::Xlsx, refusedPath);
        QVERIFY(!out.ok);
        QCOMPARE(out.refusal, ReportBuilder::flatNotNumberMessage());
        QVERIFY(!QFile::exists(refusedPath));
    }

    void printedPagesKeepValuesWholeAndCountTheLastPage()
    {
        // Every column of the access report, long names and ten-digit cards: too wide for the
        // page at the usual print size.
        ReportFilter f = ReportFixture::oneDay();
        f.result = ReportFilter::Result::Granted;
        const ReportStatement st = ReportBuilder::build(m_db, ReportKind::Access, f);
        const ReportDocument doc = ReportExport::document(ReportKind::Access, f, st, m_clock.now());
        const auto rows = [&](int count) {
            QList<QVariantList> list;
            for (int i = 0; i < count; ++i) {
                QVariantList row;
                for (const ReportColumn& c : st.columns) {
                    if (c.type == ReportColumn::Type::DateTime)
                        row << QDateTime(QDate(2024, 3, 14), QTime(23, 59, 59), Qt::UTC);
                    else if (c.type == ReportColumn::Type::Integer)
                        row << QVariant(c.key == u"card"_s ? 4294967290LL : qint64(20000));
                    else
                        row << u"UzunİsimliŞirketVeDepartmanAdı"_s;
                }
                list << row;
            }
            return list;
        };
        const auto pdfPages = [&](int count) {
            ReportDocument d = doc;
            d.expectedRows = count;
            ReportRowSource source;
            source.openRows(st, rows(count));
            const QString path = m_out.filePath(u"whole.pdf"_s);
            const ReportExport::Outcome out = ReportExport::write(ReportExport::Format::Pdf, source, d, path);
            [&] { QVERIFY2(out.ok, qPrintable(out.error)); }();
            if (qEnvironmentVariableIsSet("KX_SCREENSHOT_DIR"))
                QFile::copy(path,
                            qEnvironmentVariable("KX_SCREENSHOT_DIR") + u"/whole-"_s + QString::number(count)
                                + u".pdf"_s);
            return ExportReader::pdfText(path).split(u'\f', Qt::SkipEmptyParts);
        };
        // How many rows a page holds at this layout.
        const QStringList probe = pdfPages(200);
        const int perPage = int(probe.first().count(u"14/03/2024 23:59:59"_s));
        QVERIFY(perPage > 5 && perPage < 200);

        // Exactly two pages of rows: the count goes on the second page; title, captions, the moment
        // it was made and "n / 2" on both.
        for (const int count : { 2 * perPage, 2 * perPage - 1 }) {
            const QStringList pages = pdfPages(count);
            QCOMPARE(pages.size(), 2);
            const QString text = pages.join(QString());
            for (int i = 0; i < pages.size(); ++i) {
                const QString& page = pages.at(i);
                QVERIFY2(page.contains(u"Sayfa "_s + QString::number(i + 1) + u" / 2"_s)
                             && page.contains(u"Personel Raporu - Onaylanan Geçişler"_s)
                             && page.contains(u"02/07/2019 14:03:09"_s) && page.contains(u"Soyadı"_s),
                         qPrintable(page));
            }
            QVERIFY(pages.last().contains(u"Kayıt Sayısı: "_s + QString::number(count)));
            // No date loses its seconds, no card or ID a digit.
            QCOMPARE(int(text.count(u"14/03/2024 23:59:59"_s)), count);
            QCOMPARE(int(text.count(u"4294967290"_s)), count);
            QVERIFY(int(text.count(u"20000"_s)) >= count);
        }

        // An Arabic name comes out as its letters (the reader gives them in shaped forms: fold them back).
        ReportFilter arabic = ReportFixture::oneDay();
        arabic.person = 4;
        const QString path = m_out.filePath(u"arabic.pdf"_s);
        QVERIFY(exportTo(ReportKind::Access, arabic, ReportExport::Format::Pdf, path).ok);
        QString letters = ExportReader::pdfText(path).normalized(QString::NormalizationForm_KC);
        QVERIFY(letters.remove(QChar(0x202B)).remove(QChar(0x202C)).contains(u"أحمد"_s));
    }

    void csvIsUtf8WithHeaderAndQuoting()
    {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        ReportFilter f;
        f.plate = u"34 O'NEIL 1"_s;
        const ReportStatement st = ReportBuilder::build(m_db, ReportKind::Personnel, f);
        ReportRowSource source;
        QVERIFY(source.open(m_db, st));
        const ReportExport::Outcome out
            = ReportExport::write(ReportExport::Format::Csv, source,
                                  ReportExport::document(ReportKind::Personnel, f, st, m_clock.now()), &buffer);
        QVERIFY2(out.ok, qPrintable(out.error));
        const QByteArray bytes = buffer.data();
        QVERIFY(bytes.startsWith("\xEF\xBB\xBF"));
        const QStringList lines = QString::fromUtf8(bytes.mid(3)).split(u"\r\n"_s, Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), 2);
        QCOMPARE(lines.at(0), u"ID,Kart ID,Adı,Soyadı,TCKimlik,Şirket,Departman,Plaka_Sicil,Blok,Daire,Grup Adı"_s);
        QCOMPARE(lines.at(1), u"1,1001,Ali,Veli,,Acme,Muhasebe,34 O'NEIL 1,A Blok,5,Genel"_s);
        QCOMPARE(CsvWriter::field(u"a,\"b\""_s), u"\"a,\"\"b\"\"\""_s);
        // Nothing a spreadsheet would run as a formula.
        QCOMPARE(CsvWriter::field(u"=HYPERLINK(\"http://x\")"_s), u"\"'=HYPERLINK(\"\"http://x\"\")\""_s);
        for (const QString& start : { u"+"_s, u"-"_s, u"@"_s })
            QCOMPARE(CsvWriter::field(start + u"1"_s), u"'"_s + start + u"1"_s);
        QCOMPARE(CsvWriter::field(u"a=b"_s), u"a=b"_s);
    }

    void writeFailuresAreReported_data()
    {
        QTest::addColumn<int>("format");
        QTest::newRow("xlsx") << int(ReportExport::Format::Xlsx);
        QTest::newRow("csv") << int(ReportExport::Format::Csv);
        QTest::newRow("pdf") << int(ReportExport::Format::Pdf);
    }

    void writeFailuresAreReported()
    {
        QFETCH(int, format);
        const ReportFilter f = ReportFixture::oneDay();
        const ReportStatement st = ReportBuilder::build(m_db, ReportKind::Access, f);
        const ReportDocument doc = ReportExport::document(ReportKind::Access, f, st, m_clock.now());
        // The device fails after a few bytes.
        ReportRowSource source;
        QVERIFY(source.open(m_db, st));
        FailingDevice device(100);
        ReportExport::Outcome out = ReportExport::write(ReportExport::Format(format), source, doc, &device);
        QVERIFY(!out.ok);
        QVERIFY2(out.error.contains(u"No space left on device"_s), qPrintable(out.error));
        // A folder that does not exist: a clear error and no file.
        ReportRowSource again;
        QVERIFY(again.open(m_db, st));
        const QString missing = m_out.filePath(u"no/such/folder/report.out"_s);
        out = ReportExport::write(ReportExport::Format(format), again, doc, missing);
        QVERIFY(!out.ok);
        QVERIFY2(out.error.contains(missing), qPrintable(out.error));
    }

    void backupThatIsNotADatabaseFallsBack()
    {
        const QString junk = m_out.filePath(u"Yedek-junk.db"_s);
        QFile file(junk);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("this is not a database at all, only text\n");
        file.close();
        for (const QString& location : { junk, m_out.filePath(u"missing.db"_s), QString() }) {
            BackupDatabase backup;
            Message told;
            QVERIFY(!backup.open(location, &told));
            QCOMPARE(told.turkish(), u"Seçilen veritabanına bağlantı sağlanamadı, Ana veritabanı kullanılacak."_s);
            QCOMPARE(&backup.choose(m_db), &m_db);
        }
        // A database without passage records is no backup either.
        Database other;
        const QString otherPath = m_out.filePath(u"other.db"_s);
        QVERIFY(other.open(otherPath, Database::OpenMode::CreateIfMissing));
        QVERIFY(other.exec(u"CREATE TABLE t (x INTEGER)"_s));
        other.close();
        BackupDatabase empty;
        QVERIFY(!empty.open(otherPath));
    }
};

QTEST_MAIN(ReportOutputTest)
#include "tst_ReportOutput.moc"
