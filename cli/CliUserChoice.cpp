#include "CliUserChoice.h"

#include "CliConsole.h"
#include "CliContext.h"
#include "operations/users/UserRepository.h"

using namespace Qt::Literals::StringLiterals;

CliArguments::Option CliUserChoice::option(const QString& help)
{
    return { u"--user"_s, u"ID"_s, help };
}

qint64 CliUserChoice::recordNo(CliContext& context, const CliArguments& args)
{
    QString error;
    const auto id = args.number(u"--user"_s, 0, 99999, &error);
    if (!id) {
        CliConsole::errLine(error);
        return 0;
    }
    const auto row = UserRepository(context.db()).byId(*id);
    if (!row) {
        CliConsole::errLine(u"no user with ID "_s + QString::number(*id) + u" in the database (see users list)"_s);
        return 0;
    }
    return row->recordNo;
}
