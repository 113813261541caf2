#include "store/Database.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>

using namespace Qt::StringLiterals;

// Several processes on one SQLite file, as the station and the command line run side by side:
// nothing a process committed may be lost when others open, read and close the file, nor when it
// is killed.
class tst_SharedFile : public QObject
{
    Q_OBJECT

private slots:
    void committedRowsSurviveOtherProcessesAndKill();

private:
    // The last count the writer printed: every row up to it is committed.
    qint64 lastCount(QProcess& writer);

    QByteArray m_pending;
    qint64 m_last = 0;
};

qint64 tst_SharedFile::lastCount(QProcess& writer)
{
    m_pending += writer.readAllStandardOutput();
    const qsizetype end = m_pending.lastIndexOf('\n');
    if (end < 0)
        return m_last;
    const QList<QByteArray> lines = m_pending.left(end).split('\n');
    m_pending.remove(0, end + 1);
    for (const QByteArray& line : lines) {
        if (!line.trimmed().isEmpty())
            m_last = line.trimmed().toLongLong();
    }
    return m_last;
}

void tst_SharedFile::committedRowsSurviveOtherProcessesAndKill()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString path = dir.filePath(u"shared.db"_s);
    const QString child = QStringLiteral(KX_SHARED_FILE_CHILD);

    QProcess writer;
    writer.start(child, { u"write"_s, path });
    QVERIFY(writer.waitForStarted());
    QTRY_VERIFY_WITH_TIMEOUT(lastCount(writer) >= 50, 30000);

    // Other processes open, read and close the file many times while the writer goes on.
    for (int round = 0; round < 4; ++round) {
        QList<QProcess*> readers;
        for (int i = 0; i < 3; ++i) {
            auto* reader = new QProcess(this);
            reader->start(child, { u"read"_s, path, u"40"_s });
            readers << reader;
        }
        for (QProcess* reader : readers) {
            QVERIFY(reader->waitForFinished(60000));
            QCOMPARE(reader->exitCode(), 0);
            delete reader;
        }
    }
    const qint64 before = lastCount(writer);
    QTRY_VERIFY2_WITH_TIMEOUT(lastCount(writer) >= before + 50 || writer.state() != QProcess::Running,
                              "the writer stopped writing", 30000);
    QVERIFY2(writer.state() == QProcess::Running, writer.readAllStandardError().constData());

    ::kill(static_cast<pid_t>(writer.processId()), SIGKILL);
    QVERIFY(writer.waitForFinished(10000));
    const qint64 committed = lastCount(writer);

    Database db;
    QString error;
    QVERIFY2(db.open(path, Database::OpenMode::ExistingOnly, &error), qPrintable(error));
    QCOMPARE(db.scalar(u"PRAGMA integrity_check"_s).toString(), u"ok"_s);
    const qint64 stored = db.scalar(u"SELECT count(*) FROM Rows"_s).toLongLong();
    QVERIFY2(stored >= committed, qPrintable(u"%1 committed, %2 stored"_s.arg(committed).arg(stored)));
    QCOMPARE(db.scalar(u"SELECT max(n) FROM Rows"_s).toLongLong(), stored);
}

QTEST_GUILESS_MAIN(tst_SharedFile)
#include "tst_SharedFile.moc"
