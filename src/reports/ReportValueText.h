#pragma once

#include "reports/ReportColumn.h"

#include <QString>
#include <QVariant>

// A report value as text, the way every output shows it: dates "dd/MM/yyyy HH:mm:ss", durations
// "HH:mm", numbers as they are, nothing for an empty value.
class ReportValueText
{
public:
    static QString text(const QVariant& value, const ReportColumn& column);
    static QString dateTimeFormat();
    static QString dateFormat();
};
