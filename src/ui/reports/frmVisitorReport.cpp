#include "ui/reports/frmVisitorReport.h"

#include "reports/ReportCatalogue.h"
#include "store/Clock.h"
#include "ui/common/DateRangeBox.h"
#include "ui/common/DirectionBox.h"
#include "ui/common/DoorChoiceBox.h"
#include "ui/common/PanelChoiceBox.h"
#include "ui/common/ResultBox.h"
#include "ui/common/ZoneChoiceBox.h"
#include "ui/users/PersonFilterBox.h"

using namespace Qt::StringLiterals;

frmVisitorReport::frmVisitorReport(const ReportContext& context, QWidget* parent)
    : ReportWindow(u"frmVisitorReport"_s, ReportCatalogue::formTitle(ReportKind::Visitors), context, u"frDBLocation"_s,
                   parent)
{
    m_panels = new PanelChoiceBox(this);
    m_doors = new DoorChoiceBox(this);
    m_zones = new ZoneChoiceBox(this);
    m_plate = new PersonFilterBox(PersonFilterBox::Plate, this);
    m_result = new ResultBox(this);
    m_dates = new DateRangeBox(context.clock->now().date(), this);
    m_direction = new DirectionBox(this);
    addFilter(m_panels, 0, 0);
    addFilter(m_doors, 1, 0);
    addFilter(m_zones, 0, 1);
    addFilter(m_plate, 1, 1);
    addFilter(m_dates, 0, 2);
    addFilter(m_direction, 1, 2);
    addFilter(m_result, 0, 3, 2, 1);
    reload();
}

void frmVisitorReport::fillFilter(ReportFilter& filter) const
{
    m_panels->fill(filter);
    m_doors->fill(filter);
    m_zones->fill(filter);
    m_plate->fill(filter);
    m_result->fill(filter);
    m_dates->fill(filter);
    m_direction->fill(filter);
}

void frmVisitorReport::reloadLists(const Database& db)
{
    m_panels->reload(db, context());
    m_zones->reload(db, context());
}
