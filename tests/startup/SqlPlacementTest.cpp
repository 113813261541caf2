// The windows (src/ui), the command line (cli) and the service (src/service) hold no SQL: every
// statement belongs to a repository below them. The check reads their sources (comments removed)
// and fails on
//   - a string literal that reads as a statement: a keyword in capitals (SELECT, INSERT, UPDATE,
//     DELETE, CREATE, ALTER, DROP), or a statement's shape in any case ("select ... from",
//     "insert into", "update ... set", "delete from", "create table", ...);
//   - code that runs statements itself: a call of a database's exec, execCount, query, rows,
//     scalar, insert, insertRows or upsert, or any QSql class.

#include "SourceTextScanner.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QString sourceRoot()
{
    const QString root = qEnvironmentVariable("KX_SOURCE_DIR");
    return root.isEmpty() ? QStringLiteral(KX_SOURCE_ROOT) : root;
}

bool readsAsStatement(const QString& text)
{
    static const QList<QRegularExpression> shapes = {
        QRegularExpression(u"\\b(SELECT|INSERT|UPDATE|DELETE|CREATE|ALTER|DROP)\\b"_s),
        QRegularExpression(u"\\bselect\\b[\\s\\S]*\\bfrom\\b"_s, QRegularExpression::CaseInsensitiveOption),
        QRegularExpression(u"\\binsert\\s+into\\b"_s, QRegularExpression::CaseInsensitiveOption),
        QRegularExpression(u"\\bupdate\\b[\\s\\S]*\\bset\\b"_s, QRegularExpression::CaseInsensitiveOption),
        QRegularExpression(u"\\bdelete\\s+from\\b"_s, QRegularExpression::CaseInsensitiveOption),
        QRegularExpression(u"\\b(create|alter|drop)\\s+(table|index|unique|view)\\b"_s,
                           QRegularExpression::CaseInsensitiveOption),
    };
    for (const QRegularExpression& shape : shapes) {
        if (text.contains(shape))
            return true;
    }
    return false;
}

// "path:line: what" for every statement text and every statement call in one source file.
QStringList findingsIn(const QString& path, const QString& root)
{
    QStringList findings;
    for (const SourceTextScanner::Use& use : SourceTextScanner::literalsIn(path, root)) {
        if (readsAsStatement(use.text))
            findings << use.where + u": "_s + use.text.simplified();
    }
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return findings << path + u": unreadable"_s;
    const QString code = SourceTextScanner::withoutComments(QString::fromUtf8(f.readAll()));
    static const QRegularExpression call(
        uR"(\b\w*(?:db|Db|DB|database|Database)\b(?:\(\))?\s*(?:\.|->)\s*(?:exec|execCount|query|rows|scalar|insert|insertRows|upsert)\s*\(|\bQSql\w+)"_s);
    for (auto it = call.globalMatch(code); it.hasNext();) {
        const QRegularExpressionMatch m = it.next();
        const qsizetype line = code.left(m.capturedStart()).count(u'\n') + 1;
        findings << QDir(root).relativeFilePath(path) + u':' + QString::number(line) + u": "_s + m.captured();
    }
    return findings;
}

} // namespace

class SqlPlacementTest : public QObject
{
    Q_OBJECT

private slots:
    void scannerTellsStatementsFromTexts()
    {
        // The ways a statement can be written, and look-alikes that are not statements.
        const QString root = sourceRoot() + u"/tests/startup"_s;
        const QString path = root + u"/SqlScanSample.txt"_s;
        const QStringList found = findingsIn(path, root);
        const QStringList expected = {
            u"SqlScanSample.txt:4: SELECT"_s,
            u"SqlScanSample.txt:5: insert into \"Users\" (\"ID\") values (?)"_s,
            u"SqlScanSample.txt:7: update \"T\" set \"a\" = ?"_s,
            u"SqlScanSample.txt:8: delete from t"_s,
            u"SqlScanSample.txt:12: m_db.rows("_s,
            u"SqlScanSample.txt:13: db->exec("_s,
            u"SqlScanSample.txt:14: db().insert("_s,
            u"SqlScanSample.txt:15: QSqlQuery"_s,
        };
        QCOMPARE(found, expected);
    }

    void windowsAndCommandLineHoldNoSql()
    {
        const QString root = sourceRoot();
        QStringList found;
        int files = 0;
        for (const QString& folder : { u"src/ui"_s, u"cli"_s, u"src/service"_s }) {
            QDirIterator it(root + u'/' + folder, { u"*.cpp"_s, u"*.h"_s }, QDir::Files, QDirIterator::Subdirectories);
            while (it.hasNext()) {
                found << findingsIn(it.next(), root);
                ++files;
            }
        }
        QVERIFY2(files > 50, qPrintable(u"sources not found under "_s + root));
        for (const QString& place : std::as_const(found))
            qWarning().noquote() << place;
        QVERIFY2(found.isEmpty(),
                 qPrintable(QString::number(found.size()) + u" places hold SQL outside the repositories (above)"_s));
    }
};

QTEST_MAIN(SqlPlacementTest)
#include "SqlPlacementTest.moc"
