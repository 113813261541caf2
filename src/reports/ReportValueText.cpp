#include "reports/ReportValueText.h"

#include "reports/ReportRowSource.h"

#include <QDateTime>

using namespace Qt::StringLiterals;

namespace {

void putDigits(QChar*& out, int value, int width)
{
    for (int i = width - 1; i >= 0; --i) {
        out[i] = QChar(u'0' + value % 10);
        value /= 10;
    }
    out += width;
}

// "dd/MM/yyyy" and optionally " HH:mm:ss" written digit by digit: a format string is read again
// for every value otherwise, which dominates exports of many rows. Years outside 1..9999 go the
// general way.
QString fastText(const QDate& date, const QTime* time)
{
    int year = 0, month = 0, day = 0;
    date.getDate(&year, &month, &day);
    if (year < 1 || year > 9999)
        return time ? QDateTime(date, *time).toString(ReportValueText::dateTimeFormat())
                    : date.toString(ReportValueText::dateFormat());
    QString text(time ? 19 : 10, Qt::Uninitialized);
    QChar* out = text.data();
    putDigits(out, day, 2);
    *out++ = u'/';
    putDigits(out, month, 2);
    *out++ = u'/';
    putDigits(out, year, 4);
    if (time) {
        *out++ = u' ';
        putDigits(out, time->hour(), 2);
        *out++ = u':';
        putDigits(out, time->minute(), 2);
        *out++ = u':';
        putDigits(out, time->second(), 2);
    }
    return text;
}

} // namespace

QString ReportValueText::text(const QVariant& value, const ReportColumn& column)
{
    if (!value.isValid() || value.isNull())
        return QString();
    switch (column.type) {
    case ReportColumn::Type::DateTime: {
        const QDateTime dt = value.toDateTime();
        if (!dt.isValid())
            return QString();
        const QTime time = dt.time();
        return fastText(dt.date(), &time);
    }
    case ReportColumn::Type::Date: {
        const QDate date = value.toDate();
        return date.isValid() ? fastText(date, nullptr) : QString();
    }
    case ReportColumn::Type::Duration:
        return ReportRowSource::durationText(value.toLongLong());
    default:
        return value.toString();
    }
}

QString ReportValueText::dateTimeFormat()
{
    return u"dd/MM/yyyy HH:mm:ss"_s;
}

QString ReportValueText::dateFormat()
{
    return u"dd/MM/yyyy"_s;
}
