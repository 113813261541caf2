#include "operations/configuration/GroupCalendarRepository.h"

#include "store/Database.h"

using namespace Qt::StringLiterals;

namespace {
const QString kTable = u"TimeZoneCalendar"_s;
const QString kNumber = u"Grup Takvimi No"_s;
const QString kDuplicate = u"Birincil anahtar hatası! Bu değer daha önce girilmişti. Lütfen kontrol ediniz!"_s;

// The stored columns after the number, in the order values() binds them.
const QStringList kFields = { u"Grup Takvimi Adi"_s, u"Grup Takvimi Tipi"_s, u"Grup No 1"_s, u"Tarih 1"_s,  u"Saat 1"_s,
                              u"Grup No 2"_s,        u"Tarih 2"_s,           u"Saat 2"_s,    u"Grup No 3"_s };

QString q(const QString& identifier)
{
    return Database::quoted(identifier);
}

QDate dateOf(const QVariant& value)
{
    const QDateTime dt = Database::dateTime(value);
    return dt.isValid() ? dt.date() : QDate();
}

QTime timeOf(const QVariant& value)
{
    const QDateTime dt = Database::dateTime(value);
    return dt.isValid() ? dt.time() : QTime();
}

GroupCalendarRepository::Result refused(const Message& message, const QString& error = {})
{
    return { false, message, error };
}

GroupCalendarRepository::Result failed(const QString& error)
{
    return refused(Message(u"Hata, İşlem tamamlanamadı!"_s), error);
}

GroupCalendarRepository::Result notFound(int number)
{
    return refused(Message().value(number).add(u" nolu geçiş grup takvimi bulunamadı."_s));
}

QVariantList values(const Database& db, const GroupCalendarRow& row)
{
    const GroupCalendarRecord& c = row.record;
    const auto date = [&](const QDate& d) { return d.isValid() ? db.toSql(QDateTime(d, QTime(0, 0))) : QVariant(); };
    return { row.name,
             GroupCalendarRepository::isBetweenHours(c.typeText) ? 0 : 1,
             c.group1,
             date(c.date1),
             db.toSqlTime(c.time1),
             c.group2,
             date(c.date2),
             db.toSqlTime(c.time2),
             c.group3 };
}
} // namespace

GroupCalendarRepository::GroupCalendarRepository(const Database& db)
    : m_db(db)
{ }

QString GroupCalendarRepository::betweenHours()
{
    return u"İki Saat Arası"_s;
}

QString GroupCalendarRepository::betweenDates()
{
    return u"İki Tarih Arası"_s;
}

bool GroupCalendarRepository::isBetweenHours(const QString& typeText)
{
    return typeText.trimmed() == betweenHours();
}

Message GroupCalendarRepository::check(const GroupCalendarRecord& c)
{
    if (c.number < FirstNumber || c.number > LastNumber)
        return Message(u"Geçiş grup takvimi numarası 1-8 arasında olmalıdır!"_s);
    if (!c.time1.isValid() || !c.time2.isValid())
        return Message(u"Geçersiz saat!"_s);
    if (!isBetweenHours(c.typeText) && (!c.date1.isValid() || !c.date2.isValid()))
        return Message(u"Geçersiz tarih!"_s);
    return Message();
}

QList<GroupCalendarRow> GroupCalendarRepository::list(QString* error) const
{
    // Each of the three groups is looked up under its own alias.
    QString sql = u"SELECT c."_s + q(kNumber);
    for (const QString& field : kFields)
        sql += u", c."_s + q(field);
    sql += u", g1."_s + q(u"Grup Adi"_s) + u", g2."_s + q(u"Grup Adi"_s) + u", g3."_s + q(u"Grup Adi"_s);
    sql += u" FROM "_s + q(kTable) + u" c"_s;
    for (int i = 1; i <= 3; ++i) {
        const QString alias = u"g"_s + QString::number(i);
        sql += u" LEFT JOIN "_s + q(u"GroupsMaster"_s) + u' ' + alias + u" ON c."_s
            + q(u"Grup No "_s + QString::number(i)) + u" = "_s + alias + u'.' + q(u"Grup No"_s);
    }
    sql += u" WHERE c."_s + q(kNumber) + u" < ? ORDER BY c."_s + q(kNumber);
    QList<GroupCalendarRow> result;
    for (const QVariantList& v : m_db.rows(sql, { LastNumber + 1 }, error)) {
        GroupCalendarRow row;
        GroupCalendarRecord& c = row.record;
        c.number = v.value(0).toInt();
        row.name = v.value(1).toString();
        c.typeText = v.value(2).toInt() == 0 && !v.value(2).isNull() ? betweenHours() : betweenDates();
        c.group1 = v.value(3).toInt();
        c.date1 = dateOf(v.value(4));
        c.time1 = timeOf(v.value(5));
        c.group2 = v.value(6).toInt();
        c.date2 = dateOf(v.value(7));
        c.time2 = timeOf(v.value(8));
        c.group3 = v.value(9).toInt();
        row.groupName1 = v.value(10).toString().trimmed();
        row.groupName2 = v.value(11).toString().trimmed();
        row.groupName3 = v.value(12).toString().trimmed();
        result << row;
    }
    return result;
}

std::optional<GroupCalendarRow> GroupCalendarRepository::find(int number, QString* error) const
{
    for (const GroupCalendarRow& row : list(error)) {
        if (row.record.number == number)
            return row;
    }
    return std::nullopt;
}

GroupCalendarRepository::Result GroupCalendarRepository::add(const GroupCalendarRow& row) const
{
    if (const Message refusal = check(row.record); !refusal.isEmpty())
        return refused(refusal);
    QString error;
    if (m_db.scalar(u"SELECT COUNT(*) FROM "_s + q(kTable) + u" WHERE "_s + q(kNumber) + u" = ?"_s,
                    { row.record.number }, &error)
            .toInt()
        > 0)
        return refused(Message(kDuplicate));
    if (!error.isEmpty())
        return failed(error);
    if (!m_db.insert(kTable, QStringList{ kNumber } + kFields, QVariantList{ row.record.number } + values(m_db, row),
                     &error))
        return m_db.lastErrorWasUniqueViolation() ? refused(Message(kDuplicate), error) : failed(error);
    return { true, {}, {} };
}

GroupCalendarRepository::Result GroupCalendarRepository::update(const GroupCalendarRow& row) const
{
    if (const Message refusal = check(row.record); !refusal.isEmpty())
        return refused(refusal);
    QStringList assignments;
    for (const QString& field : kFields)
        assignments << q(field) + u" = ?"_s;
    QString error;
    const int changed = m_db.execCount(u"UPDATE "_s + q(kTable) + u" SET "_s + assignments.join(u", "_s) + u" WHERE "_s
                                           + q(kNumber) + u" = ?"_s,
                                       values(m_db, row) << row.record.number, &error);
    if (changed < 0)
        return failed(error);
    if (changed == 0)
        return notFound(row.record.number);
    return { true, {}, {} };
}

GroupCalendarRepository::Result GroupCalendarRepository::remove(int number) const
{
    QString error;
    const int changed
        = m_db.execCount(u"DELETE FROM "_s + q(kTable) + u" WHERE "_s + q(kNumber) + u" = ?"_s, { number }, &error);
    if (changed < 0)
        return failed(error);
    if (changed == 0)
        return notFound(number);
    return { true, {}, {} };
}
