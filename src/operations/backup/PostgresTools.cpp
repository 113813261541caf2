#include "operations/backup/PostgresTools.h"

#include "store/DatabaseLocation.h"

#include <QCollator>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <algorithm>

using namespace Qt::StringLiterals;

QString PostgresTools::program(const QString& name)
{
    const QString onPath = QStandardPaths::findExecutable(name);
    if (!onPath.isEmpty())
        return onPath;
    // The server package keeps its programs out of PATH; take the newest version's.
    QStringList versions = QDir(u"/usr/lib/postgresql"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    QCollator numeric;
    numeric.setNumericMode(true);
    std::sort(versions.begin(), versions.end(),
              [&numeric](const QString& a, const QString& b) { return numeric.compare(a, b) > 0; });
    for (const QString& version : std::as_const(versions)) {
        const QString candidate = u"/usr/lib/postgresql/"_s + version + u"/bin/"_s + name;
        if (QFileInfo(candidate).isExecutable())
            return candidate;
    }
    return QString();
}

QStringList PostgresTools::connectionArguments(const DatabaseLocation& location)
{
    QStringList arguments;
    if (!location.host().isEmpty())
        arguments << u"--host"_s << location.host();
    arguments << u"--port"_s << QString::number(location.port());
    if (!location.userName().isEmpty())
        arguments << u"--username"_s << location.userName();
    arguments << u"--no-password"_s;
    return arguments;
}

QProcessEnvironment PostgresTools::environment(const DatabaseLocation& location)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!location.password().isEmpty())
        environment.insert(u"PGPASSWORD"_s, location.password());
    if (!environment.contains(u"PGCONNECT_TIMEOUT"_s))
        environment.insert(u"PGCONNECT_TIMEOUT"_s, u"10"_s);
    return environment;
}
