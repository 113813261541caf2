#include "ui/common/ResultBox.h"

#include "reports/ReportCatalogue.h"
#include "reports/ReportFilter.h"

using namespace Qt::StringLiterals;

namespace {

const QList<ReportFilter::Result>& results()
{
    static const QList<ReportFilter::Result> order
        = { ReportFilter::Result::All, ReportFilter::Result::Granted, ReportFilter::Result::AntiPassback,
            ReportFilter::Result::Denied, ReportFilter::Result::Unknown };
    return order;
}

QStringList captions()
{
    QStringList list;
    for (ReportFilter::Result result : results())
        list.append(ReportCatalogue::resultCaption(result));
    return list;
}

} // namespace

ResultBox::ResultBox(QWidget* parent)
    : OptionGroupBox(u"frAccessResult"_s, u"Sonuç"_s, u"opsAccessResult"_s, captions(), parent)
{ }

void ResultBox::fill(ReportFilter& filter) const
{
    filter.result = results().value(qMax(0, chosen()), ReportFilter::Result::All);
}
