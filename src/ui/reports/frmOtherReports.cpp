#include "ui/reports/frmOtherReports.h"

#include "reports/ReportCatalogue.h"
#include "store/Clock.h"
#include "ui/common/DateRangeBox.h"
#include "ui/common/DirectionBox.h"
#include "ui/common/DoorChoiceBox.h"
#include "ui/common/OptionGroupBox.h"
#include "ui/common/PanelChoiceBox.h"

using namespace Qt::StringLiterals;

namespace {
// Option i chooses the i-th door operation, in the order of their codes.
PassageCode operationOfOption(int option)
{
    return passageCodeOf(storedNumber(PassageCode::OperatorTrigger) + option);
}
} // namespace

frmOtherReports::frmOtherReports(const ReportContext& context, QWidget* parent)
    : ReportWindow(u"frmOtherReports"_s, ReportCatalogue::formTitle(ReportKind::DoorOperations), context,
                   u"frBackupDB"_s, parent)
{
    QStringList captions;
    for (int option = 0; isDoorOperation(operationOfOption(option)); ++option)
        captions.append(ReportCatalogue::operationCaption(operationOfOption(option)));
    m_panels = new PanelChoiceBox(this);
    m_doors = new DoorChoiceBox(this);
    m_operations = new OptionGroupBox(u"frOperations"_s, u"Operasyon"_s, u"opsAccessResult"_s, captions, this,
                                      u"chkAllOperations"_s, u"Tüm Operasyonlar"_s);
    m_dates = new DateRangeBox(context.clock->now().date(), this);
    m_direction = new DirectionBox(this);
    addFilter(m_panels, 0, 0, 2, 1);
    addFilter(m_doors, 0, 1);
    addFilter(m_direction, 1, 1);
    addFilter(m_operations, 0, 2, 2, 1);
    addFilter(m_dates, 0, 3);
    reload();
}

void frmOtherReports::fillFilter(ReportFilter& filter) const
{
    m_panels->fill(filter);
    m_doors->fill(filter);
    const int option = m_operations->chosen();
    filter.operation = option < 0 ? std::nullopt : std::optional(operationOfOption(option));
    m_dates->fill(filter);
    m_direction->fill(filter);
}

void frmOtherReports::reloadLists(const Database& db)
{
    m_panels->reload(db, context());
}
