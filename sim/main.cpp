#include "protocol/ProcessTimeZone.h"
#include "sim/SimCommandLine.h"
#include "sim/SimPanel.h"
#include "sim/SimulatorHost.h"

#include <QCoreApplication>
#include <QTextStream>
#include <csignal>

using namespace Qt::Literals::StringLiterals;

namespace {
void stopOnSignal(int)
{
    QCoreApplication::quit();
}

// Users 1..count with a group that passes every door at any time, for demonstrations.
void seedUsers(SimPanel* panel, int count)
{
    panel->modify([count](SimPanelState& state) {
        SimGroup group;
        group.number = 1;
        group.doorAllowed = { true, true, true, true };
        state.groups.insert(1, group);
        for (int id = 1; id <= count; ++id) {
            SimUser user;
            user.id = id;
            user.card = 100000 + id;
            user.group = 1;
            state.putUser(user);
        }
    });
}
} // namespace

int main(int argc, char** argv)
{
    ProcessTimeZone::settle();
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);

    SimCommandLine options;
    QString error;
    if (!options.parse(app.arguments().mid(1), &error)) {
        err << error << u"\n(see --help)\n"_s;
        return 2;
    }
    if (options.help) {
        out << SimCommandLine::helpText();
        return 0;
    }
    if (options.panels.isEmpty() && options.host.controlPort < 0) {
        err << u"nothing to simulate: give --panel, --panels-file or --control-port (see --help)\n"_s;
        return 2;
    }

    SimulatorHost host;
    QObject::connect(&host, &SimulatorHost::quitRequested, &app, &QCoreApplication::quit, Qt::QueuedConnection);
    if (!host.start(options.host, &error)) {
        err << u"cannot start: "_s << error << u'\n';
        return 1;
    }
    for (const SimPanelConfig& config : std::as_const(options.panels)) {
        SimPanel* panel = host.addPanel(config, &error);
        if (!panel) {
            err << u"panel "_s << config.number << u": "_s << error << u'\n';
            return 1;
        }
        if (options.seedUsers > 0)
            seedUsers(panel, options.seedUsers);
        panel->setAnswerDelay(options.answerDelayMs, options.answerJitterMs);
        out << u"panel "_s << panel->number() << u" serial "_s
            << QString::number(panel->serial(), 16).toUpper().rightJustified(4, u'0') << u" on "_s
            << host.address().toString() << u':' << panel->port();
        if (!config.pushHost.isEmpty())
            out << u" pushing to "_s << config.pushHost << u':' << config.pushPort;
        out << u'\n';
    }
    if (host.statusPort() > 0)
        out << u"status requests on UDP "_s << host.statusPort() << u'\n';
    if (host.searchPort() > 0)
        out << u"search requests on UDP "_s << host.searchPort() << u'\n';
    if (host.controlPort() > 0)
        out << u"control on TCP "_s << host.controlPort() << u'\n';
    out.flush();
    if (options.rate > 0)
        host.setPassageRate(0, options.rate);

    std::signal(SIGINT, stopOnSignal);
    std::signal(SIGTERM, stopOnSignal);
    const int code = app.exec();
    host.stop();
    return code;
}
