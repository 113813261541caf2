#include "ReportCommand.h"

#include "CliArguments.h"
#include "CliConsole.h"
#include "CliContext.h"
#include "CliExit.h"
#include "reports/BackupDatabase.h"
#include "reports/ReportCatalogue.h"
#include "reports/ReportExport.h"
#include "store/Translate.h"

#include <QDateTime>

using namespace Qt::Literals::StringLiterals;

namespace {

const QList<CliArguments::Option> kOptions = {
    { u"--xlsx"_s, u"FILE"_s, u"write a spreadsheet"_s },
    { u"--pdf"_s, u"FILE"_s, u"write a PDF of the printed pages"_s },
    { u"--csv"_s, u"FILE"_s, u"write comma separated UTF-8 text"_s },
    { u"--from"_s, u"DATE[ TIME]"_s, u"first day (and hour) of the passages; alone: that day only"_s },
    { u"--to"_s, u"DATE[ TIME]"_s, u"last day (and hour); dates as 2024-03-14 or 14/03/2024"_s },
    { u"--day"_s, u"DATE"_s,
      u"the day of came, not-came and first-last; any day of the month for monthly (default today)"_s },
    { u"--panel"_s, u"LIST"_s, u"panels such as 1,2,5-8 (default all; a client sees only its watched panels)"_s },
    { u"--door"_s, u"LIST"_s, u"doors 1..4 such as 1,3"_s },
    { u"--zone"_s, u"N"_s, u"global door zone"_s },
    { u"--person"_s, u"ID"_s, u"one person's user number"_s },
    { u"--group"_s, u"N"_s, u"access group"_s },
    { u"--company"_s, u"N"_s, u"company number"_s },
    { u"--department"_s, u"N"_s, u"department number"_s },
    { u"--plate"_s, u"TEXT"_s, u"plate or registry number, compared exactly"_s },
    { u"--block"_s, u"N"_s, u"block number"_s },
    { u"--flat"_s, u"N"_s, u"flat number"_s },
    { u"--result"_s, u"WHICH"_s, u"all, granted, apb, denied or unknown"_s },
    { u"--direction"_s, u"WHICH"_s, u"all, in or out"_s },
    { u"--operation"_s, u"CODE"_s, u"door operation 5..10 (door-operations only)"_s },
    { u"--state"_s, u"WHICH"_s, u"inside (default), outside or all (in-out only)"_s },
    { u"--fields"_s, u"KEYS"_s, u"columns to write, e.g. id,name,surname,date (default all)"_s },
    { u"--backup"_s, u"FILE"_s, u"report from a backup database instead of the main one"_s },
};

bool parseList(const QString& text, int low, int high, QList<int>* out)
{
    for (const QString& part : text.split(u',', Qt::SkipEmptyParts)) {
        const QStringList bounds = part.trimmed().split(u'-');
        const auto first = CliArguments::toNumber(bounds.value(0), low, high);
        const auto last = bounds.size() == 2 ? CliArguments::toNumber(bounds.value(1), low, high) : first;
        if (bounds.size() > 2 || !first || !last || *first > *last)
            return false;
        for (qint64 n = *first; n <= *last; ++n)
            out->append(int(n));
    }
    return true;
}

bool parseMoment(const QString& text, QDate* date, QTime* time)
{
    const QStringList parts = text.trimmed().split(u' ', Qt::SkipEmptyParts);
    if (parts.isEmpty() || parts.size() > 2)
        return false;
    *date = QDate::fromString(parts.at(0), u"yyyy-MM-dd"_s);
    if (!date->isValid())
        *date = QDate::fromString(parts.at(0), u"dd/MM/yyyy"_s);
    *time = QTime();
    if (parts.size() == 2) {
        *time = QTime::fromString(parts.at(1), u"HH:mm:ss"_s);
        if (!time->isValid())
            *time = QTime::fromString(parts.at(1), u"HH:mm"_s);
        if (!time->isValid())
            return false;
    }
    return date->isValid();
}

std::optional<int> optionalNumber(const CliArguments& args, const QString& name, qint64 high, QString* error)
{
    if (!args.has(name))
        return std::nullopt;
    const auto n = CliArguments::toNumber(args.value(name), 0, high);
    if (!n)
        *error = name + u" takes a number"_s;
    return n ? std::optional<int>(int(*n)) : std::nullopt;
}

// The filter from the options; false with a reason for a malformed option.
bool makeFilter(const CliArguments& args, const StationSettings& settings, const QDate& today, ReportFilter* f,
                QString* error)
{
    f->clientStation = !settings.isServer();
    f->watchedPanels = settings.watchedPanels();
    if (args.has(u"--panel"_s)) {
        f->allPanels = false;
        if (!parseList(args.value(u"--panel"_s), 1, 64, &f->panels))
            return *error = u"--panel takes panel numbers 1..64 such as 1,2,5-8"_s, false;
    }
    if (args.has(u"--door"_s)) {
        f->allDoors = false;
        if (!parseList(args.value(u"--door"_s), 1, 4, &f->doors))
            return *error = u"--door takes door numbers 1..4 such as 1,3"_s, false;
    }
    QDate date;
    QTime time;
    if (args.has(u"--from"_s)) {
        if (!parseMoment(args.value(u"--from"_s), &date, &time))
            return *error = u"--from takes a date such as 2024-03-14 or 14/03/2024, optionally with HH:mm[:ss]"_s,
                   false;
        f->allDates = false;
        f->dateStart = date;
        f->hourStart = time.isValid() ? time : QTime(0, 0, 0);
        f->twoHours = time.isValid();
    }
    if (args.has(u"--to"_s)) {
        if (!args.has(u"--from"_s))
            return *error = u"--to needs --from"_s, false;
        if (!parseMoment(args.value(u"--to"_s), &date, &time))
            return *error = u"--to takes a date such as 2024-03-14 or 14/03/2024, optionally with HH:mm[:ss]"_s, false;
        f->twoDates = true;
        f->dateEnd = date;
        f->hourEnd = time.isValid() ? time : QTime(23, 59, 59);
        f->twoHours = f->twoHours || time.isValid();
    } else {
        f->hourEnd = QTime(23, 59, 59);
    }
    f->day = today;
    if (args.has(u"--day"_s) && (!parseMoment(args.value(u"--day"_s), &f->day, &time) || time.isValid()))
        return *error = u"--day takes a date such as 2024-03-14 or 14/03/2024"_s, false;
    if (auto n = optionalNumber(args, u"--zone"_s, 1000000, error))
        f->zone = *n;
    if (auto n = optionalNumber(args, u"--person"_s, 1000000, error))
        f->person = *n;
    f->group = optionalNumber(args, u"--group"_s, 1000000, error);
    f->company = optionalNumber(args, u"--company"_s, 1000000, error);
    f->department = optionalNumber(args, u"--department"_s, 1000000, error);
    f->block = optionalNumber(args, u"--block"_s, 1000000, error);
    if (auto n = optionalNumber(args, u"--operation"_s, 10, error))
        f->operation = passageCodeOf(*n);
    if (!error->isEmpty())
        return false;
    if (args.has(u"--plate"_s))
        f->plate = args.value(u"--plate"_s);
    if (args.has(u"--flat"_s))
        f->flat = args.value(u"--flat"_s);
    const QString result = args.value(u"--result"_s);
    static const QHash<QString, ReportFilter::Result> results = { { u"all"_s, ReportFilter::Result::All },
                                                                  { u"granted"_s, ReportFilter::Result::Granted },
                                                                  { u"apb"_s, ReportFilter::Result::AntiPassback },
                                                                  { u"denied"_s, ReportFilter::Result::Denied },
                                                                  { u"unknown"_s, ReportFilter::Result::Unknown } };
    if (args.has(u"--result"_s) && !results.contains(result))
        return *error = u"--result takes all, granted, apb, denied or unknown"_s, false;
    f->result = results.value(result, ReportFilter::Result::All);
    const QString direction = args.value(u"--direction"_s, u"all"_s);
    if (direction != u"all"_s && direction != u"in"_s && direction != u"out"_s)
        return *error = u"--direction takes all, in or out"_s, false;
    f->direction = direction == u"in"_s ? ReportFilter::Direction::Entry
        : direction == u"out"_s         ? ReportFilter::Direction::Exit
                                        : ReportFilter::Direction::All;
    const QString state = args.value(u"--state"_s, u"inside"_s);
    if (state != u"inside"_s && state != u"outside"_s && state != u"all"_s)
        return *error = u"--state takes inside, outside or all"_s, false;
    f->presence = state == u"inside"_s ? ReportFilter::Presence::Inside
        : state == u"outside"_s        ? ReportFilter::Presence::Outside
                                       : ReportFilter::Presence::All;
    if (args.has(u"--fields"_s))
        f->fields = args.value(u"--fields"_s).split(u',', Qt::SkipEmptyParts);
    return true;
}

} // namespace

QString ReportCommand::name() const
{
    return u"report"_s;
}

QString ReportCommand::summary() const
{
    return u"write a report (passages, attendance, door operations, lists) to .xlsx, .pdf or .csv"_s;
}

QString ReportCommand::help() const
{
    QStringList names;
    for (ReportKind kind : ReportCatalogue::all())
        names << u"  "_s + ReportCatalogue::cliName(kind).leftJustified(16) + ReportCatalogue::reportName(kind);
    return u"usage: kx410ctl [OPTIONS] report NAME [FILTERS] --xlsx FILE | --pdf FILE | --csv FILE\n\n"
           "Reports:\n"_s
        + names.join(u'\n') + u"\n\nOptions:\n"_s + CliArguments::describe(kOptions)
        + u"\nThe column keys of --fields are listed by a report's CSV or spreadsheet header order:\n"
          "  id card name surname identity company department plate block flat group panel door\n"
          "  direction date zone operation reason host visit first last state days total\n"
          "\nExamples:\n"
          "  kx410ctl report access --from 2024-03-01 --to 2024-03-31 --result denied --xlsx denied.xlsx\n"
          "  kx410ctl report not-came --day 2024-03-14 --zone 1 --pdf absent.pdf\n"
          "  kx410ctl report door-operations --from 14/03/2024 --operation 6 --csv opened.csv\n"_s;
}

int ReportCommand::run(CliContext& context, const QStringList& arguments)
{
    CliArguments args;
    QString error;
    if (!args.parse(arguments, kOptions, &error)) {
        CliConsole::errLine(u"report: "_s + error);
        return CliExit::Usage;
    }
    const auto kind = ReportCatalogue::fromCliName(args.word(0));
    if (!kind || args.words().size() != 1) {
        CliConsole::errLine(u"report: name one report (see kx410ctl report --help)"_s);
        return CliExit::Usage;
    }
    QList<std::pair<ReportExport::Format, QString>> outputs;
    if (args.has(u"--xlsx"_s))
        outputs.append({ ReportExport::Format::Xlsx, args.value(u"--xlsx"_s) });
    if (args.has(u"--pdf"_s))
        outputs.append({ ReportExport::Format::Pdf, args.value(u"--pdf"_s) });
    if (args.has(u"--csv"_s))
        outputs.append({ ReportExport::Format::Csv, args.value(u"--csv"_s) });
    if (outputs.size() != 1) {
        CliConsole::errLine(u"report: give one of --xlsx FILE, --pdf FILE or --csv FILE"_s);
        return CliExit::Usage;
    }
    ReportFilter filter;
    if (!makeFilter(args, context.settings(), context.clock().now().date(), &filter, &error)) {
        CliConsole::errLine(u"report: "_s + error);
        return CliExit::Usage;
    }

    BackupDatabase backup;
    if (args.has(u"--backup"_s)) {
        Message fallback;
        QString why;
        if (!backup.open(args.value(u"--backup"_s), &fallback, &why)) {
            CliContext::printError(fallback);
            CliConsole::errLine(why);
        }
    }
    const Database& db = backup.choose(context.db());
    const auto& [format, path] = outputs.first();
    const QDateTime printedAt = context.clock().now();
    const ReportExport::Outcome out = ReportExport::run(db, *kind, filter, format, path, printedAt, [](qint64 rows) {
        CliConsole::errProgress(QString::number(rows) + u" rows"_s);
        return true;
    });
    CliConsole::endProgress();
    if (!out.refusal.isEmpty()) {
        CliContext::printError(out.refusal);
        return CliExit::Failed;
    }
    if (!out.ok) {
        CliConsole::errLine(u"report: "_s + out.error);
        return CliExit::Failed;
    }
    CliConsole::outLine(Translate(ReportCatalogue::recordCountText()) + u": "_s + QString::number(out.rows));
    CliConsole::outLine(path);
    return CliExit::Success;
}
