#pragma once

#include "ui/reports/ReportWindow.h"

class DateRangeBox;
class OptionGroupBox;
class PanelChoiceBox;
class PersonFilterBox;
class ZoneChoiceBox;

// Who is inside (or outside) each global zone, judged by each person's latest granted passage
// there: zone, panels, person, group, company, department and the passages' dates.
class frmInOutReport : public ReportWindow
{
    Q_OBJECT

public:
    explicit frmInOutReport(const ReportContext& context, QWidget* parent = nullptr);

    ReportKind kind() const override { return ReportKind::InOut; }

protected:
    void fillFilter(ReportFilter& filter) const override;
    void reloadLists(const Database& db) override;

private:
    ZoneChoiceBox* m_zones = nullptr;
    PanelChoiceBox* m_panels = nullptr;
    PersonFilterBox* m_persons = nullptr;
    OptionGroupBox* m_presence = nullptr;
    DateRangeBox* m_dates = nullptr;
};
