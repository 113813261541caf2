#include "ui/records/RecordPages.h"

#include "operations/panels/PanelsPushPort.h"
#include "operations/records/RecordBackfill.h"
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
    , m_roster(roster)
{
    m_monitorPage = new MonitorPage(services, bridge, roster);
    m_monitorPage->watch(m_monitor);
    m_accessPage = new AccessRecordsPage(services);
    m_accessPage->watch(m_monitor);
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

    // The bridge may go first when the window closes; a back-fill then finds no worker.
    QPointer<PanelWorkerBridge> quiet(&bridge);
    m_backfill = std::make_unique<RecordBackfill>(
        roster, [quiet](RecordBackfill::Job job) { return quiet && quiet->runQuiet(std::move(job)); });
    m_backfill->setRetryIntervalMs(BackfillRetryMs);
    m_backfill->watch(m_monitor);
    connect(m_backfill.get(), &RecordBackfill::panelFetched, m_monitorPage->panels(),
            [grid = m_monitorPage->panels()](qint32 panel, int, int added) {
                if (added > 0)
                    grid->noteRecordsFetched(panel);
            });

    // The pages go before the roster and the worker when the window closes (the tab widget's
    // pages are deleted first): the back-fill and the monitor stop with them, so neither reads
    // nor writes a roster that is gone.
    connect(m_monitorPage, &QObject::destroyed, this, &RecordPages::shutDown);
}

RecordPages::~RecordPages()
{
    shutDown();
}

void RecordPages::shutDown()
{
    // The back-fill first: it must not hand the worker a job once the monitor is gone. A job
    // already running only reports back through a guarded pointer. Whatever has arrived live is
    // stored before the database goes.
    m_backfill.reset();
    m_monitor.stop();
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

quint16 RecordPages::panelsRemotePort() const
{
    return PanelsPushPort(*m_services.db);
}

bool RecordPages::startMonitor(QString* error)
{
    LiveSettings settings;
    settings.tcpPort = panelsRemotePort();
    if (settings.tcpPort == 0) {
        if (error)
            *error = u"no panel has a remote port"_s;
        return false;
    }
    settings.listenUdp = false;
    return startMonitor(settings, error);
}

bool RecordPages::startMonitor(const LiveSettings& settings, QString* error)
{
    m_monitor.stop();
    if (!m_monitor.start(*m_services.db, settings, &m_roster, error))
        return false;
    // Whatever the panels stored while nobody listened is fetched now.
    if (m_backfill)
        m_backfill->requestAll();
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
