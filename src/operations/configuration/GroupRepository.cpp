#include "operations/configuration/GroupRepository.h"

#include "store/Database.h"
#include "store/Transaction.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace {
const QString kMaster = u"GroupsMaster"_s;
const QString kDetail = u"GroupsDetail"_s;
const QString kNumber = u"Grup No"_s;
const QString kName = u"Grup Adi"_s;
const QString kPanel = u"Panel No"_s;
const QString kSerial = u"Seri No"_s;
const QString kRecordNo = u"Kayit No"_s;
const QString kDuplicate = u"Birincil anahtar hatası! Bu değer daha önce girilmişti. Lütfen kontrol ediniz!"_s;
const QString kStoreFailed = u"Çoklu hatalı işlem yürütüldü, Tekrar deneyiniz!"_s;

QString n(int i)
{
    return QString::number(i);
}

QString q(const QString& identifier)
{
    return Database::quoted(identifier);
}

const QStringList& masterColumns()
{
    static const QStringList list{ kNumber,
                                   kName,
                                   u"Grup Gecis Sayisi"_s,
                                   u"Grup Gecis Sayisi Global Bolge No"_s,
                                   u"Grup Icerdeki Kisi Sayisi"_s,
                                   u"Grup Icerdeki Kisi Sayisi Global Bolge No"_s,
                                   u"Gunluk Aylik"_s,
                                   u"Gunluk Onay Gerekli"_s,
                                   u"Mukerrer Engelleme Gecersiz"_s,
                                   u"Lokal Kapasite Gecersiz"_s,
                                   u"Gece Icerdeki Kisi Sayisini Sil"_s,
                                   u"Antipassback Gecersiz"_s };
    return list;
}

QVariantList masterValues(const GroupMasterRow& m)
{
    return { m.number,
             m.name,
             m.accessCount,
             m.accessCountZone,
             m.insideCount,
             m.insideCountZone,
             m.countPeriod,
             int(m.dailyApprovalRequired),
             int(m.repeatedAccessBlockOff),
             int(m.localCapacityOff),
             int(m.clearInsideCountAtNight),
             int(m.antiPassbackOff) };
}

GroupMasterRow readMaster(const QVariantList& v)
{
    GroupMasterRow m;
    m.number = v.value(0).toInt();
    m.name = v.value(1).toString();
    m.accessCount = v.value(2).toInt();
    m.accessCountZone = v.value(3).toInt();
    m.insideCount = v.value(4).toInt();
    m.insideCountZone = v.value(5).toInt();
    m.countPeriod = v.value(6).toInt();
    m.dailyApprovalRequired = v.value(7).toInt() != 0;
    m.repeatedAccessBlockOff = v.value(8).toInt() != 0;
    m.localCapacityOff = v.value(9).toInt() != 0;
    m.clearInsideCountAtNight = v.value(10).toInt() != 0;
    m.antiPassbackOff = v.value(11).toInt() != 0;
    return m;
}

QString door(int d, const QString& suffix = {})
{
    return u"Kapi"_s + n(d) + suffix;
}

// The door columns a detail row is written with, door 1 first in each set.
QStringList doorColumns()
{
    QStringList c;
    for (int d = 1; d <= 4; ++d)
        c << door(d);
    for (int d = 1; d <= 4; ++d)
        c << door(d, u" Zaman Grup No"_s);
    for (int d = 1; d <= 4; ++d)
        c << door(d, u" Global Bolge No"_s);
    return c;
}

QVariantList doorValues(const GroupDetailRow& row)
{
    QVariantList v;
    for (const bool open : row.doors)
        v << int(open);
    for (const int timeGroup : row.doorTimeGroups)
        v << timeGroup;
    for (const int zone : row.doorZones)
        v << zone;
    return v;
}

// The detail rows with the panel's and doors' names, as the detail grid lists them.
QString detailSelect()
{
    QStringList c{ u"GD."_s + q(kRecordNo), u"GD."_s + q(kNumber), u"GD."_s + q(kName),
                   u"GD."_s + q(kSerial),   u"GD."_s + q(kPanel),  u"PS."_s + q(u"Panel Adi"_s) };
    for (int d = 1; d <= 4; ++d)
        c << u"GD."_s + q(door(d)) << u"PS."_s + q(door(d, u" Adi"_s));
    for (int d = 1; d <= 4; ++d)
        c << u"GD."_s + q(door(d, u" Global Bolge No"_s));
    for (int d = 1; d <= 4; ++d)
        c << u"GD."_s + q(door(d, u" Zaman Grup No"_s));
    return u"SELECT "_s + c.join(u", "_s) + u" FROM "_s + q(kDetail) + u" GD LEFT JOIN "_s + q(u"PanelSettings"_s)
        + u" PS ON GD."_s + q(kPanel) + u" = PS."_s + q(u"Panel ID"_s) + u" WHERE GD."_s + q(kSerial)
        + u" > 0 AND GD."_s + q(kPanel) + u" > 0 AND GD."_s + q(kPanel) + u" <= 64"_s;
}

GroupDetailRow readDetail(const QVariantList& v)
{
    GroupDetailRow row;
    row.recordNo = v.value(0).toLongLong();
    row.groupNo = v.value(1).toInt();
    row.groupName = v.value(2).toString();
    row.serial = v.value(3).toInt();
    row.panelNo = v.value(4).toInt();
    row.panelName = v.value(5).toString();
    for (int d = 0; d < 4; ++d) {
        row.doors[d] = v.value(6 + 2 * d).toInt() != 0;
        row.doorNames[d] = v.value(7 + 2 * d).toString();
        row.doorZones[d] = v.value(14 + d).toInt();
        row.doorTimeGroups[d] = v.value(18 + d).toInt();
    }
    return row;
}

struct PanelSlot
{
    int serial = 0;
    QString name;
    std::array<QString, 4> doorNames;
};

// The panels in use by panel number: number, port and serial set and an address that is not 0.
QHash<int, PanelSlot> panelsInUse(const Database& db, QString* error)
{
    QStringList c{ u"Panel ID"_s, kSerial, u"Panel TCP Port"_s, u"Panel Adi"_s };
    for (int i = 1; i <= 4; ++i)
        c << u"Panel IP"_s + n(i);
    for (int d = 1; d <= 4; ++d)
        c << door(d, u" Adi"_s);
    QHash<int, PanelSlot> inUse;
    for (const QVariantList& v : db.rows(u"SELECT "_s + Database::quotedList(c) + u" FROM "_s + q(u"PanelSettings"_s)
                                             + u" ORDER BY "_s + q(u"Sira No"_s),
                                         {}, error)) {
        const int number = v.value(0).toInt();
        const bool address = v.value(4).toInt() || v.value(5).toInt() || v.value(6).toInt() || v.value(7).toInt();
        if (number < 1 || number > GroupRepository::PanelSlots || v.value(1).toInt() <= 0 || v.value(2).toInt() <= 0
            || !address || inUse.contains(number))
            continue;
        PanelSlot slot{ v.value(1).toInt(), v.value(3).toString(), {} };
        for (int d = 0; d < 4; ++d)
            slot.doorNames[d] = v.value(8 + d).toString();
        inUse.insert(number, slot);
    }
    return inUse;
}

GroupRepository::Result refused(int number, const Message& message, const QString& error = {})
{
    return { false, number, message, error };
}

GroupRepository::Result failed(int number, const QString& error)
{
    return refused(number, Message(kStoreFailed), error);
}

GroupRepository::Result done(int number)
{
    return { true, number, {}, {} };
}

GroupRepository::Result badNumber(int number)
{
    return refused(number, Message(u"Grup numarası 1-1280 arasında sayısal bir ifade olmalıdır!"_s));
}

GroupRepository::Result readOnly(int number)
{
    return failed(number, u"groups opened for reading only"_s);
}
} // namespace

GroupRepository::GroupRepository(const Database& db)
    : m_db(db)
{ }

GroupRepository::GroupRepository(Database& db)
    : m_db(db)
    , m_writable(&db)
{ }

QList<GroupRepository::Row> GroupRepository::list(QString* error) const
{
    QList<Row> result;
    const QList<QVariantList> found = m_db.rows(u"SELECT "_s + Database::quotedList({ kNumber, kName }) + u" FROM "_s
                                                    + q(kMaster) + u" ORDER BY "_s + q(kNumber),
                                                {}, error);
    for (const QVariantList& r : found)
        result << Row{ r.value(0).toInt(), r.value(1).toString() };
    return result;
}

QList<GroupMasterRow> GroupRepository::selectMasters(const QString& where, const QVariantList& params,
                                                     QString* error) const
{
    QList<GroupMasterRow> result;
    const QList<QVariantList> found = m_db.rows(u"SELECT "_s + Database::quotedList(masterColumns()) + u" FROM "_s
                                                    + q(kMaster) + where + u" ORDER BY "_s + q(kNumber),
                                                params, error);
    for (const QVariantList& values : found)
        result << readMaster(values);
    return result;
}

QList<GroupMasterRow> GroupRepository::masters(QString* error) const
{
    return selectMasters({}, {}, error);
}

std::optional<GroupMasterRow> GroupRepository::find(int number, QString* error) const
{
    const QList<GroupMasterRow> found = selectMasters(u" WHERE "_s + q(kNumber) + u" = ?"_s, { number }, error);
    if (found.isEmpty())
        return std::nullopt;
    return found.constFirst();
}

QList<GroupDetailRow> GroupRepository::selectDetails(const QString& where, const QVariantList& params,
                                                     const QString& order, QString* error) const
{
    QList<GroupDetailRow> result;
    for (const QVariantList& values : m_db.rows(detailSelect() + where + u" ORDER BY GD."_s + q(order), params, error))
        result << readDetail(values);
    return result;
}

QList<GroupDetailRow> GroupRepository::details(int number, QString* error) const
{
    return selectDetails(u" AND GD."_s + q(kNumber) + u" = ?"_s, { number }, kPanel, error);
}

QList<GroupDetailRow> GroupRepository::detailsForPanel(int number, int panelNo, QString* error) const
{
    return selectDetails(u" AND GD."_s + q(kPanel) + u" = ? AND GD."_s + q(kNumber) + u" = ?"_s, { panelNo, number },
                         kRecordNo, error);
}

QList<GroupDetailRow> GroupRepository::freshDetails(QString* error) const
{
    const QHash<int, PanelSlot> inUse = panelsInUse(m_db, error);
    QList<GroupDetailRow> result;
    for (int panel = 1; panel <= PanelSlots; ++panel) {
        const auto slot = inUse.constFind(panel);
        if (slot == inUse.constEnd())
            continue;
        GroupDetailRow row;
        row.panelNo = panel;
        row.serial = slot->serial;
        row.panelName = slot->name;
        row.doorNames = slot->doorNames;
        result << row;
    }
    return result;
}

GroupRepository::Result GroupRepository::nextNumber() const
{
    QString error;
    const QVariant highest = m_db.scalar(u"SELECT MAX("_s + q(kNumber) + u") FROM "_s + q(kMaster), {}, &error);
    if (!error.isEmpty())
        return failed(0, error);
    const int next = highest.isNull() ? FirstNumber : highest.toInt() + 1;
    if (next > LastNumber)
        return refused(next, Message(u"Grup No değeri 1280'i geçemez!"_s));
    return done(next);
}

bool GroupRepository::writeDetails(const GroupMasterRow& master, const QList<GroupDetailRow>& details, bool fresh,
                                   QString* error) const
{
    QHash<int, GroupDetailRow> edited;
    for (const GroupDetailRow& row : details)
        edited.insert(row.panelNo, row);
    const QHash<int, PanelSlot> inUse = panelsInUse(m_db, error);
    if (error && !error->isEmpty())
        return false;
    if (fresh
        && !m_db.exec(u"DELETE FROM "_s + q(kDetail) + u" WHERE "_s + q(kNumber) + u" = ?"_s, { master.number }, error))
        return false;
    const QStringList doors = doorColumns();
    QStringList assignments;
    for (const QString& column : QStringList{ kName, kSerial } + doors)
        assignments << q(column) + u" = ?"_s;
    const QString update = u"UPDATE "_s + q(kDetail) + u" SET "_s + assignments.join(u", "_s) + u" WHERE "_s
        + q(kNumber) + u" = ? AND "_s + q(kPanel) + u" = ?"_s;
    QList<QVariantList> inserts;
    for (int panel = 1; panel <= PanelSlots; ++panel) {
        GroupDetailRow row = edited.value(panel);
        row.panelNo = panel;
        row.serial = inUse.value(panel).serial;
        int changed = 0;
        if (!fresh) {
            const bool given = edited.contains(panel);
            // Rows not edited keep their doors: only the name and the serial follow.
            const QString sql = given ? update
                                      : u"UPDATE "_s + q(kDetail) + u" SET "_s + q(kName) + u" = ?, "_s + q(kSerial)
                    + u" = ? WHERE "_s + q(kNumber) + u" = ? AND "_s + q(kPanel) + u" = ?"_s;
            QVariantList params{ master.name, row.serial };
            if (given)
                params << doorValues(row);
            params << master.number << panel;
            changed = m_db.execCount(sql, params, error);
            if (changed < 0)
                return false;
        }
        if (changed == 0)
            inserts << (QVariantList{ master.number, master.name, panel, row.serial } + doorValues(row));
    }
    return inserts.isEmpty()
        || m_db.insertRows(kDetail, QStringList{ kNumber, kName, kPanel, kSerial } + doors, inserts, error);
}

GroupRepository::Result GroupRepository::add(const GroupMasterRow& master, const QList<GroupDetailRow>& details) const
{
    const int number = master.number;
    if (!inRange(number))
        return badNumber(number);
    if (!m_writable)
        return readOnly(number);
    QString error;
    if (find(number, &error))
        return refused(number, Message(kDuplicate));
    if (!error.isEmpty())
        return failed(number, error);
    Transaction tx(*m_writable);
    if (!tx.isActive())
        return failed(number, tx.error());
    if (!m_db.insert(kMaster, masterColumns(), masterValues(master), &error)) {
        // Another station stored the same number a moment ago.
        if (m_db.lastErrorWasUniqueViolation())
            return refused(number, Message(kDuplicate), error);
        return failed(number, error);
    }
    if (!writeDetails(master, details, true, &error) || !tx.commit(&error))
        return failed(number, error);
    return done(number);
}

GroupRepository::Result GroupRepository::update(const GroupMasterRow& master,
                                                const QList<GroupDetailRow>& details) const
{
    const int number = master.number;
    if (!inRange(number))
        return badNumber(number);
    if (!m_writable)
        return readOnly(number);
    Transaction tx(*m_writable);
    if (!tx.isActive())
        return failed(number, tx.error());
    QStringList assignments;
    for (const QString& column : masterColumns().mid(1))
        assignments << q(column) + u" = ?"_s;
    QVariantList params = masterValues(master).mid(1);
    params << number;
    QString error;
    const int changed = m_db.execCount(u"UPDATE "_s + q(kMaster) + u" SET "_s + assignments.join(u", "_s) + u" WHERE "_s
                                           + q(kNumber) + u" = ?"_s,
                                       params, &error);
    if (changed < 0)
        return failed(number, error);
    if (changed == 0)
        return refused(number, notFound(number));
    if (!writeDetails(master, details, false, &error) || !tx.commit(&error))
        return failed(number, error);
    return done(number);
}

GroupRepository::Result GroupRepository::storeDetails(const QList<GroupDetailRow>& details) const
{
    if (!m_writable)
        return readOnly(0);
    Transaction tx(*m_writable);
    if (!tx.isActive())
        return failed(0, tx.error());
    QStringList assignments;
    for (const QString& column : doorColumns())
        assignments << q(column) + u" = ?"_s;
    const QString sql = u"UPDATE "_s + q(kDetail) + u" SET "_s + assignments.join(u", "_s) + u" WHERE "_s + q(kNumber)
        + u" = ? AND "_s + q(kPanel) + u" = ?"_s;
    QString error;
    for (const GroupDetailRow& row : details) {
        if (m_db.execCount(sql, doorValues(row) + QVariantList{ row.groupNo, row.panelNo }, &error) < 0)
            return failed(row.groupNo, error);
    }
    if (!tx.commit(&error))
        return failed(0, error);
    return done(details.isEmpty() ? 0 : details.constFirst().groupNo);
}

GroupRepository::Result GroupRepository::remove(int number) const
{
    if (!m_writable)
        return readOnly(number);
    Transaction tx(*m_writable);
    if (!tx.isActive())
        return failed(number, tx.error());
    QString error;
    if (!m_db.exec(u"DELETE FROM "_s + q(kDetail) + u" WHERE "_s + q(kNumber) + u" = ?"_s, { number }, &error))
        return refused(number, Message(u"Sınırlama seçenekleri silinemediği için grup silinemedi, Tekrar deneyiniz!"_s),
                       error);
    const int changed
        = m_db.execCount(u"DELETE FROM "_s + q(kMaster) + u" WHERE "_s + q(kNumber) + u" = ?"_s, { number }, &error);
    if (changed < 0)
        return failed(number, error);
    if (changed == 0)
        return refused(number, notFound(number));
    if (!tx.commit(&error))
        return failed(number, error);
    return done(number);
}

bool GroupRepository::inRange(int number)
{
    return number >= FirstNumber && number <= LastNumber;
}

Message GroupRepository::deleteQuestion()
{
    return Message(u"Bu grubu silmek istiyor musunuz?"_s);
}

Message GroupRepository::notFound(int number)
{
    return Message().value(number).add(u" nolu grup bulunamadı."_s);
}
