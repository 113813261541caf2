#include "ServiceOptions.h"

#include <QHostAddress>

using namespace Qt::StringLiterals;

namespace {
std::optional<quint16> portValue(const QString& text, bool allowZero)
{
    bool ok = false;
    const uint port = text.toUInt(&ok);
    if (!ok || port > 65535 || (port == 0 && !allowZero))
        return std::nullopt;
    return static_cast<quint16>(port);
}
} // namespace

bool ServiceOptions::parse(const QStringList& arguments, QString* error)
{
    const auto fail = [error](const QString& why) {
        if (error)
            *error = why;
        return false;
    };
    for (qsizetype i = 1; i < arguments.size(); ++i) {
        QString name = arguments.at(i);
        QString value;
        bool hasValue = false;
        if (const qsizetype eq = name.indexOf(u'='); name.startsWith(u"--"_s) && eq > 0) {
            value = name.mid(eq + 1);
            name = name.left(eq);
            hasValue = true;
        }
        if (name == u"--help"_s || name == u"-h"_s) {
            help = true;
            continue;
        }
        if (name == u"--erase-after-retrieval"_s) {
            eraseAfterRetrieval = true;
            continue;
        }
        if (name == u"--send-changed"_s) {
            sendChanged = true;
            continue;
        }
        const QStringList valued{ u"--data-dir"_s, u"--db"_s,       u"--broadcast"_s, u"--listen"_s,       u"--port"_s,
                                  u"--udp-port"_s, u"--start-at"_s, u"--parallel"_s,  u"--give-up-after"_s };
        if (!valued.contains(name))
            return fail(u"unknown option: "_s + arguments.at(i));
        if (!hasValue) {
            if (i + 1 >= arguments.size())
                return fail(name + u" needs a value"_s);
            value = arguments.at(++i);
        }
        if (name == u"--data-dir"_s) {
            dataDir = value;
        } else if (name == u"--db"_s) {
            database = value;
        } else if (name == u"--broadcast"_s) {
            if (QHostAddress(value).protocol() != QAbstractSocket::IPv4Protocol)
                return fail(u"--broadcast needs an IPv4 address"_s);
            broadcast = value;
        } else if (name == u"--listen"_s) {
            if (QHostAddress(value).isNull())
                return fail(u"--listen needs an IP address"_s);
            listen = value;
        } else if (name == u"--port"_s) {
            livePort = portValue(value, true);
            if (!livePort)
                return fail(u"--port needs a port 0..65535"_s);
        } else if (name == u"--udp-port"_s) {
            statusPort = portValue(value, true);
            if (!statusPort)
                return fail(u"--udp-port needs a port 0..65535"_s);
        } else if (name == u"--parallel"_s || name == u"--give-up-after"_s) {
            bool ok = false;
            const int number = value.toInt(&ok);
            const bool isParallel = name == u"--parallel"_s;
            if (!ok || number < (isParallel ? 1 : 0) || number > (isParallel ? 64 : 1000))
                return fail(name + (isParallel ? u" needs a number 1..64"_s : u" needs a number 0..1000"_s));
            (isParallel ? parallel : giveUpAfter) = number;
        } else if (name == u"--start-at"_s) {
            startAt = QDateTime::fromString(value, u"yyyy-MM-dd HH:mm:ss"_s);
            if (!startAt.isValid())
                return fail(u"--start-at needs \"yyyy-MM-dd HH:mm:ss\""_s);
        }
    }
    return true;
}

QString ServiceOptions::usage()
{
    return u"usage: kx410d [--data-dir DIR] [--db URL] [--broadcast ADDR] [--listen ADDR] [--port N]\n"
           "              [--udp-port N] [--erase-after-retrieval] [--parallel N] [--give-up-after K]\n"
           "              [--send-changed]\n\n"
           "The server station without windows: runs the daily send and retrieval and the periodic\n"
           "backup, watches the panels live (fetching the records of any gap) and listens for their\n"
           "status, on a data folder set up as a server (kx410ctl setup --server). Only one program\n"
           "runs a folder's daily schedule: a second kx410d refuses to start, and a station window\n"
           "on the same folder runs without its scheduler. Logs to standard error; stops cleanly on\n"
           "SIGTERM or SIGINT.\n\n"
           "  --data-dir DIR            the data folder (default: the per-user one)\n"
           "  --db URL                  the main database instead of the one the settings name\n"
           "  --broadcast ADDR          where status datagrams go (default 255.255.255.255)\n"
           "  --listen ADDR             address the live monitor listens on (default: every address)\n"
           "  --port N                  live TCP port (default: the port the panels push to, 0 any)\n"
           "  --udp-port N              local port of the status listener (default 11001, 0 any)\n"
           "  --erase-after-retrieval   erase each panel once the daily retrieval stored its records\n"
           "  --parallel N              the daily runs walk up to N panels at once (default 8)\n"
           "  --give-up-after K         leave a panel that did not answer K requests in a row for the\n"
           "                            next run (default 3, 0 never)\n"
           "  --send-changed            the daily send takes each panel only the users added, changed\n"
           "                            or removed since its last send\n"_s;
}
