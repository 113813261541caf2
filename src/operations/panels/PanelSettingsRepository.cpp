#include "operations/panels/PanelSettingsRepository.h"

#include "operations/panels/PanelChoices.h"
#include "operations/panels/PanelRoster.h"
#include "store/Database.h"

#include <QSqlQuery>

using namespace Qt::StringLiterals;

namespace {

const QString kTable = u"PanelSettings"_s;
const QString kOrder = u"Sira No"_s;
const QString kNumber = u"Panel ID"_s;
const QString kSerial = u"Seri No"_s;
const QString kOffset = u"Saat Farki"_s;
const QString kReadAt = u"Saat Okuma Zamani"_s;

QString n(int i)
{
    return QString::number(i);
}

// Every column the settings window writes after the serial and the panel number, in the order it
// writes them (the door columns last). Slot is PanelSlot or const PanelSlot.
template <typename Slot, typename Number, typename Text> void visitWritten(Slot& slot, Number number, Text text)
{
    auto& s = slot.settings;
    number(u"Panel Model"_s, s.model);
    number(u"Kontrol Modu"_s, s.controlMode);
    number(u"Kart Sayisi"_s, s.cardCount);
    for (int i = 0; i < 4; ++i)
        number(u"Panel M"_s + n(i + 1) + u" Role"_s, s.masterRelayTimes[i]);
    number(u"SingleUart"_s, s.singleUart);
    for (int i = 0; i < 4; ++i)
        number(u"Panel GW"_s + n(i + 1), s.gateway[i]);
    for (int i = 0; i < 4; ++i)
        number(u"Panel IP"_s + n(i + 1), s.ip[i]);
    number(u"Panel TCP Port"_s, s.tcpPort);
    for (int i = 0; i < 4; ++i)
        number(u"Panel Subnet"_s + n(i + 1), s.subnet[i]);
    for (int i = 0; i < 4; ++i)
        number(u"Panel Remote IP"_s + n(i + 1), s.remoteIp[i]);
    text(u"Panel Adi"_s, s.name);
    number(u"Global Access Count Control"_s, s.globalAccessCountControl);
    number(u"Global MaxIn Count Control"_s, s.globalMaxInCountControl);
    number(u"Global Capacity Control"_s, s.globalCapacityControl);
    number(u"Panel Local Capacity"_s, s.localCapacity);
    number(u"Panel Local Capacity Value"_s, s.localCapacityValue);
    number(u"Panel Same Tag Block"_s, s.sameTagBlock);
    number(u"Panel Same Tag Block Type"_s, s.sameTagBlockType);
    number(u"Panel Same Tag Block MinSec"_s, s.sameTagBlockMinSec);
    number(u"Status Data Update"_s, s.statusDataUpdate);
    number(u"Status Data Update Type"_s, s.statusDataUpdateType);
    number(u"Status Data Update Time"_s, s.statusDataUpdateTime);
    number(u"Buton Aktif"_s, s.buttonActive);
    number(u"Button Loop"_s, s.buttonLoop);
    number(u"Loop Trigger Time"_s, s.loopTriggerTime);
    number(u"Lokal APB"_s, s.localApb);
    number(u"Lokal APB2"_s, s.localApb2);
    number(u"Global APB"_s, s.globalApb);
    number(u"Panel Global Bolge1"_s, s.globalZone1);
    number(u"Panel Global Bolge2"_s, s.globalZone2);
    number(u"Gecici Grup Aktif"_s, s.temporaryGroupActive);
    number(u"Yangin Aktif"_s, s.fireActive);
    number(u"Yangin Yayin Aktif"_s, s.fireBroadcastActive);
    for (int d = 0; d < 4; ++d) {
        auto& door = s.doors[d];
        const QString k = u"Kapi"_s + n(d + 1);
        number(k + u" Aktif"_s, door.active);
        text(k + u" Adi"_s, slot.doorNames[d]);
        number(k + u" Role"_s, door.relayTime);
        number(k + u" Calisma Modu"_s, door.workingMode);
        number(k + u" Kapi Tipi"_s, door.doorType);
        number(k + u" Gecis Modu"_s, door.accessMode);
        number(k + u" Modeli"_s, door.readerModel);
        number(k + u" Role Secimi"_s, door.relayChoice);
        number(k + u" Role No"_s, door.relayNo);
        number(k + u" Button Loop"_s, door.buttonLoop);
        number(k + u" Lokal Bolge"_s, door.localZone);
    }
}

// The columns the window leaves alone but the record carries.
template <typename Slot, typename Number> void visitKept(Slot& slot, Number number)
{
    auto& s = slot.settings;
    number(u"Panel Remote TCP Port"_s, s.remoteTcpPort);
    number(u"Panel Local Capacity Clear"_s, s.localCapacityClear);
    number(u"Gece Kapasiteyi Sil"_s, s.clearCapacityAtNight);
    number(u"Global APB Grup"_s, s.globalApbGroup);
}

PanelSlot slotFrom(const QSqlQuery& q)
{
    PanelSlot slot;
    slot.order = q.value(kOrder).toInt();
    slot.panelNumber = q.value(kNumber).toInt();
    slot.serial = static_cast<quint16>(q.value(kSerial).toUInt());
    const auto number = [&q](const QString& column, qint32& value) { value = q.value(column).toInt(); };
    visitWritten(slot, number,
                 [&q](const QString& column, QString& value) { value = q.value(column).toString().trimmed(); });
    visitKept(slot, number);
    for (int d = 0; d < 4; ++d) {
        if (slot.doorNames[d].isEmpty())
            slot.doorNames[d] = PanelSlot::defaultDoorName(d + 1);
        // A row written before the relay choice was set reads as the door's own relay.
        if (slot.settings.doors[d].relayChoice == 0)
            slot.settings.doors[d].relayChoice = PanelChoices::RelayChoiceDoorOnly;
    }
    const QVariant offset = q.value(kOffset);
    if (offset.isValid() && !offset.isNull())
        slot.clockOffset = offset.toInt();
    slot.clockReadAt = Database::dateTime(q.value(kReadAt));
    return slot;
}

void writtenColumns(const PanelSlot& slot, QStringList& columns, QVariantList& values)
{
    columns << kSerial << kNumber;
    values << static_cast<int>(slot.serial)
           << (slot.panelNumber > 0 ? QVariant(slot.panelNumber) : QVariant(QMetaType(QMetaType::Int)));
    visitWritten(
        slot,
        [&](const QString& column, const qint32& value) {
            columns << column;
            values << value;
        },
        [&](const QString& column, const QString& value) {
            columns << column;
            values << value;
        });
}

} // namespace

PanelSettingsRepository::PanelSettingsRepository(Database& db)
    : m_db(db)
{ }

std::optional<PanelSlot> PanelSettingsRepository::first(const QString& where, const QVariantList& params,
                                                        QString* error) const
{
    QSqlQuery q = m_db.query(u"SELECT * FROM "_s + Database::quoted(kTable) + u" WHERE "_s + where + u" ORDER BY "_s
                                 + Database::quoted(kOrder),
                             params, error);
    if (!q.next())
        return std::nullopt;
    return slotFrom(q);
}

std::optional<PanelSlot> PanelSettingsRepository::slot(qint32 order, QString* error) const
{
    return first(Database::quoted(kOrder) + u" = ?"_s, { order }, error);
}

std::optional<PanelSlot> PanelSettingsRepository::slotOfPanel(qint32 panelNumber, QString* error) const
{
    return first(Database::quoted(kNumber) + u" = ?"_s, { panelNumber }, error);
}

bool PanelSettingsRepository::store(const PanelSlot& slot, QString* error, bool* missing) const
{
    QStringList columns;
    QVariantList values;
    writtenColumns(slot, columns, values);
    QStringList assignments;
    for (const QString& column : std::as_const(columns))
        assignments << Database::quoted(column) + u" = ?"_s;
    values << slot.order;
    const int changed = m_db.execCount(u"UPDATE "_s + Database::quoted(kTable) + u" SET "_s + assignments.join(u", "_s)
                                           + u" WHERE "_s + Database::quoted(kOrder) + u" = ?"_s,
                                       values, error);
    if (missing)
        *missing = changed == 0;
    return changed > 0;
}

bool PanelSettingsRepository::carrySerial(qint32 panelNumber, quint16 serial, QString* error) const
{
    return m_db.exec(u"UPDATE \"GroupsDetail\" SET "_s + Database::quoted(kSerial) + u" = ? WHERE "_s
                         + Database::quoted(u"Panel No"_s) + u" = ?"_s,
                     { static_cast<int>(serial), panelNumber }, error);
}

bool PanelSettingsRepository::numberTakenElsewhere(qint32 panelNumber, qint32 order, bool* taken, QString* error) const
{
    const QVariant count
        = m_db.scalar(u"SELECT COUNT(*) FROM "_s + Database::quoted(kTable) + u" WHERE "_s + Database::quoted(kNumber)
                          + u" = ? AND "_s + Database::quoted(kOrder) + u" <> ?"_s,
                      { panelNumber, order }, error);
    if (!count.isValid())
        return false;
    *taken = count.toInt() > 0;
    return true;
}

qint32 PanelSettingsRepository::freeSlot(QString* error) const
{
    QString failure;
    const QList<QVariantList> rows
        = m_db.rows(u"SELECT "_s + Database::quotedList({ kOrder, kSerial }) + u" FROM "_s + Database::quoted(kTable)
                        + u" ORDER BY "_s + Database::quoted(kOrder),
                    {}, &failure);
    if (!failure.isEmpty()) {
        if (error)
            *error = failure;
        return -1;
    }
    qint32 last = 0;
    for (int i = 0; i < rows.size(); ++i) {
        const qint32 order = rows.at(i).value(0).toInt();
        last = qMax(last, order);
        if (i < PanelRoster::MaxPanels && rows.at(i).value(1).toUInt() == 0)
            return order;
    }
    if (rows.size() >= PanelRoster::MaxPanels)
        return 0;
    PanelSlot fresh;
    fresh.order = last + 1;
    fresh.reset();
    fresh.settings.globalZone1 = 1;
    fresh.settings.globalZone2 = 1;
    QStringList columns{ kOrder };
    QVariantList values{ fresh.order };
    writtenColumns(fresh, columns, values);
    if (!m_db.insert(kTable, columns, values, error))
        return -1;
    return fresh.order;
}

bool PanelSettingsRepository::storeClockOffset(qint32 order, qint32 seconds, const QDateTime& readAt,
                                               QString* error) const
{
    return m_db.exec(u"UPDATE "_s + Database::quoted(kTable) + u" SET "_s + Database::quoted(kOffset) + u" = ?, "_s
                         + Database::quoted(kReadAt) + u" = ? WHERE "_s + Database::quoted(kOrder) + u" = ?"_s,
                     { seconds, m_db.toSql(readAt), order }, error);
}
