#pragma once

#include "ui/reports/ReportWindow.h"

class DateRangeBox;
class DirectionBox;
class DoorChoiceBox;
class PanelChoiceBox;
class PersonFilterBox;
class ResultBox;
class ZoneChoiceBox;

// The personnel passage report with every filter: panels, doors, global zone, person, group,
// company, department, plate, block, flat, result, dates and hours, direction.
class frmReports : public ReportWindow
{
    Q_OBJECT

public:
    explicit frmReports(const ReportContext& context, QWidget* parent = nullptr);

    ReportKind kind() const override { return ReportKind::Access; }
    PanelChoiceBox* panels() const { return m_panels; }
    ZoneChoiceBox* zones() const { return m_zones; }
    PersonFilterBox* persons() const { return m_persons; }
    DateRangeBox* dates() const { return m_dates; }

protected:
    void fillFilter(ReportFilter& filter) const override;
    void reloadLists(const Database& db) override;
    void reportShown(const ReportFilter& filter) override;

private:
    PanelChoiceBox* m_panels = nullptr;
    DoorChoiceBox* m_doors = nullptr;
    ZoneChoiceBox* m_zones = nullptr;
    PersonFilterBox* m_persons = nullptr;
    ResultBox* m_result = nullptr;
    DateRangeBox* m_dates = nullptr;
    DirectionBox* m_direction = nullptr;
};
