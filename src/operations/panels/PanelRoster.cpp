#include "operations/panels/PanelRoster.h"

#include "operations/panels/PanelSendLog.h"
#include "store/Database.h"
#include "store/StationSettings.h"

#include <QSqlRecord>

using namespace Qt::StringLiterals;

namespace {

QString ipOf(const QSqlQuery& q)
{
    QStringList parts;
    bool allZero = true;
    for (int i = 1; i <= 4; ++i) {
        const int octet = q.value(u"Panel IP"_s + QString::number(i)).toInt();
        allZero = allZero && octet == 0;
        parts << QString::number(octet);
    }
    // Address columns never filled in mean no address at all.
    return allZero ? QString() : parts.join(u'.');
}

} // namespace

PanelRoster::PanelRoster(QObject* parent)
    : QObject(parent)
{ }

bool PanelRoster::load(const Database& db, QString* error)
{
    QList<PanelEntry> entries;
    {
        QSqlQuery q
            = db.query(u"SELECT * FROM \"PanelSettings\" ORDER BY "_s + Database::quoted(u"Sira No"_s), {}, error);
        if (!q.isActive())
            return false;
        while (q.next() && entries.size() < MaxPanels) {
            PanelEntry e;
            e.position = static_cast<int>(entries.size()) + 1;
            e.panelNumber = q.value(u"Panel ID"_s).toInt();
            e.serial = static_cast<quint16>(q.value(u"Seri No"_s).toUInt());
            e.ip = ipOf(q);
            e.port = static_cast<quint16>(q.value(u"Panel TCP Port"_s).toUInt());
            e.name = q.value(u"Panel Adi"_s).toString().trimmed();
            e.order = q.value(u"Sira No"_s).toInt();
            const QVariant offset = q.value(u"Saat Farki"_s);
            if (offset.isValid() && !offset.isNull())
                e.clockOffset = offset.toInt();
            entries << e;
        }
    }
    markOutOfStep(db, entries);
    setEntries(entries);
    Q_EMIT reloaded();
    return true;
}

void PanelRoster::refreshSendState(const Database& db)
{
    QList<PanelEntry> list = entries();
    markOutOfStep(db, list);
    {
        QMutexLocker lock(&m_mutex);
        for (int i = 0; i < m_entries.size() && i < list.size(); ++i)
            m_entries[i].outOfStep = list.at(i).outOfStep;
    }
    Q_EMIT reloaded();
}

void PanelRoster::markOutOfStep(const Database& db, QList<PanelEntry>& list)
{
    QString error;
    const QList<qint32> stale = PanelSendLog(db).outOfStep(&error);
    for (PanelEntry& e : list)
        e.outOfStep = stale.contains(e.panelNumber);
}

void PanelRoster::setEntries(const QList<PanelEntry>& entries)
{
    int selected = 0;
    {
        QMutexLocker lock(&m_mutex);
        m_entries = entries.mid(0, MaxPanels);
        for (int i = 0; i < m_entries.size(); ++i)
            m_entries[i].position = i + 1;
        if (m_selected < 1 || m_selected > m_entries.size())
            m_selected = m_entries.isEmpty() ? 0 : 1;
        selected = m_selected;
    }
    Q_EMIT selectionChanged(selected);
}

QList<PanelEntry> PanelRoster::entries() const
{
    QMutexLocker lock(&m_mutex);
    return m_entries;
}

int PanelRoster::count() const
{
    QMutexLocker lock(&m_mutex);
    return static_cast<int>(m_entries.size());
}

std::optional<PanelEntry> PanelRoster::entry(int position) const
{
    QMutexLocker lock(&m_mutex);
    if (position < 1 || position > m_entries.size())
        return std::nullopt;
    return m_entries.at(position - 1);
}

std::optional<PanelEntry> PanelRoster::entryForPanel(qint32 panelNumber) const
{
    QMutexLocker lock(&m_mutex);
    for (const PanelEntry& e : m_entries) {
        if (e.panelNumber == panelNumber)
            return e;
    }
    return std::nullopt;
}

void PanelRoster::setStationSettings(const StationSettings& settings)
{
    QMutexLocker lock(&m_mutex);
    m_server = settings.isServer();
    m_watched = settings.watchedPanels();
}

bool PanelRoster::isServer() const
{
    QMutexLocker lock(&m_mutex);
    return m_server;
}

bool PanelRoster::isReachable(int position) const
{
    QMutexLocker lock(&m_mutex);
    if (position < 1 || position > m_entries.size())
        return false;
    return m_server || m_watched.contains(m_entries.at(position - 1).panelNumber);
}

int PanelRoster::selectedPosition() const
{
    QMutexLocker lock(&m_mutex);
    return m_selected;
}

std::optional<PanelEntry> PanelRoster::selectedEntry() const
{
    return entry(selectedPosition());
}

bool PanelRoster::select(int position)
{
    {
        QMutexLocker lock(&m_mutex);
        if (position < 1 || position > m_entries.size())
            return false;
        if (m_selected == position)
            return true;
        m_selected = position;
    }
    Q_EMIT selectionChanged(position);
    return true;
}

Message PanelRoster::open(int position)
{
    if (!entry(position))
        return Message();
    if (!isReachable(position))
        return Message(u"Bu panele Client üzerinden erişilemez!"_s);
    select(position);
    return Message();
}

void PanelRoster::notifyDoorStatusChanged()
{
    Q_EMIT doorStatusChanged();
}
