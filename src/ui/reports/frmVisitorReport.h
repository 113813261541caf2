#pragma once

#include "ui/reports/ReportWindow.h"

class DateRangeBox;
class DirectionBox;
class DoorChoiceBox;
class PanelChoiceBox;
class PersonFilterBox;
class ResultBox;
class ZoneChoiceBox;

// Passages of visitor cards with the visit's details: panels, doors, zone, plate, result, dates
// and direction.
class frmVisitorReport : public ReportWindow
{
    Q_OBJECT

public:
    explicit frmVisitorReport(const ReportContext& context, QWidget* parent = nullptr);

    ReportKind kind() const override { return ReportKind::Visitors; }

protected:
    void fillFilter(ReportFilter& filter) const override;
    void reloadLists(const Database& db) override;

private:
    PanelChoiceBox* m_panels = nullptr;
    DoorChoiceBox* m_doors = nullptr;
    ZoneChoiceBox* m_zones = nullptr;
    PersonFilterBox* m_plate = nullptr;
    ResultBox* m_result = nullptr;
    DateRangeBox* m_dates = nullptr;
    DirectionBox* m_direction = nullptr;
};
