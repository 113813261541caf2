#include "operations/configuration/TimeGroupRepository.h"

#include "store/Database.h"

using namespace Qt::StringLiterals;

namespace {
const QString kTable = u"TimeGroups"_s;
const QString kNumber = u"Zaman Grup No"_s;
const QString kName = u"Zaman Grup Adi"_s;
const QString kDuplicate = u"Birincil anahtar hatası! Bu değer daha önce girilmişti. Lütfen kontrol ediniz!"_s;
const QStringList kDays
    = { u"Pazartesi"_s, u"Sali"_s, u"Carsamba"_s, u"Persembe"_s, u"Cuma"_s, u"Cumartesi"_s, u"Pazar"_s };
const QTime kDayStart(8, 0);
const QTime kDayEnd(18, 0);

QString n(int i)
{
    return QString::number(i);
}

// Every column, in the order values() and the reader use.
const QStringList& columns()
{
    static const QStringList list = [] {
        QStringList c{ kNumber,
                       kName,
                       u"Gecis Sinirlama Tipi"_s,
                       u"Baslangic Tarihi"_s,
                       u"Bitis Tarihi"_s,
                       u"Baslangic Saati"_s,
                       u"Bitis Saati"_s };
        c << kDays;
        for (int i = 1; i <= 31; ++i)
            c << u"Gun"_s + n(i);
        for (int i = 1; i <= 3; ++i)
            c << u"Baslangic Saati "_s + n(i);
        c << u"Ek Saat"_s << u"Ek Saat 2"_s << u"Ilave Saat Kontrolu"_s << u"Ilave Baslangic Saati"_s
          << u"Ilave Bitis Saati"_s;
        for (int i = 1; i <= 6; ++i)
            c << u"Saat "_s + n(i);
        for (const QString& day : kDays)
            c << day + u" Baslangic Saati"_s << day + u" Bitis Saati"_s;
        return c;
    }();
    return list;
}

// Reads the columns of one row in order.
class RowReader
{
public:
    explicit RowReader(const QVariantList& values)
        : m_values(values)
    { }
    QVariant next() { return m_values.value(m_at++); }
    int integer() { return next().toInt(); }
    bool flag() { return next().toInt() != 0; }
    QDate date()
    {
        const QDateTime dt = Database::dateTime(next());
        return dt.isValid() ? dt.date() : QDate();
    }
    QTime time()
    {
        const QDateTime dt = Database::dateTime(next());
        return dt.isValid() ? dt.time() : QTime();
    }

private:
    const QVariantList& m_values;
    int m_at = 0;
};

TimeGroupRow readRow(const QVariantList& values)
{
    RowReader r(values);
    TimeGroupRow row;
    TimeGroupRecord& t = row.record;
    t.number = r.integer();
    row.name = r.next().toString();
    t.restrictionType = r.integer();
    t.startDate = r.date();
    t.endDate = r.date();
    t.startTime = r.time();
    t.endTime = r.time();
    for (bool& day : t.weekdays)
        day = r.flag();
    for (bool& day : t.monthDays)
        day = r.flag();
    for (QTime& start : t.startTimes)
        start = r.time();
    t.extraHours = r.integer();
    t.extraHours2 = r.integer();
    t.extraWindow = r.flag();
    t.extraStart = r.time();
    t.extraEnd = r.time();
    for (qint32& hour : t.hours)
        hour = r.integer();
    for (int day = 0; day < 7; ++day) {
        t.weekdayStart[day] = r.time();
        t.weekdayEnd[day] = r.time();
    }
    return row;
}

TimeGroupRepository::Result refused(int number, const Message& message, const QString& error = {})
{
    return { false, number, message, error };
}

TimeGroupRepository::Result failed(int number, const QString& error)
{
    return refused(number, Message(u"Hata, İşlem tamamlanamadı!"_s), error);
}

TimeGroupRepository::Result done(int number)
{
    return { true, number, {}, {} };
}

TimeGroupRepository::Result notFound(int number)
{
    return refused(number, Message().value(number).add(u" nolu zaman grubu bulunamadı."_s));
}

bool inRange(int number)
{
    return number >= TimeGroupRepository::FirstNumber && number <= TimeGroupRepository::LastNumber;
}

TimeGroupRepository::Result badNumber(int number)
{
    return refused(number, Message(u"Zaman grup numarası 1-16 arasında sayısal bir ifade olmalıdır!"_s));
}
} // namespace

TimeGroupRepository::TimeGroupRepository(const Database& db)
    : m_db(db)
{ }

QList<TimeGroupRow> TimeGroupRepository::select(const QString& where, const QVariantList& params, QString* error) const
{
    QList<TimeGroupRow> result;
    const QList<QVariantList> found
        = m_db.rows(u"SELECT "_s + Database::quotedList(columns()) + u" FROM "_s + Database::quoted(kTable) + where
                        + u" ORDER BY "_s + Database::quoted(kNumber),
                    params, error);
    for (const QVariantList& values : found)
        result << readRow(values);
    return result;
}

QList<TimeGroupRow> TimeGroupRepository::list(QString* error) const
{
    return select({}, {}, error);
}

QList<TimeGroupRepository::Entry> TimeGroupRepository::entries(QString* error) const
{
    QList<Entry> result;
    const QList<QVariantList> found
        = m_db.rows(u"SELECT "_s + Database::quotedList({ kNumber, kName }) + u" FROM "_s + Database::quoted(kTable)
                        + u" ORDER BY "_s + Database::quoted(kNumber),
                    {}, error);
    for (const QVariantList& values : found)
        result << Entry{ values.value(0).toInt(), values.value(1).toString() };
    return result;
}

std::optional<TimeGroupRow> TimeGroupRepository::find(int number, QString* error) const
{
    const QList<TimeGroupRow> found = select(u" WHERE "_s + Database::quoted(kNumber) + u" = ?"_s, { number }, error);
    if (found.isEmpty())
        return std::nullopt;
    return found.constFirst();
}

int TimeGroupRepository::numberOf(const QString& name, QString* error) const
{
    for (const Entry& entry : entries(error)) {
        if (entry.name.trimmed() == name.trimmed())
            return entry.number;
    }
    return 0;
}

TimeGroupRepository::Result TimeGroupRepository::nextNumber() const
{
    QString error;
    const QList<Entry> stored = entries(&error);
    if (!error.isEmpty())
        return failed(0, error);
    const int next = stored.isEmpty() ? FirstNumber : stored.constLast().number + 1;
    if (next > LastNumber)
        return refused(next, Message(u"Zaman Grup No değeri 16'yı geçemez!"_s));
    return done(next);
}

QVariantList TimeGroupRepository::values(const TimeGroupRow& row) const
{
    const TimeGroupRecord& t = row.record;
    QVariantList v{ t.number,    row.name, t.restrictionType, QVariant(t.startDate), QVariant(t.endDate),
                    t.startTime, t.endTime };
    for (const bool day : t.weekdays)
        v << day;
    for (const bool day : t.monthDays)
        v << day;
    for (const QTime& start : t.startTimes)
        v << start;
    v << t.extraHours << t.extraHours2 << t.extraWindow << t.extraStart << t.extraEnd;
    for (const qint32 hour : t.hours)
        v << hour;
    for (int day = 0; day < 7; ++day)
        v << t.weekdayStart[day] << t.weekdayEnd[day];
    return v;
}

TimeGroupRepository::Result TimeGroupRepository::add(const TimeGroupRow& row) const
{
    const int number = row.record.number;
    if (!inRange(number))
        return badNumber(number);
    QString error;
    if (find(number, &error))
        return refused(number, Message(kDuplicate));
    if (!error.isEmpty())
        return failed(number, error);
    if (!m_db.insert(kTable, columns(), values(normalized(row)), &error)) {
        // Another station stored the same number a moment ago.
        if (m_db.lastErrorWasUniqueViolation())
            return refused(number, Message(kDuplicate), error);
        return failed(number, error);
    }
    return done(number);
}

TimeGroupRepository::Result TimeGroupRepository::update(const TimeGroupRow& row) const
{
    const int number = row.record.number;
    if (!inRange(number))
        return badNumber(number);
    QStringList assignments;
    for (const QString& column : columns().mid(1))
        assignments << Database::quoted(column) + u" = ?"_s;
    QVariantList params = values(normalized(row)).mid(1);
    params << number;
    QString error;
    const int changed = m_db.execCount(u"UPDATE "_s + Database::quoted(kTable) + u" SET "_s + assignments.join(u", "_s)
                                           + u" WHERE "_s + Database::quoted(kNumber) + u" = ?"_s,
                                       params, &error);
    if (changed < 0)
        return failed(number, error);
    if (changed == 0)
        return notFound(number);
    return done(number);
}

TimeGroupRepository::Result TimeGroupRepository::remove(int number) const
{
    QString error;
    const int changed = m_db.execCount(u"DELETE FROM "_s + Database::quoted(kTable) + u" WHERE "_s
                                           + Database::quoted(kNumber) + u" = ?"_s,
                                       { number }, &error);
    if (changed < 0)
        return failed(number, error);
    if (changed == 0)
        return notFound(number);
    return done(number);
}

TimeGroupRow TimeGroupRepository::normalized(TimeGroupRow row)
{
    TimeGroupRecord& t = row.record;
    if (!isKnownType(t.restrictionType))
        t.restrictionType = 0;
    for (qint32& hour : t.hours) {
        if (hour < 0 || hour > 23)
            hour = 0;
    }
    t.extraHours = qBound(1, t.extraHours, 8);
    t.extraHours2 = qBound(1, t.extraHours2, 8);
    // The per-weekday windows are never empty in the table.
    for (int day = 0; day < 7; ++day) {
        if (!t.weekdayStart[day].isValid())
            t.weekdayStart[day] = kDayStart;
        if (!t.weekdayEnd[day].isValid())
            t.weekdayEnd[day] = kDayEnd;
    }
    return row;
}

bool TimeGroupRepository::isKnownType(int type)
{
    return type >= 0 && type <= 13 && type != 7;
}

Message TimeGroupRepository::deleteQuestion()
{
    return Message(u"Bu zaman grubunu silmek istiyor musunuz?"_s);
}
