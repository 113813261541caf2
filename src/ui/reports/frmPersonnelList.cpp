#include "ui/reports/frmPersonnelList.h"

#include "reports/ReportCatalogue.h"
#include "ui/users/PersonFilterBox.h"

using namespace Qt::StringLiterals;

frmPersonnelList::frmPersonnelList(const ReportContext& context, QWidget* parent)
    : ReportWindow(u"frmPersonnelList"_s, ReportCatalogue::formTitle(ReportKind::Personnel), context, u"frDBLocation"_s,
                   parent)
{
    m_persons = new PersonFilterBox(PersonFilterBox::Everything, this);
    addFilter(m_persons, 0, 0);
    reload();
}

void frmPersonnelList::fillFilter(ReportFilter& filter) const
{
    m_persons->fill(filter);
}

void frmPersonnelList::reloadLists(const Database& db)
{
    m_persons->reload(db);
}
