#include "UsersCommand.h"

#include "CliConsole.h"
#include "CliContext.h"
#include "CliExit.h"
#include "CliPanelChoice.h"
#include "CliParallelOptions.h"
#include "CliSendPreview.h"
#include "CliUserChoice.h"
#include "operations/users/UserCsvImport.h"
#include "operations/users/UserRepository.h"
#include "operations/users/UserTransfer.h"
#include "protocol/CardField.h"

#include <QFile>

using namespace Qt::Literals::StringLiterals;

namespace {
using Allowed = CliPanelChoice::Allowed;

QList<CliArguments::Option> withPanels(Allowed allowed, const QList<CliArguments::Option>& more = {})
{
    return CliPanelChoice::options(allowed) + more;
}

const CliArguments::Option kFirst{ u"--first"_s, u"N"_s, u"first user ID of the range (with --last)"_s };
const CliArguments::Option kLast{ u"--last"_s, u"N"_s, u"last user ID of the range (with --first)"_s };

// Numeric fields of `users add`: option name, lowest, highest, and where the value goes.
struct NumberField
{
    QString option;
    qint64 low;
    qint64 high;
    std::function<void(UserRow&, qint64)> set;
};

const QList<NumberField>& numberFields()
{
    static const QList<NumberField> fields = {
        { u"--id"_s, 0, 99999, [](UserRow& r, qint64 v) { r.id = static_cast<qint32>(v); } },
        { u"--card"_s, 0, MaxCardNumber, [](UserRow& r, qint64 v) { r.cardId = v; } },
        { u"--group"_s, 0, 1280, [](UserRow& r, qint64 v) { r.groupNo = static_cast<qint32>(v); } },
        { u"--pin"_s, 0, 9999, [](UserRow& r, qint64 v) { r.pin = static_cast<qint32>(v); } },
        { u"--passage-mode"_s, 0, 99, [](UserRow& r, qint64 v) { r.passageMode = static_cast<qint32>(v); } },
        { u"--type"_s, 0, 1, [](UserRow& r, qint64 v) { r.userType = userTypeOf(static_cast<qint32>(v)); } },
        { u"--company"_s, 0, 999999, [](UserRow& r, qint64 v) { r.companyNo = static_cast<qint32>(v); } },
        { u"--department"_s, 0, 999999, [](UserRow& r, qint64 v) { r.departmentNo = static_cast<qint32>(v); } },
        { u"--block"_s, 0, 999999, [](UserRow& r, qint64 v) { r.blockNo = static_cast<qint32>(v); } },
    };
    return fields;
}

// A walk that only starts once the user named by --user is found.
int withUser(CliContext& context, const CliArguments& args, const std::function<WalkResult(qint64)>& walk)
{
    const qint64 recordNo = CliUserChoice::recordNo(context, args);
    if (recordNo == 0)
        return CliExit::Failed;
    return context.exitFor(walk(recordNo));
}
} // namespace

UsersCommand::UsersCommand()
{
    addSubCommand({ u"list"_s,
                    u"[--search TEXT] [--limit N]"_s,
                    u"Shows the users of the database in ID order."_s,
                    { { u"--search"_s, u"TEXT"_s, u"only users whose ID, card or name contains TEXT"_s },
                      { u"--limit"_s, u"N"_s, u"at most N users"_s } },
                    &UsersCommand::list });
    QList<CliArguments::Option> addOptions = {
        { u"--id"_s, u"N"_s, u"panel user ID 1..20000 (required)"_s },
        { u"--card"_s, u"N"_s, u"card number 0.."_s + QString::number(MaxCardNumber) + u" (required)"_s },
        { u"--name"_s, u"TEXT"_s, u"first name"_s },
        { u"--surname"_s, u"TEXT"_s, u"surname"_s },
        { u"--group"_s, u"N"_s, u"access group number"_s },
        { u"--pin"_s, u"N"_s, u"PIN code"_s },
        { u"--passage-mode"_s, u"N"_s, u"passage mode"_s },
        { u"--type"_s, u"0|1"_s, u"0 personnel (default), 1 visitor card"_s },
        { u"--company"_s, u"N"_s, u"company number"_s },
        { u"--department"_s, u"N"_s, u"department number"_s },
        { u"--block"_s, u"N"_s, u"block number"_s },
        { u"--plate"_s, u"TEXT"_s, u"vehicle plate"_s },
    };
    addSubCommand({ u"add"_s, u"--id N --card N [--name TEXT] [--surname TEXT] [--group N] ..."_s,
                    u"Adds a user to the database (administrator)."_s, addOptions, &UsersCommand::add });
    addSubCommand({ u"remove"_s,
                    u"--user ID"_s,
                    u"Deletes a user's row from the database (administrator); the panels keep the card\n"
                    "until it is deleted from them (users delete)."_s,
                    { CliUserChoice::option(u"the user's ID"_s) },
                    &UsersCommand::remove });
    addSubCommand({ u"import-csv"_s,
                    u"FILE"_s,
                    u"Imports users from a semicolon-separated UTF-8 file (administrator), one user a line:\n"
                    "ID;Kart ID;Adi;Soyadi;Grup No;Sifre;Gecis Modu;Kullanici Tipi;Sirket No;Departman No;Plaka\n"
                    "ID and card (1.."_s
                        + QString::number(MaxCardNumber)
                        + u") are required; a header line starting with ID is skipped.\n"
                          "Existing IDs are updated. Every line is checked first: a bad line is reported with its\n"
                          "number and nothing is stored."_s,
                    {},
                    &UsersCommand::importCsv,
                    1 });
    addSubCommand(
        { u"send"_s,
          u"--panel N | --all-panels [--first N --last N | --user ID] [--changed] [--parallel N] [--dry-run]"_s,
          u"Sends the users (all with an ID above 0, an ID range, or one user) to the panels."_s,
          withPanels(Allowed::SelectedOrAll,
                     QList<CliArguments::Option>{ kFirst,
                                                  kLast,
                                                  CliUserChoice::option(u"send only this user"_s),
                                                  { u"--changed"_s,
                                                    {},
                                                    u"with --all-panels: only the users added, changed or removed\n"
                                                    "since each panel's last send (removed ones are deleted)"_s },
                                                  { u"--dry-run"_s,
                                                    {},
                                                    u"list panel by panel what would be sent and what differs\n"
                                                    "from the last send, without connecting"_s } }
                         + CliParallelOptions::options()),
          &UsersCommand::send });
    addSubCommand({ u"delete"_s, u"--user ID --panel N | --all-panels"_s,
                    u"Deletes one user from the panels' card memory; the database row stays."_s,
                    withPanels(Allowed::SelectedOrAll, { CliUserChoice::option(u"the user's ID"_s) }),
                    &UsersCommand::deleteFromPanels });
    addSubCommand({ u"erase"_s, u"--panel N | --all-panels"_s,
                    u"Erases the whole card memory of the panels (about 30 seconds a panel)."_s,
                    withPanels(Allowed::SelectedOrAll), &UsersCommand::erase });
    addSubCommand(
        { u"receive"_s, u"--panel N (--first N --last N | --user ID)"_s,
          u"Reads users back from one panel into the database (names are not on the panel)."_s,
          withPanels(Allowed::SelectedOnly, { kFirst, kLast, CliUserChoice::option(u"read only this user"_s) }),
          &UsersCommand::receive });
}

QString UsersCommand::name() const
{
    return u"users"_s;
}

QString UsersCommand::summary() const
{
    return u"card holders: list, add, remove, import-csv, send, delete, erase, receive"_s;
}

QString UsersCommand::helpFooter() const
{
    return u"Examples:\n"
           "  kx410ctl --admin-password 1234 users add --id 7 --card 1234567 --name Ayşe --surname Kaya --group 1\n"
           "  kx410ctl --yes --admin-password 1234 users send --all-panels\n"
           "  kx410ctl --yes --admin-password 1234 users receive --panel 2 --first 1 --last 100\n"_s;
}

int UsersCommand::list(CliContext& context, const CliArguments& args)
{
    QString error;
    int limit = -1;
    if (args.has(u"--limit"_s)) {
        const auto n = args.number(u"--limit"_s, 0, 1000000, &error);
        if (!n) {
            CliConsole::errLine(u"users list: "_s + error);
            return CliExit::Usage;
        }
        limit = *n;
    }
    const QList<UserRow> rows = UserRepository(context.db()).list(args.value(u"--search"_s), limit, &error);
    if (!error.isEmpty()) {
        CliConsole::errLine(u"users list: "_s + error);
        return CliExit::Failed;
    }
    CliConsole::outLine(u"ID     CARD        NAME             SURNAME          TYPE  GROUP  COMPANY"_s);
    for (const UserRow& r : rows) {
        CliConsole::outLine(QString::number(r.id).leftJustified(6) + u' ' + QString::number(r.cardId).leftJustified(11)
                            + u' ' + r.name.leftJustified(16) + u' ' + r.surname.leftJustified(16) + u' '
                            + QString::number(storedNumber(r.userType)).leftJustified(5) + u' '
                            + QString::number(r.groupNo).leftJustified(6) + u' ' + QString::number(r.companyNo));
    }
    return CliExit::Success;
}

int UsersCommand::add(CliContext& context, const CliArguments& args)
{
    if (!args.has(u"--id"_s) || !args.has(u"--card"_s)) {
        CliConsole::errLine(u"users add: --id and --card are required"_s);
        return CliExit::Usage;
    }
    UserRow row;
    for (const NumberField& field : numberFields()) {
        if (!args.has(field.option))
            continue;
        const auto value = CliArguments::toNumber(args.value(field.option), field.low, field.high);
        if (!value) {
            CliConsole::errLine(u"users add: "_s + field.option + u" takes a whole number from "_s
                                + QString::number(field.low) + u" to " + QString::number(field.high));
            return CliExit::Usage;
        }
        field.set(row, *value);
    }
    row.name = args.value(u"--name"_s);
    row.surname = args.value(u"--surname"_s);
    row.plate = args.value(u"--plate"_s);
    if (const Message refused = UserRepository::validate(row); !refused.isEmpty()) {
        CliContext::printError(refused);
        return CliExit::Failed;
    }
    if (!context.requireAdministrator())
        return CliExit::NeedsAnswer;
    Message error;
    if (!UserRepository(context.db()).add(row, &error)) {
        CliContext::printError(error);
        return CliExit::Failed;
    }
    CliConsole::outLine(u"user "_s + QString::number(row.id) + u" added"_s);
    return CliExit::Success;
}

int UsersCommand::remove(CliContext& context, const CliArguments& args)
{
    const qint64 recordNo = CliUserChoice::recordNo(context, args);
    if (recordNo == 0)
        return CliExit::Failed;
    if (!context.requireAdministrator())
        return CliExit::NeedsAnswer;
    Message error;
    if (!UserRepository(context.db()).remove(recordNo, &error)) {
        CliContext::printError(error);
        return CliExit::Failed;
    }
    CliConsole::outLine(u"user "_s + args.value(u"--user"_s) + u" removed from the database"_s);
    return CliExit::Success;
}

int UsersCommand::importCsv(CliContext& context, const CliArguments& args)
{
    if (args.words().isEmpty()) {
        CliConsole::errLine(u"users import-csv: give the file to import"_s);
        return CliExit::Usage;
    }
    QFile file(args.word(0));
    if (!file.open(QIODevice::ReadOnly)) {
        CliConsole::errLine(u"users import-csv: cannot read "_s + file.fileName() + u": "_s + file.errorString());
        return CliExit::Failed;
    }
    if (!context.requireAdministrator())
        return CliExit::NeedsAnswer;
    const UserCsvImport::Result result = UserCsvImport(context.db()).run(file);
    for (const Message& error : result.errors)
        CliContext::printError(error);
    if (!result.ok) {
        CliConsole::errLine(u"nothing imported"_s);
        return CliExit::Failed;
    }
    CliConsole::outLine(QString::number(result.added) + u" added, "_s + QString::number(result.updated)
                        + u" updated"_s);
    return CliExit::Success;
}

int UsersCommand::send(CliContext& context, const CliArguments& args)
{
    PanelTarget target = PanelTarget::Selected;
    if (const int stop = CliPanelChoice::apply(context, args, Allowed::SelectedOrAll, &target); stop >= 0)
        return stop;
    const bool range = args.has(u"--first"_s) || args.has(u"--last"_s);
    if (range && args.has(u"--user"_s)) {
        CliConsole::errLine(u"users send: give a range or --user, not both"_s);
        return CliExit::Usage;
    }
    const bool changed = args.has(u"--changed"_s);
    QString error;
    const auto parallel = CliParallelOptions::parse(args, target == PanelTarget::All, &error);
    if (!error.isEmpty() || ((changed || parallel) && (range || args.has(u"--user"_s)))
        || (changed && target != PanelTarget::All)) {
        CliConsole::errLine(
            u"users send: "_s
            + (error.isEmpty() ? u"--changed and --parallel send every user to --all-panels"_s : error));
        return CliExit::Usage;
    }
    if (args.has(u"--dry-run"_s))
        return CliSendPreview::users(context, changed);
    if (const int stop = context.rightsFirst(); stop >= 0)
        return stop;
    OperationContext operation = context.operationContext();
    UserTransfer transfer(operation);
    if (changed || parallel) {
        UserTransfer::Unattended options;
        options.walk = parallel.value_or(ParallelWalk::Options{ 1, options.walk.giveUpAfter });
        options.changedOnly = changed;
        const ParallelWalk::Result result
            = transfer.sendAllPanels(options, [](const Message& message) { CliContext::printError(message); });
        return context.exitFor(result.walk);
    }
    if (args.has(u"--user"_s))
        return withUser(context, args, [&](qint64 recordNo) { return transfer.sendSelectedUser(target, recordNo); });
    const UserSelection selection = range
        ? UserSelection::ids(UserIdRange::fromText(args.value(u"--first"_s), args.value(u"--last"_s)))
        : UserSelection::all();
    return context.exitFor(transfer.sendUsers(target, selection));
}

int UsersCommand::deleteFromPanels(CliContext& context, const CliArguments& args)
{
    PanelTarget target = PanelTarget::Selected;
    if (const int stop = CliPanelChoice::apply(context, args, Allowed::SelectedOrAll, &target); stop >= 0)
        return stop;
    if (!args.has(u"--user"_s)) {
        CliConsole::errLine(u"users delete: give --user ID"_s);
        return CliExit::Usage;
    }
    if (const int stop = context.rightsFirst(); stop >= 0)
        return stop;
    OperationContext operation = context.operationContext();
    UserTransfer transfer(operation);
    return withUser(context, args, [&](qint64 recordNo) { return transfer.deleteSelectedUser(target, recordNo); });
}

int UsersCommand::erase(CliContext& context, const CliArguments& args)
{
    PanelTarget target = PanelTarget::Selected;
    if (const int stop = CliPanelChoice::apply(context, args, Allowed::SelectedOrAll, &target); stop >= 0)
        return stop;
    if (const int stop = context.rightsFirst(); stop >= 0)
        return stop;
    OperationContext operation = context.operationContext();
    return context.exitFor(UserTransfer(operation).eraseCardMemory(target));
}

int UsersCommand::receive(CliContext& context, const CliArguments& args)
{
    PanelTarget target = PanelTarget::Selected;
    if (const int stop = CliPanelChoice::apply(context, args, Allowed::SelectedOnly, &target); stop >= 0)
        return stop;
    const bool range = args.has(u"--first"_s) || args.has(u"--last"_s);
    if (range == args.has(u"--user"_s)) {
        CliConsole::errLine(u"users receive: give --first N --last N, or --user ID"_s);
        return CliExit::Usage;
    }
    if (const int stop = context.rightsFirst(); stop >= 0)
        return stop;
    OperationContext operation = context.operationContext();
    UserTransfer transfer(operation);
    if (!range)
        return withUser(context, args, [&](qint64 recordNo) { return transfer.receiveSelectedUser(recordNo); });
    return context.exitFor(
        transfer.receiveUsers(UserIdRange::fromText(args.value(u"--first"_s), args.value(u"--last"_s))));
}
