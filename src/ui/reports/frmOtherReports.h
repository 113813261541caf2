#pragma once

#include "ui/reports/ReportWindow.h"

class DateRangeBox;
class DirectionBox;
class DoorChoiceBox;
class OptionGroupBox;
class PanelChoiceBox;

// The door operations the panels store beside the passages: operator triggers, opening and
// closing, exit buttons, and the weekly program's opening and closing.
class frmOtherReports : public ReportWindow
{
    Q_OBJECT

public:
    explicit frmOtherReports(const ReportContext& context, QWidget* parent = nullptr);

    ReportKind kind() const override { return ReportKind::DoorOperations; }
    PanelChoiceBox* panels() const { return m_panels; }
    DateRangeBox* dates() const { return m_dates; }

protected:
    void fillFilter(ReportFilter& filter) const override;
    void reloadLists(const Database& db) override;

private:
    PanelChoiceBox* m_panels = nullptr;
    DoorChoiceBox* m_doors = nullptr;
    OptionGroupBox* m_operations = nullptr;
    DateRangeBox* m_dates = nullptr;
    DirectionBox* m_direction = nullptr;
};
