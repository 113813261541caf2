#pragma once

#include "ui/reports/ReportWindow.h"

class OptionGroupBox;
class PersonFilterBox;
class QDateEdit;
class ZoneChoiceBox;

// Attendance of one day: who came, who did not come, and each person's first and last granted
// passage, chosen in opsReportType; the day in dateGelmeyen.
class frmGelmeyenFirstLastReports : public ReportWindow
{
    Q_OBJECT

public:
    explicit frmGelmeyenFirstLastReports(const ReportContext& context, QWidget* parent = nullptr);

    ReportKind kind() const override;
    ZoneChoiceBox* zones() const { return m_zones; }

protected:
    void fillFilter(ReportFilter& filter) const override;
    void reloadLists(const Database& db) override;

private:
    OptionGroupBox* m_type = nullptr;
    QDateEdit* m_day = nullptr;
    ZoneChoiceBox* m_zones = nullptr;
    PersonFilterBox* m_persons = nullptr;
};
