#include "ui/reports/frmGelmeyenFirstLastReports.h"

#include "reports/ReportCatalogue.h"
#include "store/Clock.h"
#include "ui/common/Caption.h"
#include "ui/common/OptionGroupBox.h"
#include "ui/common/ZoneChoiceBox.h"
#include "ui/users/PersonFilterBox.h"

#include <QDateEdit>
#include <QGroupBox>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

const QList<ReportKind>& kinds()
{
    static const QList<ReportKind> order = { ReportKind::Came, ReportKind::NotCome, ReportKind::FirstInLastOut };
    return order;
}

} // namespace

frmGelmeyenFirstLastReports::frmGelmeyenFirstLastReports(const ReportContext& context, QWidget* parent)
    : ReportWindow(u"frmGelmeyenFirstLastReports"_s, ReportCatalogue::formTitle(ReportKind::Came), context,
                   u"frDBLocation"_s, parent)
{
    QStringList names;
    for (ReportKind k : kinds())
        names.append(ReportCatalogue::reportName(k));
    m_type = new OptionGroupBox(u"frReportType"_s, u"Rapor"_s, u"opsReportType"_s, names, this);

    auto* dayBox = new QGroupBox(this);
    dayBox->setObjectName(u"frDay"_s);
    setCaption(dayBox, u"Tarih"_s);
    m_day = new QDateEdit(context.clock->now().date(), dayBox);
    m_day->setObjectName(u"dateGelmeyen"_s);
    m_day->setDisplayFormat(u"dd/MM/yyyy"_s);
    m_day->setCalendarPopup(true);
    // A date reads day first in every language.
    m_day->setLayoutDirection(Qt::LeftToRight);
    auto* dayLayout = new QVBoxLayout(dayBox);
    dayLayout->addWidget(m_day);
    dayLayout->addStretch();

    m_zones = new ZoneChoiceBox(this);
    m_persons
        = new PersonFilterBox(PersonFilterBox::Group | PersonFilterBox::Company | PersonFilterBox::Department, this);
    addFilter(m_type, 0, 0);
    addFilter(dayBox, 1, 0);
    addFilter(m_persons, 0, 1, 2, 1);
    addFilter(m_zones, 0, 2, 2, 1);
    // The fields of the chosen report are offered for export.
    connect(m_type, &OptionGroupBox::changed, this, &frmGelmeyenFirstLastReports::reload);
    reload();
}

ReportKind frmGelmeyenFirstLastReports::kind() const
{
    return kinds().value(qMax(0, m_type->chosen()), ReportKind::Came);
}

void frmGelmeyenFirstLastReports::fillFilter(ReportFilter& filter) const
{
    filter.day = m_day->date();
    m_zones->fill(filter);
    m_persons->fill(filter);
}

void frmGelmeyenFirstLastReports::reloadLists(const Database& db)
{
    m_zones->reload(db, context());
    m_persons->reload(db);
}
