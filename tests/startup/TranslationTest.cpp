#include "store/LanguageDatabase.h"
#include "store/Message.h"
#include "store/Translate.h"
#include "store/Translator.h"

#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QByteArray SmallTable = "BaseTR\tBaseEN\tBaseAR\r\n"
                              "Program kapatılacak!\tThe program will be closed!\tسيتم إغلاق البرنامج!\r\n"
                              "nolu panele gönderilemedi\tnumbered panel: could not be sent\tرقم اللوحة: تعذر الإرسال\n"
                              "Kullanıcı adı olarak 'Admin' girilemez\t'Admin' cannot be a user name\tلا يمكن 'Admin'\n"
                              "\n";

void writeFile(const QString& path, const QByteArray& bytes)
{
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(bytes);
}

QByteArray readFile(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// Adds a row behind the builder's back, to tell whether a later call rebuilt the file.
void addMarkerRow(const QString& dbPath)
{
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"marker"_s);
        db.setDatabaseName(dbPath);
        QVERIFY(db.open());
        QSqlQuery q(db);
        QVERIFY(q.exec(u"INSERT INTO ChLS (BaseTR, BaseEN, BaseAR) VALUES ('İşaret', 'Marker', 'علامة')"_s));
    }
    QSqlDatabase::removeDatabase(u"marker"_s);
}

Translator loaded(const QString& dbPath, int language)
{
    Translator t;
    QString error;
    const bool ok = LanguageDatabase::load(dbPath, t, &error);
    if (!ok)
        qWarning() << error;
    t.setLanguage(language);
    return t;
}

} // namespace

class TranslationTest : public QObject
{
    Q_OBJECT

private slots:
    void lookupRulesByLanguage()
    {
        Translator t;
        t.addRow(u"Program kapatılacak!"_s, u"The program will be closed!"_s, u"سيتم إغلاق البرنامج!"_s);
        t.addRow(u"nolu panele gönderilemedi"_s, u"numbered panel: could not be sent"_s, u"رقم اللوحة: تعذر الإرسال"_s);

        // Turkish never looks anything up, whatever the table holds.
        QCOMPARE(t.translate(u" Program kapatılacak! "_s), u" Program kapatılacak! "_s);

        t.setLanguage(Translator::English);
        QCOMPARE(t.translate(u"Program kapatılacak!"_s), u"The program will be closed!"_s);
        // A fragment with its joining blank is found under the trimmed key.
        QCOMPARE(t.translate(u" nolu panele gönderilemedi"_s), u"numbered panel: could not be sent"_s);
        QCOMPARE(t.translate(u"Bilinmeyen metin"_s), u"Bilinmeyen metin"_s);
        QCOMPARE(t.toTurkish(u"The program will be closed!"_s), u"Program kapatılacak!"_s);

        t.setLanguage(Translator::Arabic);
        QCOMPARE(t.translate(u"Program kapatılacak!"_s), u"سيتم إغلاق البرنامج!"_s);
        QCOMPARE(t.toTurkish(u"رقم اللوحة: تعذر الإرسال"_s), u"nolu panele gönderilemedi"_s);

        // 3 and 4 are accepted as languages but name no column; anything else is Turkish.
        for (const int language : { 3, 4, 5, -1 }) {
            t.setLanguage(language);
            QCOMPARE(t.translate(u"Program kapatılacak!"_s), u"Program kapatılacak!"_s);
            QCOMPARE(t.toTurkish(u"The program will be closed!"_s), u"The program will be closed!"_s);
        }
    }

    void messagesTranslateFragmentByFragment()
    {
        Translator t;
        t.addRow(u"nolu panele gönderilemedi"_s, u"numbered panel: could not be sent"_s, u"ع"_s);
        t.setLanguage(Translator::English);
        Message m;
        m.value(12).add(u" nolu panele gönderilemedi"_s);
        QCOMPARE(m.turkish(), u"12 nolu panele gönderilemedi"_s);
        QCOMPARE(m.render(t), u"12 numbered panel: could not be sent"_s);

        Translator copy = t;
        SetCurrentTranslator(copy);
        QCOMPARE(Translate(m), u"12 numbered panel: could not be sent"_s);
        QCOMPARE(ToTurkish(u"numbered panel: could not be sent"_s), u"nolu panele gönderilemedi"_s);
        SetCurrentLanguage(Translator::Turkish);
        QCOMPARE(Translate(m), u"12 nolu panele gönderilemedi"_s);
    }

    void builtDatabaseServesTheTable()
    {
        QTemporaryDir dir;
        const QString tsv = dir.filePath(u"texts.tsv"_s);
        const QString dbPath = dir.filePath(u"KX-410_Lang.db"_s);
        writeFile(tsv, SmallTable);
        QString error;
        QVERIFY2(LanguageDatabase::build(dbPath, tsv, &error), qPrintable(error));
        QVERIFY(!QFileInfo::exists(dbPath + u".building"_s));

        Translator t = loaded(dbPath, Translator::English);
        QCOMPARE(t.rowCount(), 3);
        // Apostrophes are ordinary characters for a lookup with bound values.
        QCOMPARE(t.translate(u"Kullanıcı adı olarak 'Admin' girilemez"_s), u"'Admin' cannot be a user name"_s);
        t.setLanguage(Translator::Arabic);
        QCOMPARE(t.translate(u"Program kapatılacak!"_s), u"سيتم إغلاق البرنامج!"_s);
        // The table shipped with the program is built at every first start (the start-up test).
    }

    void databaseIsRebuiltOnlyWhenMissingOrOutdated()
    {
        QTemporaryDir dir;
        const QString tsv = dir.filePath(u"texts.tsv"_s);
        const QString dbPath = dir.filePath(u"KX-410_Lang.db"_s);
        writeFile(tsv, SmallTable);
        QString error;

        QVERIFY2(LanguageDatabase::ensureCurrent(dbPath, tsv, &error), qPrintable(error));
        QCOMPARE(loaded(dbPath, 1).rowCount(), 3);

        // Same table: the file is kept as it is.
        addMarkerRow(dbPath);
        QVERIFY(LanguageDatabase::ensureCurrent(dbPath, tsv, &error));
        QCOMPARE(loaded(dbPath, 1).translate(u"İşaret"_s), u"Marker"_s);

        // A newer table replaces it.
        writeFile(tsv, SmallTable + "Yeni\tNew\tجديد\n");
        QVERIFY(LanguageDatabase::ensureCurrent(dbPath, tsv, &error));
        const Translator t = loaded(dbPath, 1);
        QCOMPARE(t.rowCount(), 4);
        QCOMPARE(t.translate(u"İşaret"_s), u"İşaret"_s);

        // An empty file counts as missing.
        writeFile(dbPath, QByteArray());
        QVERIFY(LanguageDatabase::ensureCurrent(dbPath, tsv, &error));
        QCOMPARE(loaded(dbPath, 1).rowCount(), 4);
    }

    void handMadeLanguageTableIsKept()
    {
        QTemporaryDir dir;
        const QString tsv = dir.filePath(u"texts.tsv"_s);
        const QString dbPath = dir.filePath(u"KX-410_Lang.db"_s);
        writeFile(tsv, SmallTable);
        {
            QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"hand"_s);
            db.setDatabaseName(dbPath);
            QVERIFY(db.open());
            QSqlQuery q(db);
            QVERIFY(q.exec(u"CREATE TABLE ChLS (BaseTR TEXT, BaseEN TEXT, BaseAR TEXT)"_s));
            QVERIFY(q.exec(u"INSERT INTO ChLS VALUES ('Kapat', 'Shut', NULL)"_s));
        }
        QSqlDatabase::removeDatabase(u"hand"_s);
        QString error;
        QVERIFY(LanguageDatabase::ensureCurrent(dbPath, tsv, &error));
        Translator t = loaded(dbPath, Translator::English);
        QCOMPARE(t.rowCount(), 1);
        QCOMPARE(t.translate(u"Kapat"_s), u"Shut"_s);
        // An empty cell shows the Turkish text.
        t.setLanguage(Translator::Arabic);
        QCOMPARE(t.translate(u"Kapat"_s), u"Kapat"_s);
    }

    void brokenFilesAreReportedAndLeftAlone()
    {
        QTemporaryDir dir;
        const QString tsv = dir.filePath(u"texts.tsv"_s);
        writeFile(tsv, SmallTable);
        QString error;

        // Not a database: reported, not overwritten.
        const QString corrupt = dir.filePath(u"corrupt.db"_s);
        const QByteArray garbage(4096, 'x');
        writeFile(corrupt, garbage);
        QVERIFY(!LanguageDatabase::ensureCurrent(corrupt, tsv, &error));
        QVERIFY(!error.isEmpty());
        QCOMPARE(readFile(corrupt), garbage);

        // A folder in the way cannot be replaced.
        const QString folder = dir.filePath(u"folder.db"_s);
        QVERIFY(QDir(dir.path()).mkdir(u"folder.db"_s));
        QVERIFY(!LanguageDatabase::build(folder, tsv, &error));
        QVERIFY(QFileInfo(folder).isDir());
        QVERIFY(!QFileInfo::exists(folder + u".building"_s));

        // A table line with missing columns is refused with its line number.
        writeFile(tsv, "BaseTR\tBaseEN\tBaseAR\nTamam\tOK\tموافق\nEksik\tOnly two\n");
        QVERIFY(!LanguageDatabase::build(dir.filePath(u"new.db"_s), tsv, &error));
        QVERIFY2(error.contains(u"line 3"_s), qPrintable(error));
        QVERIFY(!QFileInfo::exists(dir.filePath(u"new.db"_s)));
    }
};

QTEST_GUILESS_MAIN(TranslationTest)
#include "TranslationTest.moc"
