#include "operations/configuration/ProgrammedSlotRepository.h"

#include "store/Database.h"
#include "store/Transaction.h"

using namespace Qt::StringLiterals;

namespace {
const QString kTable = u"ProgRelay2"_s;
const QString kPanel = u"Panel No"_s;
const QString kDay = u"Haftanin Gunu"_s;
const QString kSlot = u"Zaman Dilimi"_s;

QString q(const QString& identifier)
{
    return Database::quoted(identifier);
}

QString n(int i)
{
    return QString::number(i);
}

// Active, the times and the first `places` doors and relays: what a panel sends back with 4,
// what the station keeps with 8.
QStringList valueColumns(int places)
{
    QStringList columns{ u"Aktif"_s, u"Saat 1"_s, u"Saat 2"_s };
    for (int i = 1; i <= places; ++i)
        columns << u"Cihaz "_s + n(i);
    for (int i = 1; i <= places; ++i)
        columns << u"Role "_s + n(i);
    return columns;
}

QVariantList values(const Database& db, const ProgrammedSlot& slot, int places)
{
    QVariantList v{ slot.active, db.toSqlTime(slot.start), db.toSqlTime(slot.end) };
    for (int i = 0; i < places; ++i)
        v << slot.doors[i];
    for (int i = 0; i < places; ++i)
        v << slot.relays[i];
    return v;
}

QTime timeOf(const QVariant& value)
{
    const QDateTime dt = Database::dateTime(value);
    return dt.isValid() ? QTime(dt.time().hour(), dt.time().minute()) : QTime(0, 0);
}

QString keyWhere()
{
    return u" WHERE "_s + q(kPanel) + u" = ? AND "_s + q(kDay) + u" = ? AND "_s + q(kSlot) + u" = ?"_s;
}

ProgrammedSlotRepository::Result refused(const Message& message, const QString& error = {})
{
    return { false, message, error };
}

ProgrammedSlotRepository::Result failed(const QString& error)
{
    return refused(Message(u"Hata, İşlem tamamlanamadı!"_s), error);
}

const ProgrammedSlotRepository::Result kDone{ true, {}, {} };

// Updates the slot's row, or adds it when the panel has none for that weekday and slot.
bool write(const Database& db, int panel, const ProgrammedSlot& slot, QString* error)
{
    QStringList assignments;
    for (const QString& column : valueColumns(8))
        assignments << q(column) + u" = ?"_s;
    const int changed = db.execCount(u"UPDATE "_s + q(kTable) + u" SET "_s + assignments.join(u", "_s) + keyWhere(),
                                     values(db, slot, 8) << panel << slot.weekday << slot.slot, error);
    if (changed != 0)
        return changed > 0;
    return db.insert(kTable, QStringList{ kPanel, kDay, kSlot } + valueColumns(8),
                     QVariantList{ panel, slot.weekday, slot.slot } + values(db, slot, 8), error);
}
} // namespace

ProgrammedSlotRepository::ProgrammedSlotRepository(Database& db)
    : m_db(db)
{ }

Message ProgrammedSlotRepository::check(const ProgrammedSlot& slot)
{
    if (slot.weekday < 1 || slot.weekday > Weekdays)
        return Message(u"Gün numarası 1-7 arasında olmalıdır!"_s);
    if (slot.slot < 1 || slot.slot > SlotsPerDay)
        return Message(u"Zaman dilimi numarası 1-16 arasında olmalıdır!"_s);
    if (!slot.start.isValid() || !slot.end.isValid())
        return Message(u"Geçersiz saat!"_s);
    return Message();
}

QList<ProgrammedSlot> ProgrammedSlotRepository::panel(int panel, QString* error) const
{
    return day(panel, 0, error);
}

QList<ProgrammedSlot> ProgrammedSlotRepository::day(int panel, int weekday, QString* error) const
{
    QString sql = u"SELECT "_s + Database::quotedList(QStringList{ kDay, kSlot } + valueColumns(8)) + u" FROM "_s
        + q(kTable) + u" WHERE "_s + q(kPanel) + u" = ?"_s;
    QVariantList params{ panel };
    if (weekday > 0) {
        sql += u" AND "_s + q(kDay) + u" = ?"_s;
        params << weekday;
    }
    sql += u" ORDER BY "_s + Database::quotedList({ kPanel, kDay, kSlot });
    QList<ProgrammedSlot> result;
    for (const QVariantList& v : m_db.rows(sql, params, error)) {
        ProgrammedSlot slot;
        slot.weekday = v.value(0).toInt();
        slot.slot = v.value(1).toInt();
        slot.active = v.value(2).toInt() != 0;
        slot.start = timeOf(v.value(3));
        slot.end = timeOf(v.value(4));
        for (int i = 0; i < 8; ++i) {
            slot.doors[i] = v.value(5 + i).toInt() != 0;
            slot.relays[i] = v.value(13 + i).toInt() != 0;
        }
        result << slot;
    }
    return result;
}

ProgrammedSlotRepository::Result ProgrammedSlotRepository::ensurePanel(int panel) const
{
    QString error;
    const QVariant count
        = m_db.scalar(u"SELECT COUNT(*) FROM "_s + q(kTable) + u" WHERE "_s + q(kPanel) + u" = ?"_s, { panel }, &error);
    if (!count.isValid())
        return failed(error);
    if (count.toInt() > 0)
        return kDone;
    QList<QVariantList> rows;
    ProgrammedSlot empty;
    empty.start = QTime(0, 0);
    empty.end = QTime(0, 0);
    for (int day = 1; day <= Weekdays; ++day) {
        for (int slot = 1; slot <= SlotsPerDay; ++slot)
            rows << (QVariantList{ panel, day, slot } + values(m_db, empty, 8));
    }
    Transaction transaction(m_db);
    if (!transaction.isActive())
        return failed(transaction.error());
    if (!m_db.insertRows(kTable, QStringList{ kPanel, kDay, kSlot } + valueColumns(8), rows, &error)
        || !transaction.commit(&error))
        return failed(error);
    return kDone;
}

ProgrammedSlotRepository::Result ProgrammedSlotRepository::store(int panel, const QList<ProgrammedSlot>& slotList) const
{
    for (const ProgrammedSlot& slot : slotList) {
        if (const Message refusal = check(slot); !refusal.isEmpty())
            return refused(refusal);
    }
    Transaction transaction(m_db);
    if (!transaction.isActive())
        return failed(transaction.error());
    QString error;
    for (const ProgrammedSlot& slot : slotList) {
        if (!write(m_db, panel, slot, &error))
            return failed(error);
    }
    if (!transaction.commit(&error))
        return failed(error);
    return kDone;
}

ProgrammedSlotRepository::Result ProgrammedSlotRepository::copyFromMonday(int panel, int weekday) const
{
    if (weekday < 2 || weekday > Weekdays)
        return refused(Message(u"Gün numarası 1-7 arasında olmalıdır!"_s));
    QString error;
    const QList<ProgrammedSlot> monday = day(panel, 1, &error);
    if (!error.isEmpty())
        return failed(error);
    QList<ProgrammedSlot> target = day(panel, weekday, &error);
    if (!error.isEmpty())
        return failed(error);
    // Position by position: the weekday's own slot numbers stay.
    for (int i = 0; i < target.size() && i < monday.size(); ++i) {
        ProgrammedSlot copy = monday.at(i);
        copy.weekday = target.at(i).weekday;
        copy.slot = target.at(i).slot;
        target[i] = copy;
    }
    return store(panel, target);
}

ProgrammedSlotRepository::Result ProgrammedSlotRepository::storeReceived(int panel, const ProgrammedSlot& slot) const
{
    QStringList assignments;
    for (const QString& column : valueColumns(4))
        assignments << q(column) + u" = ?"_s;
    QString error;
    const int changed = m_db.execCount(u"UPDATE "_s + q(kTable) + u" SET "_s + assignments.join(u", "_s) + keyWhere(),
                                       values(m_db, slot, 4) << panel << slot.weekday << slot.slot, &error);
    if (changed < 0)
        return failed(error);
    return kDone;
}
