#include "CliRunner.h"

#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>

using namespace Qt::Literals::StringLiterals;

CliRunner::CliRunner() = default;

CliRunner::Result CliRunner::run(const QStringList& arguments) const
{
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    // Nothing from the person running the tests may leak into the command line's defaults.
    env.remove(u"KX410_ADMIN_PASSWORD"_s);
    env.insert(u"KX410_BROADCAST"_s, u"127.0.0.1"_s);
    process.setProcessEnvironment(env);
    process.start(QStringLiteral(KX410CTL_PATH), QStringList{ u"--data-dir"_s, dataDir() } + arguments);
    Result result;
    if (!process.waitForStarted() || !process.waitForFinished(-1)) {
        result.err = process.errorString();
        return result;
    }
    result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    result.out = QString::fromUtf8(process.readAllStandardOutput());
    result.err = QString::fromUtf8(process.readAllStandardError());
    return result;
}

CliRunner::Result CliRunner::runAsAdmin(const QStringList& arguments) const
{
    return run(QStringList{ u"--admin-password"_s, QString::fromLatin1(Password) } + arguments);
}

QStringList CliRunner::words(const QString& line)
{
    return QProcess::splitCommand(line);
}

QStringList CliRunner::listed(const char* line) const
{
    QStringList lines = run(line).out.split(u'\n', Qt::SkipEmptyParts);
    for (QString& l : lines)
        l = l.simplified();
    return lines;
}

QString CliRunner::mismatch(std::initializer_list<Expect> rows) const
{
    for (const Expect& row : rows) {
        const Result r = row.asAdmin ? runAsAdmin(row.line) : run(row.line);
        if (r.exitCode != row.exitCode)
            return u"%1 -> %2 (expected %3)\n%4"_s.arg(QString::fromUtf8(row.line))
                .arg(r.exitCode)
                .arg(row.exitCode)
                .arg(r.all());
    }
    return QString();
}

bool CliRunner::setUpServer() const
{
    return runAsAdmin({ u"setup"_s, u"--server"_s }).exitCode == 0;
}

QString CliRunner::writeFile(const QString& name, const QString& text) const
{
    const QString path = m_dir.filePath(name);
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write(text.toUtf8());
    return path;
}
