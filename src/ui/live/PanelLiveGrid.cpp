#include "ui/live/PanelLiveGrid.h"

#include "operations/live/LiveMonitor.h"
#include "operations/live/LiveStatusChange.h"
#include "operations/panels/PanelRoster.h"
#include "store/Clock.h"
#include "store/Translate.h"
#include "ui/records/PassageColumns.h"

#include <QHeaderView>
#include <QSet>

using namespace Qt::StringLiterals;

PanelLiveGrid::PanelLiveGrid(PanelRoster& roster, const Clock& clock, QWidget* parent)
    : QTableWidget(parent)
    , m_roster(roster)
    , m_clock(clock)
{
    setObjectName(u"grdMonitorPanels"_s);
    setColumnCount(Count);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    verticalHeader()->setVisible(false);
    horizontalHeader()->setStretchLastSection(true);
    PassageColumns::fitMoment(this, LastRecord);
    connect(&m_roster, &PanelRoster::reloaded, this, &PanelLiveGrid::redraw);
    retranslate();
}

void PanelLiveGrid::watch(LiveMonitor& monitor)
{
    m_monitor = &monitor;
    connect(&monitor, &LiveMonitor::passagesStored, this, &PanelLiveGrid::notePassages);
    connect(&monitor, &LiveMonitor::statusChanged, this, &PanelLiveGrid::noteStatus);
    connect(&monitor, &LiveMonitor::panelConnected, this, [this](qint32 panel) { noteConnection(panel, true); });
    connect(&monitor, &LiveMonitor::panelDisconnected, this, [this](qint32 panel) { noteConnection(panel, false); });
    const QHash<qint32, QDateTime> arrivals = monitor.lastArrivals();
    for (auto it = arrivals.cbegin(); it != arrivals.cend(); ++it)
        m_states[it.key()].lastRecord = it.value();
    for (qint32 panel : monitor.connectedPanels()) {
        m_states[panel].known = true;
        m_states[panel].connected = true;
    }
    redraw();
}

void PanelLiveGrid::notePassages(const QList<RecordRow>& rows)
{
    QSet<qint32> panels;
    for (const RecordRow& row : rows)
        panels.insert(row.panelId);
    for (qint32 panel : std::as_const(panels)) {
        QDateTime arrived = m_monitor ? m_monitor->lastArrival(panel) : QDateTime();
        if (!arrived.isValid())
            arrived = m_clock.now();
        State& state = m_states[panel];
        state.lastRecord = arrived;
        // A passage proves the link is up even if its first frame was missed.
        state.known = true;
        state.connected = true;
        showRow(rowOf(panel), panel);
    }
}

void PanelLiveGrid::noteStatus(const LiveStatusChange& change)
{
    State& state = m_states[change.panelNumber];
    state.note = change.message().turkish();
    showRow(rowOf(change.panelNumber), change.panelNumber);
}

void PanelLiveGrid::noteConnection(qint32 panelNumber, bool connected)
{
    State& state = m_states[panelNumber];
    state.known = true;
    state.connected = connected;
    showRow(rowOf(panelNumber), panelNumber);
}

void PanelLiveGrid::noteRecordsFetched(qint32 panelNumber)
{
    m_states[panelNumber].lastRecord = m_clock.now();
    showRow(rowOf(panelNumber), panelNumber);
}

int PanelLiveGrid::rowOf(qint32 panelNumber) const
{
    for (int row = 0; row < rowCount(); ++row) {
        const QTableWidgetItem* item = this->item(row, Panel);
        if (item && item->data(Qt::UserRole).toInt() == panelNumber)
            return row;
    }
    return -1;
}

QString PanelLiveGrid::noteOf(qint32 panelNumber) const
{
    return m_states.value(panelNumber).note;
}

QDateTime PanelLiveGrid::lastRecordOf(qint32 panelNumber) const
{
    return m_states.value(panelNumber).lastRecord;
}

QTableWidgetItem* PanelLiveGrid::cell(int row, int column)
{
    QTableWidgetItem* item = this->item(row, column);
    if (!item) {
        item = new QTableWidgetItem;
        setItem(row, column, item);
    }
    return item;
}

void PanelLiveGrid::showRow(int row, qint32 panelNumber)
{
    if (row < 0)
        return;
    const State state = m_states.value(panelNumber);
    QString link;
    if (state.known)
        link = state.connected ? Translate(u"Bağlı"_s) : Translate(u"Bağlantı Yok"_s);
    cell(row, Link)->setText(link);
    cell(row, LastRecord)
        ->setText(state.lastRecord.isValid() ? state.lastRecord.toString(u"dd/MM/yyyy HH:mm:ss"_s) : QString());
    QTableWidgetItem* note = cell(row, Note);
    note->setText(state.note.isEmpty() ? QString() : Translate(state.note));
    note->setData(Qt::UserRole, state.note);
    note->setForeground(state.note.isEmpty() ? QBrush() : QBrush(QColor(0xC6, 0x28, 0x28)));
}

void PanelLiveGrid::redraw()
{
    const QList<PanelEntry> entries = m_roster.entries();
    setRowCount(int(entries.size()));
    for (int row = 0; row < entries.size(); ++row) {
        const PanelEntry& entry = entries.at(row);
        QTableWidgetItem* panel = cell(row, Panel);
        panel->setText(QString::number(entry.panelNumber));
        panel->setData(Qt::UserRole, entry.panelNumber);
        cell(row, Name)->setText(entry.name.trimmed());
        showRow(row, entry.panelNumber);
    }
}

void PanelLiveGrid::retranslate()
{
    setHorizontalHeaderLabels({ Translate(u"Panel"_s), Translate(u"Panel Adı"_s), Translate(u"Bağlantı"_s),
                                Translate(u"Son Kayıt"_s), Translate(u"Durum"_s) });
    redraw();
}
