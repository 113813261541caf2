#pragma once

#include "ui/reports/ReportWindow.h"

class PanelChoiceBox;
class PersonFilterBox;
class QDateEdit;
class ZoneChoiceBox;

// One month at a glance: a row per person, each day's first and last granted passage, the days
// present and the time between first and last summed over the month.
class frmMonthlyView : public ReportWindow
{
    Q_OBJECT

public:
    explicit frmMonthlyView(const ReportContext& context, QWidget* parent = nullptr);

    ReportKind kind() const override { return ReportKind::Monthly; }

protected:
    void fillFilter(ReportFilter& filter) const override;
    void reloadLists(const Database& db) override;

private:
    QDateEdit* m_month = nullptr;
    PanelChoiceBox* m_panels = nullptr;
    ZoneChoiceBox* m_zones = nullptr;
    PersonFilterBox* m_persons = nullptr;
};
