#include "ui/records/RecordPages.h"

#include "operations/records/RecordBackfill.h"
#include "operations/station/Station.h"
#include "store/Database.h"
#include "ui/common/Caption.h"
#include "ui/common/PanelTargetBox.h"
#include "ui/live/MonitorPage.h"
#include "ui/live/PanelLiveGrid.h"
#include "ui/main/PanelWorkerBridge.h"
#include "ui/records/AccessRecordsPage.h"
#include "ui/records/RecordRetrievalBox.h"

#include <QBoxLayout>
#include <QEvent>
#include <QPointer>
#include <QTabWidget>

using namespace Qt::StringLiterals;

namespace {
QBoxLayout* boxHolding(QLayout* layout, QWidget* widget, int* index)
{
    if (!layout)
        return nullptr;
    if (auto* box = qobject_cast<QBoxLayout*>(layout)) {
        const int at = box->indexOf(widget);
        if (at >= 0) {
            *index = at;
            return box;
        }
    }
    for (int i = 0; i < layout->count(); ++i) {
        if (QBoxLayout* found = boxHolding(layout->itemAt(i)->layout(), widget, index))
            return found;
    }
    return nullptr;
}
} // namespace

RecordPages::RecordPages(QTabWidget* tabs, const PageServices& services, PanelWorkerBridge& bridge, PanelRoster& roster,
                         PanelTargetBox& recordTarget)
    : QObject(tabs)
    , m_services(services)
{
    LiveMonitor& live = services.station->live();
    m_monitorPage = new MonitorPage(services, bridge, roster);
    m_monitorPage->watch(live);
    m_accessPage = new AccessRecordsPage(services);
    m_accessPage->watch(live);
    m_retrieval = new RecordRetrievalBox(bridge, recordTarget, services.db);
    m_accessPage->follow(*m_retrieval);
    // Beside the choice it reads; a page without a box layout gets it on the access-record page.
    if (!placeAfter(&recordTarget, m_retrieval))
        m_accessPage->layout()->addWidget(m_retrieval);

    tabs->addTab(m_monitorPage, QString());
    setCaption(m_monitorPage, u"Canlı İzleme"_s);
    tabs->addTab(m_accessPage, QString());
    setCaption(m_accessPage, u"Geçiş Kayıtları"_s);
    tabs->window()->installEventFilter(this);

    // The pages go before the worker when the window closes (the tab widget's pages are deleted
    // first): the back-fill and the monitor stop with them, and whatever arrived is stored.
    connect(m_monitorPage, &QObject::destroyed, this, &RecordPages::shutDown);
}

RecordPages::~RecordPages()
{
    shutDown();
}

void RecordPages::shutDown()
{
    if (m_closing)
        return;
    m_closing = true;
    m_services.station->stopLive();
}

LiveMonitor& RecordPages::monitor()
{
    return m_services.station->live();
}

RecordBackfill* RecordPages::backfill() const
{
    return m_closing ? nullptr : m_services.station->backfill();
}

RecordPages* RecordPages::install(QTabWidget* tabs, const PageServices& services, PanelWorkerBridge& bridge,
                                  PanelRoster& roster, PanelTargetBox& recordTarget)
{
    auto* pages = new RecordPages(tabs, services, bridge, roster, recordTarget);
    QString error;
    if (!pages->startMonitor(&error))
        qWarning().noquote() << "live monitor not started:" << error;
    return pages;
}

bool RecordPages::startMonitor(QString* error)
{
    if (m_closing || !m_services.station->startLive(error))
        return false;
    if (RecordBackfill* backfill = m_services.station->backfill()) {
        connect(backfill, &RecordBackfill::panelFetched, m_monitorPage->panels(),
                [grid = m_monitorPage->panels()](qint32 panel, int, int added) {
                    if (added > 0)
                        grid->noteRecordsFetched(panel);
                });
    }
    return true;
}

bool RecordPages::placeAfter(QWidget* anchor, QWidget* widget)
{
    QWidget* parent = anchor ? anchor->parentWidget() : nullptr;
    if (!parent)
        return false;
    int index = -1;
    QBoxLayout* box = boxHolding(parent->layout(), anchor, &index);
    if (!box)
        return false;
    box->insertWidget(index + 1, widget);
    return true;
}

void RecordPages::retranslate()
{
    m_monitorPage->retranslate();
    m_accessPage->retranslate();
}

bool RecordPages::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    return QObject::eventFilter(watched, event);
}
