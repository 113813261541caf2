#include "reports/ReportValueText.h"

#include "reports/ReportRowSource.h"

#include <QDateTime>

using namespace Qt::StringLiterals;

QString ReportValueText::text(const QVariant& value, const ReportColumn& column)
{
    if (!value.isValid() || value.isNull())
        return QString();
    switch (column.type) {
    case ReportColumn::Type::DateTime:
        return value.toDateTime().toString(dateTimeFormat());
    case ReportColumn::Type::Date:
        return value.toDate().toString(dateFormat());
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
