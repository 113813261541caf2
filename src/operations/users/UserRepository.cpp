#include "operations/users/UserRepository.h"

#include "operations/users/PersonName.h"
#include "operations/users/UserIdRange.h"
#include "protocol/CardField.h"
#include "store/Database.h"
#include "store/SearchText.h"

#include <QSqlQuery>

using namespace Qt::StringLiterals;

namespace {

const QString kDuplicate = u"Birincil anahtar hatası! Bu değer daha önce girilmişti. Lütfen kontrol ediniz!"_s;

// Every edited column but the row key, in the order of rowValues().
const QStringList kColumns = { u"ID"_s,
                               u"Kart ID"_s,
                               u"Adi"_s,
                               u"Soyadi"_s,
                               u"Kullanici Tipi"_s,
                               u"Sifre"_s,
                               u"Gecis Modu"_s,
                               u"Grup No"_s,
                               u"Grup Takvimi Aktif"_s,
                               u"Grup Takvimi No"_s,
                               u"Gecici Grup Aktif"_s,
                               u"Gecici Grup No"_s,
                               u"Gecici Grup Tarih"_s,
                               u"Gecici Grup Saat"_s,
                               u"Sirket No"_s,
                               u"Departman No"_s,
                               u"Blok No"_s,
                               u"Daire"_s,
                               u"Plaka"_s,
                               u"TCKimlik"_s,
                               u"Adres"_s,
                               u"Resim"_s };

// The columns a panel answers for a user (names and the rest stay as they are).
const QStringList kPanelColumns = { u"Kart ID"_s,
                                    u"Sifre"_s,
                                    u"Gecis Modu"_s,
                                    u"Grup No"_s,
                                    u"Grup Takvimi Aktif"_s,
                                    u"Grup Takvimi No"_s,
                                    u"Gecici Grup Aktif"_s,
                                    u"Gecici Grup No"_s,
                                    u"Gecici Grup Tarih"_s,
                                    u"Gecici Grup Saat"_s };

QString selectSql()
{
    return u"SELECT "_s + Database::quotedList(QStringList{ u"Kayit No"_s } + kColumns) + u" FROM \"Users\" "_s;
}

QVariant dateValue(const Database& db, const QDate& date)
{
    return date.isValid() ? db.toSql(QDateTime(date, QTime(0, 0))) : QVariant();
}

QVariant timeValue(const Database& db, const QTime& time)
{
    return time.isValid() ? db.toSqlTime(time) : QVariant();
}

QVariantList rowValues(const Database& db, const UserRow& r)
{
    return { r.id,
             r.cardId,
             r.name,
             r.surname,
             storedNumber(r.userType),
             r.pin,
             r.passageMode,
             r.groupNo,
             r.calendarActive ? 1 : 0,
             r.calendarNo,
             r.temporaryGroupActive ? 1 : 0,
             r.temporaryGroupNo,
             dateValue(db, r.temporaryGroupDate),
             timeValue(db, r.temporaryGroupTime),
             r.companyNo,
             r.departmentNo,
             r.blockNo,
             r.flat,
             r.plate,
             r.identityNo,
             r.address,
             r.picture };
}

QVariantList panelValues(const Database& db, const UserRecord& u)
{
    return { qint64(u.cardId),
             u.pin,
             u.passageMode,
             u.groupNo,
             u.calendarActive ? 1 : 0,
             u.calendarNo,
             u.temporaryGroupActive ? 1 : 0,
             u.temporaryGroupNo,
             dateValue(db, u.temporaryGroupDate),
             timeValue(db, u.temporaryGroupTime) };
}

UserRow readRow(const QSqlQuery& q)
{
    UserRow r;
    r.recordNo = q.value(0).toLongLong();
    r.id = q.value(1).toInt();
    r.cardId = q.value(2).toLongLong();
    r.name = q.value(3).toString();
    r.surname = q.value(4).toString();
    r.userType = userTypeOf(q.value(5).toInt());
    r.pin = q.value(6).toInt();
    r.passageMode = q.value(7).toInt();
    r.groupNo = q.value(8).toInt();
    r.calendarActive = q.value(9).toInt() != 0;
    r.calendarNo = q.value(10).toInt();
    r.temporaryGroupActive = q.value(11).toInt() != 0;
    r.temporaryGroupNo = q.value(12).toInt();
    const QDateTime date = Database::dateTime(q.value(13));
    r.temporaryGroupDate = date.isValid() ? date.date() : QDate();
    const QDateTime time = Database::dateTime(q.value(14));
    r.temporaryGroupTime = time.isValid() ? time.time() : QTime();
    r.companyNo = q.value(15).toInt();
    r.departmentNo = q.value(16).toInt();
    r.blockNo = q.value(17).toInt();
    r.flat = q.value(18).toInt();
    r.plate = q.value(19).toString();
    r.identityNo = q.value(20).toString();
    r.address = q.value(21).toString();
    r.picture = q.value(22).toString();
    return r;
}

QList<UserRow> readRows(QSqlQuery& q)
{
    QList<UserRow> rows;
    while (q.next())
        rows << readRow(q);
    return rows;
}

void setError(Message* error, const Message& message)
{
    if (error)
        *error = message;
}

} // namespace

const QStringList& UserRepository::columns()
{
    return kColumns;
}

UserRepository::UserRepository(const Database& db)
    : m_db(db)
{ }

QList<UserRow> UserRepository::list(const QString& search, int limit, QString* error) const
{
    const QString text = search.trimmed();
    QString sql = selectSql() + u"ORDER BY "_s + Database::quoted(u"ID"_s);
    QVariantList params;
    if (text.isEmpty() && limit >= 0) {
        sql += u" LIMIT ?"_s;
        params << limit;
    }
    QSqlQuery q = m_db.query(sql, params, error);
    QList<UserRow> rows = readRows(q);
    if (text.isEmpty())
        return rows;
    // Names are compared by Turkish letter rules, which neither engine's LOWER() follows, so the
    // search runs here over the site's people (a few ten thousand at most). Numbers match by a
    // part of their digits.
    const QString folded = SearchText::fold(text);
    QList<UserRow> found;
    for (UserRow& row : rows) {
        if (limit >= 0 && found.size() >= limit)
            break;
        if (QString::number(row.id).contains(text) || QString::number(row.cardId).contains(text)
            || SearchText::fold(row.name).contains(folded) || SearchText::fold(row.surname).contains(folded))
            found << std::move(row);
    }
    return found;
}

QList<UserRow> UserRepository::listOfType(qint32 userType, bool numberedOnly, QString* error) const
{
    QString sql = selectSql() + u"WHERE "_s + Database::quoted(u"Kullanici Tipi"_s) + u" = ? "_s;
    if (numberedOnly)
        sql += u"AND "_s + Database::quoted(u"ID"_s) + u" > 0 "_s;
    sql += u"ORDER BY "_s + Database::quoted(u"ID"_s);
    QSqlQuery q = m_db.query(sql, { userType }, error);
    return readRows(q);
}

QHash<qint32, QString> UserRepository::namesOf(const QList<qint32>& ids, QString* error) const
{
    const QHash<qint64, QString> byKey
        = PersonName::namesByKey(m_db, u"Users"_s, u"ID"_s, QList<qint64>(ids.begin(), ids.end()), error);
    QHash<qint32, QString> names;
    for (auto it = byKey.cbegin(); it != byKey.cend(); ++it)
        names.insert(static_cast<qint32>(it.key()), it.value());
    return names;
}

int UserRepository::count(QString* error) const
{
    return m_db.scalar(u"SELECT COUNT(*) FROM \"Users\""_s, {}, error).toInt();
}

std::optional<UserRow> UserRepository::byRecordNo(qint64 recordNo) const
{
    QSqlQuery q = m_db.query(selectSql() + u"WHERE "_s + Database::quoted(u"Kayit No"_s) + u" = ?"_s, { recordNo });
    if (!q.next())
        return std::nullopt;
    return readRow(q);
}

std::optional<UserRow> UserRepository::byId(qint32 id) const
{
    QSqlQuery q = m_db.query(selectSql() + u"WHERE "_s + Database::quoted(u"ID"_s) + u" = ?"_s, { id });
    if (!q.next())
        return std::nullopt;
    return readRow(q);
}

std::optional<UserRow> UserRepository::byCard(qint64 cardId) const
{
    QSqlQuery q = m_db.query(selectSql() + u"WHERE "_s + Database::quoted(u"Kart ID"_s) + u" = ?"_s, { cardId });
    if (!q.next())
        return std::nullopt;
    return readRow(q);
}

qint32 UserRepository::highestId() const
{
    return m_db.scalar(u"SELECT MAX("_s + Database::quoted(u"ID"_s) + u") FROM \"Users\""_s).toInt();
}

Message UserRepository::duplicateOf(const UserRow& row) const
{
    Message message(kDuplicate);
    // "Kart ID 1005 şu kullanıcıya ait: ID 5 Ali Kaya": the person can go and find the other row.
    const auto heldBy = [&message](const QString& what, qint64 number, const UserRow& other) {
        message.newLine()
            .add(what)
            .value(u' ' + QString::number(number))
            .add(u" şu kullanıcıya ait:"_s)
            .value(u" ID "_s + QString::number(other.id) + u' ' + PersonName::join(other.name, other.surname));
    };
    if (const auto other = byCard(row.cardId); other && other->recordNo != row.recordNo)
        heldBy(u"Kart ID"_s, row.cardId, *other);
    else if (const auto holder = byId(row.id); holder && holder->recordNo != row.recordNo)
        heldBy(u"ID"_s, row.id, *holder);
    return message;
}

Message UserRepository::validate(const UserRow& row)
{
    if (row.id < UserIdRange::MinId || row.id > UserIdRange::MaxId)
        return Message(u"Kullanıcı ID, 1-20000 arasında bir sayı olmalıdır!"_s);
    if (!fitsCardField(row.cardId))
        return Message(u"Kart ID hatalı!"_s);
    return Message();
}

bool UserRepository::add(UserRow& row, Message* error)
{
    const Message refusal = validate(row);
    if (!refusal.isEmpty()) {
        setError(error, refusal);
        return false;
    }
    QString text;
    qint64 newId = 0;
    if (!m_db.insert(u"Users"_s, kColumns, rowValues(m_db, row), &text, &newId, u"Kayit No"_s)) {
        setError(error, m_db.lastErrorWasUniqueViolation() ? duplicateOf(row) : Message().value(text));
        return false;
    }
    row.recordNo = newId;
    return true;
}

bool UserRepository::update(const UserRow& row, Message* error)
{
    const Message refusal = validate(row);
    if (!refusal.isEmpty()) {
        setError(error, refusal);
        return false;
    }
    QStringList sets;
    for (const QString& c : kColumns)
        sets << Database::quoted(c) + u" = ?"_s;
    QVariantList params = rowValues(m_db, row);
    params << row.recordNo;
    QString text;
    const int changed = m_db.execCount(u"UPDATE \"Users\" SET "_s + sets.join(u", "_s) + u" WHERE "_s
                                           + Database::quoted(u"Kayit No"_s) + u" = ?"_s,
                                       params, &text);
    if (changed < 0) {
        setError(error, m_db.lastErrorWasUniqueViolation() ? duplicateOf(row) : Message().value(text));
        return false;
    }
    if (changed == 0) {
        setError(error, Message(u"Kullanıcı listesi boş!"_s));
        return false;
    }
    return true;
}

bool UserRepository::remove(qint64 recordNo, Message* error)
{
    QString text;
    if (!m_db.exec(u"DELETE FROM \"Users\" WHERE "_s + Database::quoted(u"Kayit No"_s) + u" = ?"_s, { recordNo },
                   &text)) {
        setError(error, Message().value(text));
        return false;
    }
    return true;
}

bool UserRepository::storeFromPanel(const UserRecord& user, QString* error)
{
    QStringList sets;
    for (const QString& c : kPanelColumns)
        sets << Database::quoted(c) + u" = ?"_s;
    QVariantList params = panelValues(m_db, user);
    params << user.id;
    const int changed = m_db.execCount(u"UPDATE \"Users\" SET "_s + sets.join(u", "_s) + u" WHERE "_s
                                           + Database::quoted(u"ID"_s) + u" = ?"_s,
                                       params, error);
    if (changed < 0)
        return false;
    if (changed > 0)
        return true;
    return m_db.insert(u"Users"_s, QStringList{ u"ID"_s } + kPanelColumns,
                       QVariantList{ user.id } + panelValues(m_db, user), error);
}
