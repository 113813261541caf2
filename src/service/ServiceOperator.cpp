#include "ServiceOperator.h"

#include "ServiceLog.h"

using namespace Qt::StringLiterals;

namespace {
// A message on one log line.
QString oneLine(const Message& message)
{
    return message.turkish().simplified();
}
} // namespace

bool ServiceOperator::ask(const Message& question)
{
    ServiceLog::line(u"question answered No: "_s + oneLine(question));
    return false;
}

void ServiceOperator::tell(const Message& message, Kind kind)
{
    const QString prefix = kind == Kind::Error ? u"error: "_s : kind == Kind::Warning ? u"warning: "_s : u"message: "_s;
    ServiceLog::line(prefix + oneLine(message));
}

void ServiceOperator::progress(int, int)
{
    // Progress is for a person watching a bar; the log keeps the outcomes only.
}

void ServiceOperator::status(const Message& line)
{
    if (!line.isEmpty())
        ServiceLog::line(u"status: "_s + oneLine(line));
}

void ServiceOperator::requestLogin() { }

bool ServiceOperator::cancelRequested() const
{
    return false;
}
