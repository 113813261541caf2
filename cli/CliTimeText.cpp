#include "CliTimeText.h"

#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

std::optional<QDate> CliTimeText::date(const QString& text, QString* error)
{
    const QString trimmed = text.trimmed();
    QDate date = QDate::fromString(trimmed, u"yyyy-MM-dd"_s);
    if (!date.isValid())
        date = QDate::fromString(trimmed, u"dd/MM/yyyy"_s);
    if (!date.isValid()) {
        *error = u"\""_s + text + u"\" is not a date (YYYY-MM-DD or DD/MM/YYYY)"_s;
        return std::nullopt;
    }
    return date;
}

std::optional<QTime> CliTimeText::timeOfDay(const QString& text, QString* error)
{
    static const QRegularExpression form(u"^(\\d{1,2}):(\\d{2})(?::(\\d{2}))?$"_s);
    const QRegularExpressionMatch match = form.match(text.trimmed());
    const QTime time = match.hasMatch() ? QTime(match.captured(1).toInt(), match.captured(2).toInt(),
                                                match.captured(3).isEmpty() ? 0 : match.captured(3).toInt())
                                        : QTime();
    if (!time.isValid()) {
        *error = u"\""_s + text + u"\" is not a time of day (HH:MM or HH:MM:SS, from 00:00:00 to 23:59:59)"_s;
        return std::nullopt;
    }
    return time;
}

std::optional<bool> CliTimeText::onOff(const QString& text, QString* error)
{
    const QString word = text.trimmed().toLower();
    if (word == u"on"_s || word == u"1"_s || word == u"yes"_s)
        return true;
    if (word == u"off"_s || word == u"0"_s || word == u"no"_s)
        return false;
    *error = u"\""_s + text + u"\" is neither on nor off"_s;
    return std::nullopt;
}
