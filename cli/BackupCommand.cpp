#include "BackupCommand.h"

#include "CliConsole.h"
#include "CliContext.h"
#include "CliExit.h"
#include "CliTimeText.h"
#include "operations/backup/BackupCheck.h"
#include "operations/backup/BackupList.h"
#include "operations/backup/BackupOperations.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString TimeForm = u"yyyy-MM-dd HH:mm:ss"_s;

QString timeText(const QDateTime& moment)
{
    return moment.isValid() ? moment.toString(TimeForm) : u"-"_s;
}

} // namespace

BackupCommand::BackupCommand()
{
    addSubCommand(
        { u"now"_s,
          QString(),
          u"Backs the database up into the backup folder (Yedek/) and checks the copy. Server station only."_s,
          {},
          &BackupCommand::now });
    addSubCommand(
        { u"list"_s, QString(), u"Lists the backups in the backup folder, newest first."_s, {}, &BackupCommand::list });
    addSubCommand({ u"verify"_s,
                    u"[FILE] [--before DATE]"_s,
                    u"Opens a backup (the newest when no FILE is named) and counts its passage records; with\n"
                    "--before, compares the passages dated before DATE with the main database's."_s,
                    { { u"--before"_s, u"DATE"_s, u"compare the passages dated before DATE (YYYY-MM-DD)"_s } },
                    &BackupCommand::verify,
                    1 });
}

QString BackupCommand::name() const
{
    return u"backup"_s;
}

QString BackupCommand::summary() const
{
    return u"back up the database, list and check the backups"_s;
}

int BackupCommand::check(const QStringList& arguments) const
{
    if (const int stop = CliGroupCommand::check(arguments); stop >= 0)
        return stop;
    CliArguments args;
    QString ignored;
    args.parse(arguments.mid(1), { { u"--before"_s, u"DATE"_s, {} } }, &ignored);
    if (arguments.value(0) == u"verify"_s && args.has(u"--before"_s)) {
        QString error;
        if (!CliTimeText::date(args.value(u"--before"_s), &error)) {
            CliConsole::errLine(u"backup verify: "_s + error);
            return CliExit::Usage;
        }
    }
    return -1;
}

QString BackupCommand::helpFooter() const
{
    return u"A SQLite database is copied by SQLite itself into Yedek/Yedek-<label>.db; a PostgreSQL database is\n"
           "dumped by pg_dump (custom format) into Yedek/Yedek-<label>.dump. Every backup is opened again and\n"
           "its passage records counted before it is called good. `backup now` prints \"backup=FILE\n"
           "passages=N\"; `backup verify` prints \"backup=FILE passages=N oldest=... newest=...\" and exits\n"
           "with 1 when the backup cannot be read or, with --before, differs from the main database.\n"
           "Old records are removed with `kx410ctl records delete --before DATE`, always after a checked\n"
           "backup. How to restore a backup: docs/backup.md.\n"
           "Examples:\n"
           "  kx410ctl backup now\n"
           "  kx410ctl backup verify --before 2026-03-01\n"_s;
}

int BackupCommand::now(CliContext& context, const CliArguments&)
{
    OperationContext operation = context.operationContext();
    const BackupOperations::Result result = BackupOperations(operation, context.folder().backupFolder()).backupNow();
    if (result.outcome != BackupOperations::Outcome::Done)
        return CliExit::Failed;
    CliConsole::outLine(u"backup=%1 passages=%2"_s.arg(QDir::toNativeSeparators(result.backup.backupPath))
                            .arg(result.backup.passagesInBackup));
    return CliExit::Success;
}

int BackupCommand::list(CliContext& context, const CliArguments&)
{
    for (const BackupList::Entry& entry : BackupList::in(context.folder().backupFolder()))
        CliConsole::outLine(u"%1\t%2\t%3"_s.arg(entry.fileName, entry.modified.toString(TimeForm)).arg(entry.bytes));
    return CliExit::Success;
}

int BackupCommand::verify(CliContext& context, const CliArguments& args)
{
    QString path = args.word(0);
    if (path.isEmpty()) {
        const QList<BackupList::Entry> entries = BackupList::in(context.folder().backupFolder());
        if (entries.isEmpty()) {
            CliConsole::errLine(u"There is no backup in "_s + context.folder().backupFolder());
            return CliExit::Failed;
        }
        path = entries.first().path;
    }
    QString error;
    const std::optional<QDate> before
        = args.has(u"--before"_s) ? CliTimeText::date(args.value(u"--before"_s), &error) : std::nullopt;
    const QDateTime cutoff = before ? QDateTime(*before, QTime(0, 0)) : QDateTime();
    const BackupCheck::Summary summary = BackupCheck::read(path, cutoff);
    if (!summary.ok) {
        CliConsole::errLine(summary.error);
        return CliExit::Failed;
    }
    QString line = u"backup=%1 passages=%2 oldest=%3 newest=%4"_s.arg(QDir::toNativeSeparators(path))
                       .arg(summary.passages)
                       .arg(timeText(summary.oldest), timeText(summary.newest));
    if (!before) {
        CliConsole::outLine(line);
        return CliExit::Success;
    }
    const qint64 stored = PassageBackup::storedBefore(context.db(), cutoff, &error);
    if (stored < 0) {
        CliConsole::errLine(error);
        return CliExit::Failed;
    }
    line += u" before=%1 main-before=%2"_s.arg(summary.passagesBefore).arg(stored);
    CliConsole::outLine(line);
    return stored == summary.passagesBefore ? CliExit::Success : CliExit::Failed;
}
