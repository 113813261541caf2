#include "ui/reports/frmInOutReport.h"

#include "reports/ReportCatalogue.h"
#include "store/Clock.h"
#include "ui/common/DateRangeBox.h"
#include "ui/common/OptionGroupBox.h"
#include "ui/common/PanelChoiceBox.h"
#include "ui/common/ZoneChoiceBox.h"
#include "ui/users/PersonFilterBox.h"

using namespace Qt::StringLiterals;

frmInOutReport::frmInOutReport(const ReportContext& context, QWidget* parent)
    : ReportWindow(u"frmInOutReport"_s, ReportCatalogue::formTitle(ReportKind::InOut), context, u"frDBLocation"_s,
                   parent)
{
    m_zones = new ZoneChoiceBox(this);
    m_panels = new PanelChoiceBox(this);
    m_persons = new PersonFilterBox(PersonFilterBox::Person | PersonFilterBox::Group | PersonFilterBox::Company
                                        | PersonFilterBox::Department,
                                    this);
    m_presence = new OptionGroupBox(u"frPresence"_s, u"Durum"_s, u"opsPresence"_s,
                                    { u"İçeridekiler"_s, u"Dışarıdakiler"_s, u"Tümü"_s }, this);
    m_dates = new DateRangeBox(context.clock->now().date(), this);
    // Everyone's latest passage counts, however long ago, unless a date range is chosen.
    m_dates->setAllDates(true);
    addFilter(m_zones, 0, 0);
    addFilter(m_presence, 1, 0);
    addFilter(m_panels, 0, 1, 2, 1);
    addFilter(m_persons, 0, 2, 2, 1);
    addFilter(m_dates, 0, 3);
    reload();
}

void frmInOutReport::fillFilter(ReportFilter& filter) const
{
    m_zones->fill(filter);
    m_panels->fill(filter);
    m_persons->fill(filter);
    switch (m_presence->chosen()) {
    case 0:
        filter.presence = ReportFilter::Presence::Inside;
        break;
    case 1:
        filter.presence = ReportFilter::Presence::Outside;
        break;
    default:
        filter.presence = ReportFilter::Presence::All;
        break;
    }
    m_dates->fill(filter);
}

void frmInOutReport::reloadLists(const Database& db)
{
    m_zones->reload(db, context());
    m_panels->reload(db, context());
    m_persons->reload(db);
}
