#include "operations/panels/PanelRepository.h"

#include "operations/panels/PanelSlot.h"
#include "store/Database.h"

using namespace Qt::StringLiterals;

namespace {
const QString kTable = u"PanelSettings"_s;
const QString kNumber = u"Panel ID"_s;
const QString kOrder = u"Sira No"_s;

void setFlag(bool* flag, bool value)
{
    if (flag)
        *flag = value;
}
} // namespace

PanelRepository::PanelRepository(const Database& db)
    : m_db(db)
{ }

QList<PanelRepository::Name> PanelRepository::names(QString* error) const
{
    QList<Name> result;
    const QList<QVariantList> rows
        = m_db.rows(u"SELECT "_s + Database::quotedList({ kNumber, u"Panel Adi"_s }) + u" FROM "_s
                        + Database::quoted(kTable) + u" ORDER BY "_s + Database::quotedList({ kOrder, kNumber }),
                    {}, error);
    for (const QVariantList& row : rows)
        result << Name{ row.value(0).toInt(), row.value(1).toString() };
    return result;
}

QList<PanelRepository::Door> PanelRepository::doors(QString* error) const
{
    QStringList columns{ kNumber };
    for (int door = 1; door <= 4; ++door) {
        const QString k = u"Kapi"_s + QString::number(door);
        columns << k + u" Adi"_s << k + u" Aktif"_s;
    }
    QList<Door> result;
    const QList<QVariantList> rows = m_db.rows(
        u"SELECT "_s + Database::quotedList(columns) + u" FROM "_s + Database::quoted(kTable) + u" WHERE "_s
            + Database::quoted(u"Seri No"_s) + u" >= ? ORDER BY "_s + Database::quotedList({ kOrder, kNumber }),
        { 1 }, error);
    for (const QVariantList& row : rows) {
        for (int door = 1; door <= 4; ++door)
            result << Door{ row.value(0).toInt(), door, row.value(2 * door - 1).toString().trimmed(),
                            row.value(2 * door).toInt() != 0 };
    }
    return result;
}

bool PanelRepository::add(const NewPanel& panel, QString* error, bool* taken) const
{
    setFlag(taken, false);
    const QVariant existing = m_db.scalar(u"SELECT COUNT(*) FROM "_s + Database::quoted(kTable) + u" WHERE "_s
                                              + Database::quoted(kNumber) + u" = ?"_s,
                                          { panel.number }, error);
    if (!existing.isValid())
        return false;
    if (existing.toInt() > 0) {
        setFlag(taken, true);
        return false;
    }
    int order = panel.order;
    if (order <= 0) {
        const QVariant last
            = m_db.scalar(u"SELECT MAX("_s + Database::quoted(kOrder) + u") FROM "_s + Database::quoted(kTable));
        order = last.toInt() + 1;
    }
    QStringList columns = { kOrder, kNumber, u"Seri No"_s, u"Panel Adi"_s, u"Panel TCP Port"_s };
    QVariantList values = { order, panel.number, panel.serial, panel.name, panel.port };
    for (int i = 0; i < 4; ++i) {
        columns << u"Panel IP"_s + QString::number(i + 1);
        values << static_cast<int>((panel.ipv4 >> (24 - 8 * i)) & 0xFF);
    }
    // The doors start as a new slot of the settings window has them: in use, named, odd doors
    // entries and even doors exits, relay choice, relay and input 1.
    for (int door = 1; door <= 4; ++door) {
        const QString k = u"Kapi"_s + QString::number(door);
        columns << k + u" Adi"_s << k + u" Aktif"_s << k + u" Kapi Tipi"_s << k + u" Role Secimi"_s << k + u" Role No"_s
                << k + u" Button Loop"_s;
        values << PanelSlot::defaultDoorName(door) << 1 << (door % 2 == 1 ? 0 : 1) << 1 << 1 << 1;
    }
    return m_db.insert(kTable, columns, values, error);
}

bool PanelRepository::remove(int number, QString* error, bool* missing) const
{
    const int removed = m_db.execCount(u"DELETE FROM "_s + Database::quoted(kTable) + u" WHERE "_s
                                           + Database::quoted(kNumber) + u" = ?"_s,
                                       { number }, error);
    setFlag(missing, removed == 0);
    return removed > 0;
}
