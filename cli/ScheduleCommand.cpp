#include "ScheduleCommand.h"

#include "CliConsole.h"
#include "CliContext.h"
#include "CliExit.h"
#include "CliTimeText.h"
#include "operations/schedule/BackupPlanRepository.h"
#include "operations/schedule/DailySchedule.h"
#include "operations/schedule/DailySendRepository.h"
#include "store/ConfigFile.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Send = u"--send"_s;
const QString SendTime = u"--send-time"_s;
const QString SendChanged = u"--send-changed"_s;
const QString Receive = u"--receive"_s;
const QString ReceiveTime = u"--receive-time"_s;
const QString Period = u"--backup-period"_s;
const QString Day = u"--backup-day"_s;

QList<CliArguments::Option> setOptions()
{
    return { { Send, u"on|off"_s, u"the daily send of every user to every panel"_s },
             { SendTime, u"HH:MM[:SS]"_s, u"its time of day"_s },
             { SendChanged, u"on|off"_s,
               u"on: the daily send takes each panel only the users changed since its last send"_s },
             { Receive, u"on|off"_s, u"the daily retrieval of the panels' stored records"_s },
             { ReceiveTime, u"HH:MM[:SS]"_s, u"its time of day"_s },
             { Period, u"N"_s,
               u"months between two backups of the server station (%1 to %2)"_s.arg(BackupPlan::MinPeriod)
                   .arg(BackupPlan::MaxPeriod) },
             { Day, u"N"_s, u"day of the month of the backup, 1 to 31 (a shorter month takes its last day)"_s } };
}

QString onOff(bool on)
{
    return on ? u"on"_s : u"off"_s;
}

} // namespace

ScheduleCommand::ScheduleCommand()
{
    addSubCommand(
        { u"show"_s, QString(), u"Prints the daily transfers and the backup settings."_s, {}, &ScheduleCommand::show });
    addSubCommand({ u"set"_s, u"[--send on|off] [--send-time T] [--receive on|off] [--receive-time T] ..."_s,
                    u"Changes the daily transfers (at once in Config.cfg) and the backup settings."_s, setOptions(),
                    &ScheduleCommand::set });
}

QString ScheduleCommand::name() const
{
    return u"schedule"_s;
}

QString ScheduleCommand::summary() const
{
    return u"the daily send and retrieval times and the periodic backup"_s;
}

int ScheduleCommand::check(const QStringList& arguments) const
{
    if (const int stop = CliGroupCommand::check(arguments); stop >= 0)
        return stop;
    if (arguments.value(0) != u"set"_s)
        return -1;
    CliArguments args;
    QString error;
    args.parse(arguments.mid(1), setOptions(), &error);
    if (const QString why = refusal(args); !why.isEmpty()) {
        CliConsole::errLine(u"schedule set: "_s + why);
        return CliExit::Usage;
    }
    return -1;
}

QString ScheduleCommand::helpFooter() const
{
    return u"`show` prints one setting a line: daily-send, daily-send-changed, daily-receive (on|off and the\n"
           "time), backup-period, backup-day and last-backup. A running station takes new daily settings on its next "
           "tick. The\n"
           "backup settings need administrator rights; they matter on the server station only, which\n"
           "backs the database up every backup-period months on backup-day and then removes the passage\n"
           "records dated up to the first day of that month, 23:59:59.\n"
           "Examples:\n"
           "  kx410ctl schedule set --send on --send-time 06:30 --receive on --receive-time 23:00\n"
           "  kx410ctl --admin-password 1234 schedule set --backup-period 3 --backup-day 31\n"_s;
}

QString ScheduleCommand::refusal(const CliArguments& args)
{
    QString error;
    const QStringList names = { Send, SendTime, SendChanged, Receive, ReceiveTime, Period, Day };
    bool any = false;
    for (const QString& name : names)
        any = any || args.has(name);
    if (!any)
        return u"give at least one setting to change"_s;
    for (const QString& name : { Send, SendChanged, Receive }) {
        if (args.has(name) && !CliTimeText::onOff(args.value(name), &error))
            return name + u": "_s + error;
    }
    for (const QString& name : { SendTime, ReceiveTime }) {
        if (args.has(name) && !CliTimeText::timeOfDay(args.value(name), &error))
            return name + u": "_s + error;
    }
    if (args.has(Period) && !args.number(Period, BackupPlan::MinPeriod, BackupPlan::MaxPeriod, &error))
        return error;
    if (args.has(Day) && !args.number(Day, 1, 31, &error))
        return error;
    return QString();
}

int ScheduleCommand::show(CliContext& context, const CliArguments&)
{
    const DailySchedule daily = DailySchedule::from(context.settings());
    CliConsole::outLine(u"daily-send=%1 %2"_s.arg(onOff(daily.sendOn), daily.sendTime.toString(u"HH:mm:ss"_s)));
    QString error;
    const bool changedOnly = DailySendRepository(context.db()).changedOnly(&error);
    if (!error.isEmpty()) {
        CliConsole::errLine(u"daily send: "_s + error);
        return CliExit::Failed;
    }
    CliConsole::outLine(u"daily-send-changed=%1"_s.arg(onOff(changedOnly)));
    CliConsole::outLine(
        u"daily-receive=%1 %2"_s.arg(onOff(daily.retrievalOn), daily.retrievalTime.toString(u"HH:mm:ss"_s)));
    BackupPlan plan;
    if (!BackupPlanRepository(context.db()).load(&plan, &error)) {
        CliConsole::errLine(u"backup settings: "_s + error);
        return CliExit::Failed;
    }
    CliConsole::outLine(u"backup-period=%1"_s.arg(plan.periodMonths));
    CliConsole::outLine(u"backup-day=%1"_s.arg(plan.day));
    CliConsole::outLine(
        u"last-backup=%1"_s.arg(plan.lastBackup.isValid() ? plan.lastBackup.toString(u"yyyy-MM-dd"_s) : u"-"_s));
    return CliExit::Success;
}

int ScheduleCommand::set(CliContext& context, const CliArguments& args)
{
    if (const QString why = refusal(args); !why.isEmpty()) {
        CliConsole::errLine(why);
        return CliExit::Usage;
    }
    QString error;
    const bool backupChange = args.has(Period) || args.has(Day);
    BackupPlan plan;
    if (backupChange) {
        if (!context.requireAdministrator())
            return context.exitFor(WalkResult{ WalkResult::Outcome::NoRights });
        if (!BackupPlanRepository(context.db()).load(&plan, &error)) {
            CliConsole::errLine(u"backup settings: "_s + error);
            return CliExit::Failed;
        }
    }
    if (args.has(Send) || args.has(SendTime) || args.has(Receive) || args.has(ReceiveTime)) {
        const auto change = [&args](StationSettings& settings) {
            DailySchedule daily = DailySchedule::from(settings);
            QString ignored;
            if (args.has(Send))
                daily.sendOn = *CliTimeText::onOff(args.value(Send), &ignored);
            if (args.has(SendTime))
                daily.sendTime = *CliTimeText::timeOfDay(args.value(SendTime), &ignored);
            if (args.has(Receive))
                daily.retrievalOn = *CliTimeText::onOff(args.value(Receive), &ignored);
            if (args.has(ReceiveTime))
                daily.retrievalTime = *CliTimeText::timeOfDay(args.value(ReceiveTime), &ignored);
            daily.applyTo(settings);
        };
        if (!ConfigFile::update(context.folder().configFile(), change, nullptr, &error)) {
            CliConsole::errLine(context.folder().configFile() + u": "_s + error);
            return CliExit::Failed;
        }
    }
    if (args.has(SendChanged)
        && !DailySendRepository(context.db())
                .saveChangedOnly(*CliTimeText::onOff(args.value(SendChanged), &error), &error)) {
        CliConsole::errLine(u"daily send: "_s + error);
        return CliExit::Failed;
    }
    if (backupChange) {
        if (args.has(Period))
            plan.periodMonths = *args.number(Period, BackupPlan::MinPeriod, BackupPlan::MaxPeriod, &error);
        if (args.has(Day))
            plan.day = *args.number(Day, 1, 31, &error);
        if (!BackupPlanRepository(context.db()).saveSchedule(plan, &error)) {
            CliConsole::errLine(u"backup settings: "_s + error);
            return CliExit::Failed;
        }
    }
    return CliExit::Success;
}
