#include "ui/reports/frmMonthlyView.h"

#include "reports/ReportCatalogue.h"
#include "store/Clock.h"
#include "ui/common/Caption.h"
#include "ui/common/PanelChoiceBox.h"
#include "ui/common/ZoneChoiceBox.h"
#include "ui/users/PersonFilterBox.h"

#include <QDateEdit>
#include <QGroupBox>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

frmMonthlyView::frmMonthlyView(const ReportContext& context, QWidget* parent)
    : ReportWindow(u"frmMonthlyView"_s, ReportCatalogue::formTitle(ReportKind::Monthly), context, u"frDBLocation"_s,
                   parent)
{
    auto* monthBox = new QGroupBox(this);
    monthBox->setObjectName(u"frMonth"_s);
    setCaption(monthBox, u"Ay"_s);
    m_month = new QDateEdit(context.clock->now().date(), monthBox);
    m_month->setObjectName(u"dateMonth"_s);
    m_month->setDisplayFormat(u"MM/yyyy"_s);
    // A date reads month first in every language.
    m_month->setLayoutDirection(Qt::LeftToRight);
    auto* monthLayout = new QVBoxLayout(monthBox);
    monthLayout->addWidget(m_month);
    monthLayout->addStretch();

    m_panels = new PanelChoiceBox(this);
    m_zones = new ZoneChoiceBox(this);
    m_persons = new PersonFilterBox(PersonFilterBox::Person | PersonFilterBox::Group | PersonFilterBox::Company
                                        | PersonFilterBox::Department,
                                    this);
    addFilter(monthBox, 0, 0);
    addFilter(m_zones, 1, 0);
    addFilter(m_panels, 0, 1, 2, 1);
    addFilter(m_persons, 0, 2, 2, 1);
    reload();
}

void frmMonthlyView::fillFilter(ReportFilter& filter) const
{
    filter.day = m_month->date();
    m_panels->fill(filter);
    m_zones->fill(filter);
    m_persons->fill(filter);
}

void frmMonthlyView::reloadLists(const Database& db)
{
    m_panels->reload(db, context());
    m_zones->reload(db, context());
    m_persons->reload(db);
}
