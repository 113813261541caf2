#include "ui/common/DirectionBox.h"

#include "reports/ReportFilter.h"

using namespace Qt::StringLiterals;

DirectionBox::DirectionBox(QWidget* parent)
    : OptionGroupBox(u"frType"_s, u"Geçiş Yönü"_s, u"opsType"_s, { u"Girişler"_s, u"Çıkışlar"_s }, parent,
                     u"chkAllTypes"_s, u"Tüm Geçişler"_s)
{ }

void DirectionBox::fill(ReportFilter& filter) const
{
    switch (chosen()) {
    case 0:
        filter.direction = ReportFilter::Direction::Entry;
        break;
    case 1:
        filter.direction = ReportFilter::Direction::Exit;
        break;
    default:
        filter.direction = ReportFilter::Direction::All;
        break;
    }
}
