#include "reports/ReportDocument.h"

QList<int> ReportDocument::outputColumns() const
{
    if (!chosen.isEmpty())
        return chosen;
    QList<int> all;
    all.reserve(columns.size());
    for (int i = 0; i < columns.size(); ++i)
        all << i;
    return all;
}
