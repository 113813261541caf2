#pragma once

#include "ui/reports/ReportWindow.h"

class PersonFilterBox;

// The list of personnel, narrowed by person, group, company, department, plate, block and flat.
class frmPersonnelList : public ReportWindow
{
    Q_OBJECT

public:
    explicit frmPersonnelList(const ReportContext& context, QWidget* parent = nullptr);

    ReportKind kind() const override { return ReportKind::Personnel; }

protected:
    void fillFilter(ReportFilter& filter) const override;
    void reloadLists(const Database& db) override;

private:
    PersonFilterBox* m_persons = nullptr;
};
