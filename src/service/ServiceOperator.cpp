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

void ServiceOperator::progress(int value, int maximum)
{
    // A line per tenth: a seven-minute send shows it moves without flooding the log.
    if (maximum <= 0) {
        m_loggedTenth = -1;
        return;
    }
    const int tenth = static_cast<int>(qint64(value) * 10 / maximum);
    if (tenth <= m_loggedTenth)
        return;
    m_loggedTenth = tenth;
    ServiceLog::line(u"progress: %1/%2"_s.arg(value).arg(maximum));
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
