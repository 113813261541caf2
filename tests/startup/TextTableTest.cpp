// Every text the station shows must have an English and an Arabic row in i18n/texts.tsv.
//
// The check reads the sources under src/ and cli/ (comments removed) and takes the first string
// literal - QStringLiteral("..."), u"..."_s, u"...", QLatin1String("...") or "..." - inside the
// parentheses of each of these calls:
//   Translate(...)  ToTurkish(...)  tr_(...)  setCaption(...)
//   Message(...)  Message name(...)  Message::text(...)  .add(...)
// Besides, every literal under src/ holding a letter only Turkish uses (ç ğ ı İ ö ş ü) is taken
// as a text, whatever call it is handed to (NotShown below lists the few that are only compared).
// A literal with no letter in it (a blank, a separator) needs no row. Texts built at run time
// from variables cannot be seen here; keep them in the table by hand.
//
// The table itself: three columns, no blank around the Turkish key, no key twice, English and
// Arabic filled in. (Two keys may share a translation; the reverse lookup takes the first row.)

#include "SourceTextScanner.h"
#include "store/LanguageDatabase.h"
#include "store/Translator.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QHash>
#include <QSet>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// Literals with Turkish letters that are compared, never shown.
const QStringList NotShown = {
    u"ADMİN"_s, // a user name refused for accounts
    u"çğıöşüÇĞİÖŞÜ"_s, // letters a formatter replaces
};

QString sourceRoot()
{
    const QString root = qEnvironmentVariable("KX_SOURCE_DIR");
    return root.isEmpty() ? QStringLiteral(KX_SOURCE_ROOT) : root;
}

QList<LanguageDatabase::Row> table()
{
    QList<LanguageDatabase::Row> rows;
    QString error;
    if (!LanguageDatabase::readTable(sourceRoot() + u"/i18n/texts.tsv"_s, &rows, &error))
        qWarning() << error;
    return rows;
}

} // namespace

class TextTableTest : public QObject
{
    Q_OBJECT

private slots:
    void scannerFindsTheMarkedTexts()
    {
        // The scanner itself, on a sample written the ways the code writes texts.
        const QString sample = sourceRoot() + u"/tests/startup/ScannerSample.txt"_s;
        QStringList found;
        for (const SourceTextScanner::Use& u : SourceTextScanner::textsIn(sample, sourceRoot()))
            found << u.text;
        found.removeDuplicates();
        QCOMPARE(found,
                 (QStringList{ u"Tamam"_s, u"Türkçe"_s, u"Program kapatılacak!"_s, u"nolu panele gönderilemedi"_s,
                               u"Dış \"alıntı\""_s, u"Kapat"_s, u"Son"_s, u"Birinci parça, ikinci parça"_s }));
    }

    void scannerFindsTurkishLiteralsAnywhere()
    {
        const QString sample = sourceRoot() + u"/tests/startup/ScannerSample.txt"_s;
        QStringList found;
        for (const SourceTextScanner::Use& u : SourceTextScanner::turkishLiteralsIn(sample, sourceRoot()))
            found << u.text;
        found.removeDuplicates();
        // Not the comments, not the raw SQL, not the ASCII-only texts.
        QCOMPARE(
            found,
            (QStringList{ u"Türkçe"_s, u"Program kapatılacak!"_s, u"nolu panele gönderilemedi"_s, u"Dış \"alıntı\""_s,
                          u"Birinci parça, ikinci parça"_s, u"Şifreler uyuşmuyor"_s, u"ADMİN"_s }));
    }

    void tableIsWellFormed()
    {
        const QList<LanguageDatabase::Row> rows = table();
        QVERIFY(!rows.isEmpty());
        QStringList problems;
        QSet<QString> keys;
        for (const LanguageDatabase::Row& r : rows) {
            if (r.turkish != r.turkish.trimmed() || r.turkish.isEmpty())
                problems << u"blank around the key \""_s + r.turkish + u'"';
            if (keys.contains(r.turkish))
                problems << u"key twice: "_s + r.turkish;
            keys.insert(r.turkish);
            if (r.english.trimmed().isEmpty() || r.arabic.trimmed().isEmpty())
                problems << u"missing English or Arabic: "_s + r.turkish;
        }
        QVERIFY2(problems.isEmpty(), qPrintable(problems.join(u'\n')));
    }

    void directionsAndLoginAreTranslatedApart()
    {
        // "Giriş" names the entry direction in grids, reports and door settings; the login
        // window's button has a text of its own, so neither reads as the other in English.
        Translator t;
        for (const LanguageDatabase::Row& r : table())
            t.addRow(r.turkish, r.english, r.arabic);
        t.setLanguage(Translator::English);
        QCOMPARE(t.translate(u"Giriş"_s), u"Entry"_s);
        QCOMPARE(t.translate(u"Çıkış"_s), u"Exit"_s);
        QCOMPARE(t.translate(u"Oturum Aç"_s), u"Log In"_s);
        t.setLanguage(Translator::Arabic);
        QCOMPARE(t.translate(u"Giriş"_s), u"دخول"_s);
        QCOMPARE(t.translate(u"Çıkış"_s), u"خروج"_s);
    }

    void everyShownTextHasARow()
    {
        QHash<QString, LanguageDatabase::Row> rows;
        for (const LanguageDatabase::Row& r : table())
            rows.insert(r.turkish, r);
        QStringList missing;
        int seen = 0;
        for (const QString& folder : { u"src"_s, u"cli"_s }) {
            QDirIterator files(sourceRoot() + u'/' + folder, { u"*.cpp"_s, u"*.h"_s }, QDir::Files,
                               QDirIterator::Subdirectories);
            while (files.hasNext()) {
                const QString file = files.next();
                QList<SourceTextScanner::Use> uses = SourceTextScanner::textsIn(file, sourceRoot());
                // The command line's own help is English; its Turkish examples are not texts.
                if (folder == u"src"_s)
                    uses += SourceTextScanner::turkishLiteralsIn(file, sourceRoot());
                for (const SourceTextScanner::Use& use : uses) {
                    if (NotShown.contains(use.text))
                        continue;
                    ++seen;
                    const auto row = rows.constFind(use.text);
                    if (row == rows.constEnd() || row->english.isEmpty() || row->arabic.isEmpty())
                        missing << use.where + u": \""_s + use.text + u'"';
                }
            }
        }
        QVERIFY(seen > 20);
        missing.removeDuplicates();
        // One line each: a long failure message would be cut short.
        for (const QString& m : std::as_const(missing))
            qWarning().noquote() << "no English and Arabic row:" << m;
        QVERIFY2(missing.isEmpty(), qPrintable(QString::number(missing.size()) + u" texts without a row"_s));
    }
};

QTEST_GUILESS_MAIN(TextTableTest)
#include "TextTableTest.moc"
