#include "SimCommandLine.h"

#include "SimControlCommands.h"

#include <QFile>
#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

namespace {
bool readPort(const QString& text, int low, int* port)
{
    bool ok = false;
    const int value = text.toInt(&ok);
    if (!ok || value < low || value > 65535)
        return false;
    *port = value;
    return true;
}
} // namespace

bool SimCommandLine::parse(const QStringList& arguments, QString* error)
{
    QStringList panelTexts;
    QStringList panelFiles;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& option = arguments.at(i);
        const auto value = [&]() -> QString { return i + 1 < arguments.size() ? arguments.at(++i) : QString(); };
        if (option == u"--help" || option == u"-h") {
            help = true;
        } else if (option == u"--panel") {
            panelTexts.append(value());
        } else if (option == u"--panels-file") {
            panelFiles.append(value());
        } else if (option == u"--push") {
            m_defaultPush = value();
            if (!m_defaultPush.contains(u':')) {
                *error = u"--push needs HOST:PORT"_s;
                return false;
            }
        } else if (option == u"--bind") {
            const QString text = value();
            host.address = QHostAddress(text);
            if (host.address.isNull()) {
                *error = u"bad --bind address "_s + text;
                return false;
            }
        } else if (option == u"--status-port" || option == u"--search-port" || option == u"--control-port") {
            int port = 0;
            const QString text = value();
            if (text == u"off") {
                port = -1;
            } else if (!readPort(text, 0, &port)) {
                *error = u"bad port for "_s + option;
                return false;
            }
            (option == u"--status-port"       ? host.statusPort
                 : option == u"--search-port" ? host.searchPort
                                              : host.controlPort)
                = port;
        } else if (option == u"--rate") {
            bool ok = false;
            rate = value().toDouble(&ok);
            if (!ok || rate < 0) {
                *error = u"bad --rate"_s;
                return false;
            }
        } else if (option == u"--answer-delay") {
            if (!parseAnswerDelay(value(), &answerDelayMs, &answerJitterMs)) {
                *error = u"--answer-delay takes MS or MS:JITTER, each 0..60000"_s;
                return false;
            }
        } else if (option == u"--seed-users") {
            bool ok = false;
            seedUsers = value().toInt(&ok);
            if (!ok || seedUsers < 0 || seedUsers > 20000) {
                *error = u"--seed-users takes 0..20000"_s;
                return false;
            }
        } else {
            *error = u"unknown option "_s + option;
            return false;
        }
    }
    for (const QString& file : std::as_const(panelFiles)) {
        if (!readPanelsFile(file, error))
            return false;
    }
    for (const QString& text : std::as_const(panelTexts)) {
        if (!addPanel(text, error))
            return false;
    }
    return true;
}

bool SimCommandLine::addPanel(const QString& text, QString* error)
{
    QString full = text;
    if (full.count(u':') == 2 && !m_defaultPush.isEmpty())
        full += u':' + m_defaultPush;
    const auto config = SimPanelConfig::parse(full, error);
    if (!config)
        return false;
    for (const SimPanelConfig& other : std::as_const(panels)) {
        if (other.number == config->number) {
            *error = u"panel number given twice: "_s + QString::number(config->number);
            return false;
        }
    }
    panels.append(*config);
    return true;
}

bool SimCommandLine::readPanelsFile(const QString& path, QString* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        *error = u"cannot read "_s + path + u": " + file.errorString();
        return false;
    }
    static const QRegularExpression blanks(u"\\s+"_s);
    int lineNumber = 0;
    while (!file.atEnd()) {
        ++lineNumber;
        QString line = QString::fromUtf8(file.readLine());
        line = line.section(u'#', 0, 0).trimmed();
        if (line.isEmpty())
            continue;
        const QStringList words = line.split(blanks);
        if (words.size() != 3 && words.size() != 4) {
            *error = path + u':' + QString::number(lineNumber) + u": expected NUMBER SERIAL PORT [HOST:PORT]";
            return false;
        }
        if (!addPanel(words.join(u':'), error)) {
            *error = path + u':' + QString::number(lineNumber) + u": " + *error;
            return false;
        }
    }
    return true;
}

QString SimCommandLine::helpText()
{
    QString text = uR"(kx410-panelsim: simulated KX-410 panels on loopback TCP ports.

Usage: kx410-panelsim [options]

Options:
  --panel N:SERIAL:PORT[:HOST:PORT]  a panel: number, serial (hex), TCP port (0: any free port) and
                                     where it pushes live frames (repeatable)
  --panels-file FILE                 panels, one a line: NUMBER SERIAL PORT [HOST:PORT]; # comments
  --push HOST:PORT                   push address for panels given without one
  --bind ADDRESS                     address of every socket (default 127.0.0.1)
  --status-port PORT|off             UDP port of the status request (default 11000)
  --search-port PORT|off             UDP port of the search request (default 4113)
  --control-port PORT|off            TCP control port (default off)
  --rate PER_SECOND                  present random cards at every panel continuously
  --answer-delay MS[:JITTER]         every panel answers MS ms late, plus up to JITTER ms at random
                                     (a real panel takes tens of ms; default 0)
  --seed-users N                     store users 1..N in every panel (card 100000 + ID, group 1
                                     passing all four doors at any time)
  -h, --help                         this text

Control port: one command a line, one answer line back ("OK ..." or "ERR ...").
Panels are addressed by number; N|all means one panel or every panel.
)"_s;
    for (const QString& line : SimControlCommands::usage())
        text += u"  "_s + line + u'\n';
    text += uR"(
Fault modes: none, silent, refuse, slow (delay=MS, default 500), late (default 2600 ms),
cut (after=N records of a download), garbage, noise, drop, trickle (delay=MS per byte),
wrongpanel. count=N limits a fault to the next N requests; codes=NC,UC to those commands.
)"_s;
    return text;
}

bool SimCommandLine::parseAnswerDelay(const QString& text, int* delayMs, int* jitterMs)
{
    const QStringList parts = text.split(u':');
    if (parts.size() > 2)
        return false;
    bool okDelay = false;
    bool okJitter = true;
    const int delay = parts.at(0).toInt(&okDelay);
    const int jitter = parts.size() == 2 ? parts.at(1).toInt(&okJitter) : 0;
    if (!okDelay || !okJitter || delay < 0 || delay > 60000 || jitter < 0 || jitter > 60000)
        return false;
    *delayMs = delay;
    *jitterMs = jitter;
    return true;
}
