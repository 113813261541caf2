#include "operations/configuration/ZoneRepository.h"

#include "store/Database.h"
#include "store/Transaction.h"

using namespace Qt::StringLiterals;

namespace {
const QString kTable = u"GlobalZones"_s;
const QString kNumber = u"Global Bolge No"_s;
const QString kName = u"Global Bolge Adi"_s;

QString joined(const QList<int>& numbers)
{
    QStringList parts;
    for (int n : numbers)
        parts << QString::number(n);
    return parts.join(u", "_s);
}

ZoneRepository::Result refused(int number, const Message& message, const QString& error = {})
{
    return { false, number, message, error };
}

ZoneRepository::Result failed(int number, const QString& error)
{
    return refused(number, Message(u"Hata, İşlem tamamlanamadı!"_s), error);
}

ZoneRepository::Result done(int number)
{
    return { true, number, {}, {} };
}

bool inRange(int number)
{
    return number >= ZoneRepository::FirstNumber && number <= ZoneRepository::LastNumber;
}
} // namespace

ZoneRepository::ZoneRepository(const Database& db)
    : m_db(db)
{ }

ZoneRepository::ZoneRepository(Database& db)
    : m_db(db)
    , m_writable(&db)
{ }

QList<ZoneRepository::Row> ZoneRepository::list(QString* error) const
{
    QList<Row> result;
    const QList<QVariantList> rows
        = m_db.rows(u"SELECT "_s + Database::quotedList({ kNumber, kName }) + u" FROM "_s + Database::quoted(kTable)
                        + u" ORDER BY "_s + Database::quoted(kNumber),
                    {}, error);
    for (const QVariantList& row : rows)
        result << Row{ row.value(0).toInt(), row.value(1).toString() };
    return result;
}

int ZoneRepository::nextFreeNumber(const QList<int>& alsoTaken, QString* error) const
{
    QString readError;
    const QList<Row> stored = list(&readError);
    if (!readError.isEmpty()) {
        if (error)
            *error = readError;
        return 0;
    }
    QList<int> taken = alsoTaken;
    for (const Row& row : stored)
        taken << row.number;
    for (int n = FirstNumber; n <= LastNumber; ++n) {
        if (!taken.contains(n))
            return n;
    }
    return 0;
}

ZoneRepository::Usage ZoneRepository::usage(int number, QString* error) const
{
    Usage result;
    // A slot is in use while its serial is at least 1; a removed panel's zones do not count.
    const QList<QVariantList> panels = m_db.rows(
        u"SELECT \"Panel ID\" FROM \"PanelSettings\" WHERE \"Seri No\" >= 1 AND \"Panel ID\" BETWEEN 1 AND 64"
        " AND (\"Panel Global Bolge1\" = ? OR \"Panel Global Bolge2\" = ?) ORDER BY \"Panel ID\""_s,
        { number, number }, error);
    for (const QVariantList& row : panels)
        result.panels << row.value(0).toInt();

    // Group rows count as the panels see them: of a panel in use, numbered 1..64, of a group that
    // exists; every door's zone counts, allowed or not, since every one of them is sent.
    QString doors;
    for (int d = 1; d <= 4; ++d)
        doors += (d > 1 ? u" OR "_s : QString())
            + Database::quoted(u"Kapi"_s + QString::number(d) + u" Global Bolge No"_s) + u" = ?"_s;
    const QList<QVariantList> groups = m_db.rows(
        u"SELECT \"Grup No\" FROM \"GroupsDetail\" WHERE \"Seri No\" > 0 AND \"Panel No\" > 0 AND \"Panel No\" <= 64"
        " AND \"Grup No\" IN (SELECT \"Grup No\" FROM \"GroupsMaster\") AND ("_s
            + doors
            + u") UNION SELECT \"Grup No\" FROM \"GroupsMaster\" WHERE \"Grup Gecis Sayisi Global Bolge No\" = ?"
              " OR \"Grup Icerdeki Kisi Sayisi Global Bolge No\" = ? ORDER BY 1"_s,
        { number, number, number, number, number, number }, error);
    for (const QVariantList& row : groups)
        result.groups << row.value(0).toInt();
    return result;
}

bool ZoneRepository::exists(int number, QString* error) const
{
    const QVariant count = m_db.scalar(u"SELECT COUNT(*) FROM "_s + Database::quoted(kTable) + u" WHERE "_s
                                           + Database::quoted(kNumber) + u" = ?"_s,
                                       { number }, error);
    return count.toInt() > 0;
}

ZoneRepository::Result ZoneRepository::addRow(const Row& row) const
{
    int number = row.number;
    QString error;
    if (number == 0) {
        number = nextFreeNumber({}, &error);
        if (!error.isEmpty())
            return failed(0, error);
        if (number == 0)
            return refused(0, Message(u"Boş global bölge numarası kalmadı (1-64)."_s));
    }
    if (!inRange(number))
        return refused(row.number, Message(u"Global Bölge No 1-64 arasında olmalıdır!"_s));
    if (row.name.trimmed().isEmpty())
        return refused(number, Message(u"Lütfen Global Bölge Adını giriniz"_s));
    const bool taken = exists(number, &error);
    if (!error.isEmpty())
        return failed(number, error);
    const Message duplicate(u"Birincil anahtar hatası! Bu değer daha önce girilmişti. Lütfen kontrol ediniz!"_s);
    if (taken)
        return refused(number, duplicate);
    if (!m_db.insert(kTable, { kNumber, kName }, { number, row.name }, &error)) {
        // Another station stored the same number a moment ago.
        if (m_db.lastErrorWasUniqueViolation())
            return refused(number, duplicate, error);
        return failed(number, error);
    }
    return done(number);
}

ZoneRepository::Result ZoneRepository::renameRow(int number, const QString& name) const
{
    if (name.trimmed().isEmpty())
        return refused(number, Message(u"Lütfen Global Bölge Adını giriniz"_s));
    QString error;
    const int changed = m_db.execCount(u"UPDATE "_s + Database::quoted(kTable) + u" SET "_s + Database::quoted(kName)
                                           + u" = ? WHERE "_s + Database::quoted(kNumber) + u" = ?"_s,
                                       { name, number }, &error);
    if (changed < 0)
        return failed(number, error);
    if (changed == 0)
        return refused(number, Message().value(number).add(u" nolu global bölge bulunamadı."_s));
    return done(number);
}

ZoneRepository::Result ZoneRepository::add(const Row& row) const
{
    if (!m_writable)
        return failed(row.number, u"zones opened for reading only"_s);
    return addRow(row);
}

ZoneRepository::Result ZoneRepository::rename(int number, const QString& name) const
{
    if (!m_writable)
        return failed(number, u"zones opened for reading only"_s);
    return renameRow(number, name);
}

ZoneRepository::Result ZoneRepository::remove(int number) const
{
    if (!m_writable)
        return failed(number, u"zones opened for reading only"_s);
    // The check and the delete in one transaction, so a zone is not deleted from under a panel
    // stored in between by this connection's own work.
    Transaction tx(*m_writable);
    if (!tx.isActive())
        return failed(number, tx.error());
    QString error;
    const Usage used = usage(number, &error);
    if (!error.isEmpty())
        return failed(number, error);
    if (!used.isEmpty())
        return refused(number, inUseMessage(number, used));
    const int changed = m_db.execCount(u"DELETE FROM "_s + Database::quoted(kTable) + u" WHERE "_s
                                           + Database::quoted(kNumber) + u" = ?"_s,
                                       { number }, &error);
    if (changed < 0)
        return failed(number, error);
    if (changed == 0)
        return refused(number, Message().value(number).add(u" nolu global bölge bulunamadı."_s));
    if (!tx.commit(&error))
        return failed(number, error);
    return done(number);
}

ZoneRepository::Result ZoneRepository::store(const QList<Row>& renamed, const QList<Row>& added) const
{
    if (!m_writable)
        return failed(0, u"zones opened for reading only"_s);
    Transaction tx(*m_writable);
    if (!tx.isActive())
        return failed(0, tx.error());
    for (const Row& row : renamed) {
        const Result r = renameRow(row.number, row.name);
        if (!r.ok)
            return r;
    }
    for (const Row& row : added) {
        const Result r = addRow(row);
        if (!r.ok)
            return r;
    }
    QString error;
    if (!tx.commit(&error))
        return failed(0, error);
    return done(0);
}

Message ZoneRepository::deleteQuestion(int number)
{
    return Message().value(number).add(u" nolu global bölgeyi silmek istiyor musunuz?"_s);
}

Message ZoneRepository::inUseMessage(int number, const Usage& usage)
{
    Message m;
    m.value(number).add(u" nolu global bölge kullanımda olduğu için silinemez!"_s);
    if (!usage.panels.isEmpty())
        m.newLine().add(u"Kullanan paneller:"_s).value(u" "_s + joined(usage.panels));
    if (!usage.groups.isEmpty())
        m.newLine().add(u"Kullanan geçiş grupları:"_s).value(u" "_s + joined(usage.groups));
    return m;
}
