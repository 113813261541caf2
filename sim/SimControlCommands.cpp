#include "SimControlCommands.h"

#include "SimAccessDecider.h"
#include "SimCommandLine.h"
#include "SimFrames.h"
#include "SimPanel.h"
#include "SimText.h"
#include "SimulatorHost.h"

#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

namespace {
QString ok(const QString& text = QString())
{
    return text.isEmpty() ? u"OK"_s : u"OK "_s + text;
}

QString err(const QString& text)
{
    return u"ERR "_s + text;
}

std::optional<int> toInt(const QString& text, int low, int high)
{
    bool good = false;
    const int value = text.toInt(&good);
    if (!good || value < low || value > high)
        return std::nullopt;
    return value;
}

QString hex4(int serial)
{
    return QString::number(serial, 16).toUpper().rightJustified(4, u'0');
}

QString describe(SimPanel* panel)
{
    QString push = u"-"_s;
    if (!panel->pushHost().isEmpty())
        push = panel->pushHost() + u':' + QString::number(panel->pushPort());
    return QString::number(panel->number()) + u':' + hex4(panel->serial()) + u':' + QString::number(panel->port())
        + u" push=" + push + u" records=" + QString::number(panel->recordCount()) + u" fault="
        + panel->fault().describe().replace(u' ', u'/');
}

QString state(SimPanel* panel)
{
    QString text;
    panel->inspect([&](const SimPanelState& s) {
        QString doors;
        for (int d : s.doorStates)
            doors += QString::number(d);
        text = u"users="_s + QString::number(s.users.size()) + u" groups=" + QString::number(s.groups.size())
            + u" timegroups=" + QString::number(s.timeGroups.size()) + u" calendars="
            + QString::number(s.calendars.size()) + u" slots=" + QString::number(s.programmedSlots.size())
            + u" approved=" + QString::number(s.dailyApproved.size()) + u" records="
            + QString::number(s.records.count()) + u" capacity=" + QString::number(s.records.capacity()) + u" zone1="
            + QString::number(s.zoneCounters[0]) + u" zone2=" + QString::number(s.zoneCounters[1]) + u" doors=" + doors
            + u" alarm=" + QString::number(s.alarm) + u" fire=" + QString::number(s.fire) + u" clock="
            + s.now().toString(u"dd/MM/yyyy-HH:mm:ss"_s) + u" announced=" + QString::number(s.announcedUserCount);
    });
    return text;
}

QList<SimPanel*> targets(SimulatorHost& host, const QString& which)
{
    if (which == u"all")
        return host.panels();
    const auto number = toInt(which, 1, 999);
    SimPanel* panel = number ? host.panel(*number) : nullptr;
    return panel ? QList<SimPanel*>{ panel } : QList<SimPanel*>{};
}

QString addPanel(SimulatorHost& host, const QStringList& w)
{
    if (w.size() != 4 && w.size() != 5)
        return err(u"usage: add N SERIAL PORT [HOST:PORT]"_s);
    QString text = w[1] + u':' + w[2] + u':' + w[3];
    if (w.size() == 5)
        text += u':' + w[4];
    QString why;
    const auto config = SimPanelConfig::parse(text, &why);
    if (!config)
        return err(why);
    SimPanel* panel = host.addPanel(*config, &why);
    return panel ? ok(describe(panel)) : err(why);
}

// What a passage code means, for the person at the control port: "code=0" alone says nothing.
QString passageText(PassageCode code)
{
    switch (code) {
    case PassageCode::Denied:
        return u"denied"_s;
    case PassageCode::Granted:
        return u"granted"_s;
    case PassageCode::AntiPassback:
        return u"anti-passback"_s;
    case PassageCode::OutOfTime:
        return u"out-of-time"_s;
    case PassageCode::UnknownCard:
        return u"unknown-card"_s;
    default:
        return u"door-operation"_s;
    }
}

QString presentCard(SimPanel* panel, const QStringList& w)
{
    const auto door = toInt(w.value(2), 1, 4);
    bool good = false;
    const qint64 card = w.value(3).toLongLong(&good);
    if (!door || !good || card < 0)
        return err(u"usage: card N DOOR CARD [in|out]"_s);
    std::optional<Direction> direction;
    if (w.size() > 4)
        direction = w[4] == u"out" ? Direction::Exit : Direction::Entry;
    const SimRecord record = panel->presentCard(*door, card, direction);
    return ok(u"code="_s + QString::number(storedNumber(record.code)) + u" user=" + QString::number(record.userId)
              + u" result=" + passageText(record.code));
}

QString putUser(SimPanel* panel, const QStringList& w)
{
    const auto id = toInt(w.value(2), 1, SimPanelState::kUserSlots);
    bool good = false;
    const qint64 card = w.value(3).toLongLong(&good);
    const auto group = toInt(w.value(4), 0, 9999);
    if (!id || !good || !group || w.size() != 5)
        return err(u"usage: user N ID CARD GROUP"_s);
    SimUser user;
    user.id = *id;
    user.card = card;
    user.group = *group;
    panel->putUser(user);
    return ok();
}

QString putGroup(SimPanel* panel, const QStringList& w)
{
    const auto number = toInt(w.value(2), 1, SimPanelState::kGroups);
    const QString doors = w.value(3);
    static const QRegularExpression flags(u"^[01]{4}$"_s);
    if (!number || !flags.match(doors).hasMatch() || (w.size() != 4 && w.size() != 8))
        return err(u"usage: group N GROUP DOORS [TG1 TG2 TG3 TG4]"_s);
    SimGroup group;
    group.number = *number;
    for (int i = 0; i < 4; ++i) {
        group.doorAllowed[i] = doors.at(i) == u'1';
        if (w.size() == 8) {
            const auto timeGroup = toInt(w[4 + i], 0, 999);
            if (!timeGroup)
                return err(u"bad time group"_s);
            group.doorTimeGroup[i] = *timeGroup;
        }
    }
    panel->modify([&](SimPanelState& s) { s.groups.insert(group.number, group); });
    return ok();
}

QString clock(SimPanel* panel, const QStringList& w)
{
    if (w.size() == 4) {
        const QDateTime time = QDateTime::fromString(w[2] + u' ' + w[3], u"dd/MM/yyyy HH:mm:ss"_s);
        if (!time.isValid())
            return err(u"usage: clock N [dd/MM/yyyy HH:mm:ss]"_s);
        panel->modify([&](SimPanelState& s) { s.setClock(time); });
    } else if (w.size() != 2) {
        return err(u"usage: clock N [dd/MM/yyyy HH:mm:ss]"_s);
    }
    QString text;
    panel->inspect([&](const SimPanelState& s) { text = s.now().toString(u"dd/MM/yyyy HH:mm:ss"_s); });
    return ok(text);
}

// The settings record as last written, and the UHF readers.
QString settings(SimPanel* panel)
{
    QString text;
    panel->inspect([&](const SimPanelState& s) {
        text = u"record="_s + QString::fromLatin1(s.settings.record).replace(u' ', u'_');
        for (int r = 0; r < SimPanelState::kReaders; ++r) {
            const SimPanelState::Reader& reader = s.readers[r];
            text += u" reader"_s + QString::number(r + 1) + u'=' + QString::number(reader.power) + u'/'
                + QString::number(reader.buzzer) + QString::number(reader.led);
        }
    });
    return text;
}

QString requests(SimPanel* panel)
{
    static const char* const codes[]
        = { "NC", "UC", "DC", "EC", "RC", "MU", "UR", "DR", "TN", "TE", "EG", "NG",  "DD",
            "EM", "PS", "PR", "LW", "LR", "ES", "EP", "RP", "CS", "CZ", "ZW", "ZR",  "MA",
            "MS", "MR", "GR", "GW", "AS", "SA", "PA", "DT", "FO", "FC", "DS", "GMS", "US" };
    QStringList parts{ u"total="_s + QString::number(panel->totalRequests()) };
    for (const char* code : codes) {
        const int count = panel->requestCount(QByteArray(code));
        if (count > 0)
            parts.append(QString::fromLatin1(code) + u'=' + QString::number(count));
    }
    return ok(parts.join(u' '));
}

QString onPanel(SimulatorHost& host, SimPanel* panel, const QString& command, const QStringList& w)
{
    if (command == u"card")
        return presentCard(panel, w);
    if (command == u"exit") {
        const auto door = toInt(w.value(2), 1, 4);
        if (!door)
            return err(u"usage: exit N DOOR"_s);
        panel->pressExitButton(*door);
        return ok();
    }
    if (command == u"user")
        return putUser(panel, w);
    if (command == u"getuser") {
        const auto id = toInt(w.value(2), 1, SimPanelState::kUserSlots);
        if (!id)
            return err(u"usage: getuser N ID"_s);
        const auto user = panel->user(*id);
        return ok(user ? QString::fromLatin1(user->toBlock()) : u"none"_s);
    }
    if (command == u"group")
        return putGroup(panel, w);
    if (command == u"approve") {
        const auto id = toInt(w.value(2), 1, SimPanelState::kUserSlots);
        const auto flag = toInt(w.value(3), 0, 1);
        if (!id || !flag)
            return err(u"usage: approve N ID 0|1"_s);
        panel->modify([&](SimPanelState& s) {
            if (*flag)
                s.dailyApproved.insert(*id);
            else
                s.dailyApproved.remove(*id);
        });
        return ok();
    }
    if (command == u"seed") {
        const auto count = toInt(w.value(2), 0, 1000000);
        if (!count)
            return err(u"usage: seed N COUNT"_s);
        panel->seedRecords(*count);
        return ok(u"records="_s + QString::number(panel->recordCount()));
    }
    if (command == u"records") {
        int capacity = 0;
        panel->inspect([&](const SimPanelState& s) { capacity = s.records.capacity(); });
        return ok(u"records="_s + QString::number(panel->recordCount()) + u" capacity=" + QString::number(capacity));
    }
    if (command == u"erase") {
        panel->modify([](SimPanelState& s) { s.records.clear(); });
        return ok();
    }
    if (command == u"state")
        return ok(state(panel));
    if (command == u"clock")
        return clock(panel, w);
    if (command == u"settings")
        return ok(settings(panel));
    if (command == u"push") {
        if (w.value(2) == u"off") {
            panel->setPushTarget(QString(), 0);
            return ok();
        }
        const QStringList target = w.value(2).split(u':');
        const auto port = toInt(target.value(1), 1, 65535);
        if (target.size() != 2 || !port || target[0].isEmpty())
            return err(u"usage: push N HOST:PORT|off"_s);
        panel->setPushTarget(target[0], quint16(*port));
        return ok();
    }
    if (command == u"alarm") {
        const auto alarm = toInt(w.value(2), 0, 1);
        const auto fire = toInt(w.value(3), 0, 1);
        if (!alarm || !fire)
            return err(u"usage: alarm N ALARM FIRE"_s);
        panel->setAlarm(*alarm, *fire);
        return ok();
    }
    if (command == u"drop") {
        panel->dropConnections();
        return ok();
    }
    if (command == u"requests")
        return requests(panel);
    Q_UNUSED(host);
    return err(u"unknown command "_s + command);
}
} // namespace

QString SimControlCommands::execute(SimulatorHost& host, const QString& line)
{
    static const QRegularExpression blanks(u"\\s+"_s);
    const QStringList w = line.trimmed().split(blanks, Qt::SkipEmptyParts);
    if (w.isEmpty())
        return err(u"empty command"_s);
    const QString command = w.first().toLower();
    if (command == u"help") {
        QStringList names;
        for (const QString& entry : usage())
            names.append(entry.section(u' ', 0, 0));
        return ok(names.join(u' '));
    }
    if (command == u"panels") {
        QStringList list;
        for (SimPanel* panel : host.panels())
            list.append(describe(panel));
        return ok(QString::number(list.size()) + (list.isEmpty() ? QString() : u"; "_s + list.join(u"; "_s)));
    }
    if (command == u"add")
        return addPanel(host, w);
    if (command == u"quit") {
        Q_EMIT host.quitRequested();
        return ok(u"bye"_s);
    }
    if (w.size() < 2)
        return err(u"missing panel number"_s);
    if (command == u"fault" || command == u"rate" || command == u"delay") {
        const QList<SimPanel*> panels = targets(host, w[1]);
        if (panels.isEmpty())
            return err(u"no such panel "_s + w[1]);
        if (command == u"delay") {
            int delay = 0;
            int jitter = 0;
            if (w.size() != 3 || !SimCommandLine::parseAnswerDelay(w[2], &delay, &jitter))
                return err(u"usage: delay N|all MS[:JITTER]"_s);
            for (SimPanel* panel : panels)
                panel->setAnswerDelay(delay, jitter);
            return ok(u"delay="_s + QString::number(delay) + u':' + QString::number(jitter));
        }
        if (command == u"rate") {
            bool good = false;
            const double perSecond = w.value(2).toDouble(&good);
            if (!good || perSecond < 0 || perSecond > 100000)
                return err(u"usage: rate N|all PER_SECOND"_s);
            host.setPassageRate(w[1] == u"all" ? 0 : panels.first()->number(), perSecond);
            return ok();
        }
        QString why;
        const auto fault = SimFault::parse(w.mid(2), &why);
        if (!fault)
            return err(why);
        for (SimPanel* panel : panels)
            panel->setFault(*fault);
        return ok(fault->describe());
    }
    const QList<SimPanel*> panels = targets(host, w[1]);
    if (panels.size() != 1 || w[1] == u"all")
        return err(u"no such panel "_s + w[1]);
    return onPanel(host, panels.first(), command, w);
}

QStringList SimControlCommands::usage()
{
    return {
        u"help                              names of the commands"_s,
        u"panels                            every panel: number:serial:port, push target, records, fault"_s,
        u"add N SERIAL PORT [HOST:PORT]     start another panel (PORT 0: any free port)"_s,
        u"fault N|all MODE [delay=MS] [after=N] [count=N] [codes=C1,C2]   switch a fault; MODE none clears"_s,
        u"delay N|all MS[:JITTER]           the panel answers every request MS ms late, plus up to JITTER"_s,
        u"card N DOOR CARD [in|out]         present a card; answers code=C user=U result=WORD"_s,
        u"exit N DOOR                       press a door's exit button"_s,
        u"rate N|all PER_SECOND             present random cards continuously; 0 stops"_s,
        u"user N ID CARD GROUP              store a user"_s,
        u"getuser N ID                      a user's 44-character block, or none"_s,
        u"group N GROUP DOORS [TG1..TG4]    store a group; DOORS as four flags, e.g. 1100"_s,
        u"approve N ID 0|1                  set a user's daily approval"_s,
        u"seed N COUNT                      store COUNT granted passages"_s,
        u"records N                         record count and capacity"_s,
        u"erase N                           erase the record memory"_s,
        u"state N                           memory and counter summary"_s,
        u"clock N [dd/MM/yyyy HH:mm:ss]     show or set the panel clock"_s,
        u"settings N                        the settings record (blanks as _), readers power/buzzer+LED"_s,
        u"push N HOST:PORT|off              where live frames go"_s,
        u"alarm N ALARM FIRE                set the alarm and fire states (0 or 1)"_s,
        u"drop N                            close the panel's open station links"_s,
        u"requests N                        requests received, per command code"_s,
        u"quit                              stop the simulator"_s,
    };
}
