#include "ui/reports/frmReports.h"

#include "reports/ReportCatalogue.h"
#include "store/Clock.h"
#include "ui/common/DateRangeBox.h"
#include "ui/common/DirectionBox.h"
#include "ui/common/DoorChoiceBox.h"
#include "ui/common/PanelChoiceBox.h"
#include "ui/common/ResultBox.h"
#include "ui/common/ZoneChoiceBox.h"
#include "ui/users/PersonFilterBox.h"

#include <QTableView>

using namespace Qt::StringLiterals;

namespace {

// The grid's background tells which records it shows.
QColor resultColour(ReportFilter::Result result, const QPalette& palette)
{
    switch (result) {
    case ReportFilter::Result::All:
        return palette.color(QPalette::Window);
    case ReportFilter::Result::Granted:
        return QColor(224, 244, 224);
    case ReportFilter::Result::AntiPassback:
        return QColor(252, 234, 210);
    case ReportFilter::Result::Denied:
        return QColor(250, 222, 222);
    case ReportFilter::Result::Unknown:
        return QColor(250, 246, 214);
    }
    return palette.color(QPalette::Base);
}

} // namespace

frmReports::frmReports(const ReportContext& context, QWidget* parent)
    : ReportWindow(u"frmReports"_s, ReportCatalogue::formTitle(ReportKind::Access), context, u"frDBLocation"_s, parent)
{
    m_panels = new PanelChoiceBox(this);
    m_doors = new DoorChoiceBox(this);
    m_zones = new ZoneChoiceBox(this);
    m_persons = new PersonFilterBox(PersonFilterBox::Everything, this);
    m_result = new ResultBox(this);
    m_dates = new DateRangeBox(context.clock->now().date(), this);
    m_direction = new DirectionBox(this);
    addFilter(m_panels, 0, 0);
    addFilter(m_doors, 1, 0);
    addFilter(m_persons, 0, 1, 2, 1);
    addFilter(m_zones, 0, 2);
    addFilter(m_dates, 1, 2);
    addFilter(m_result, 0, 3);
    addFilter(m_direction, 1, 3);
    reload();
}

void frmReports::fillFilter(ReportFilter& filter) const
{
    m_panels->fill(filter);
    m_doors->fill(filter);
    m_zones->fill(filter);
    m_persons->fill(filter);
    m_result->fill(filter);
    m_dates->fill(filter);
    m_direction->fill(filter);
}

void frmReports::reloadLists(const Database& db)
{
    m_panels->reload(db, context());
    m_zones->reload(db, context());
    m_persons->reload(db);
}

void frmReports::reportShown(const ReportFilter& filter)
{
    QPalette palette = grid()->palette();
    palette.setColor(QPalette::Base, resultColour(filter.result, palette));
    grid()->setPalette(palette);
}
