#include "store/SchemaDefinition.h"

using namespace Qt::StringLiterals;

namespace {

// Time-of-day defaults live on the base date, as every stored time of day does.
const QString kEightOClock = u"'1899-12-30 08:00:00'"_s;
const QString kSixPm = u"'1899-12-30 18:00:00'"_s;

SchemaColumn counter(const QString& name)
{
    return { name, ColumnType::Counter, {}, true, 0, {} };
}
SchemaColumn integer(const QString& name, const QString& def = u"0"_s)
{
    return { name, ColumnType::Integer, def, false, 0, {} };
}
SchemaColumn bigInt(const QString& name, const QString& def = u"0"_s)
{
    return { name, ColumnType::BigInt, def, false, 0, {} };
}
SchemaColumn flag(const QString& name, const QString& def = u"0"_s)
{
    return { name, ColumnType::Flag, def, false, 0, {} };
}
SchemaColumn text(const QString& name, int size = 0)
{
    return { name, ColumnType::Text, {}, false, size, {} };
}
SchemaColumn dateTime(const QString& name, const QString& def = {}, bool notNull = false)
{
    return { name, ColumnType::DateTime, def, notNull, 0, {} };
}
QString n(int i)
{
    return QString::number(i);
}

SchemaTable users()
{
    SchemaTable t{ u"Users"_s, {}, {}, {}, {} };
    t.columns = { counter(u"Kayit No"_s),
                  integer(u"ID"_s, {}),
                  bigInt(u"Kart ID"_s, {}),
                  text(u"Adi"_s),
                  text(u"Soyadi"_s),
                  integer(u"Kullanici Tipi"_s),
                  integer(u"Sifre"_s),
                  integer(u"Gecis Modu"_s),
                  integer(u"Grup No"_s),
                  flag(u"Grup Takvimi Aktif"_s),
                  integer(u"Grup Takvimi No"_s),
                  flag(u"Gecici Grup Aktif"_s),
                  integer(u"Gecici Grup No"_s),
                  dateTime(u"Gecici Grup Tarih"_s),
                  dateTime(u"Gecici Grup Saat"_s),
                  integer(u"Sirket No"_s),
                  integer(u"Departman No"_s),
                  integer(u"Blok No"_s),
                  integer(u"Daire"_s),
                  text(u"Plaka"_s),
                  text(u"TCKimlik"_s),
                  text(u"Adres"_s),
                  text(u"Resim"_s),
                  flag(u"Gunluk Gecis Onayi"_s),
                  text(u"Tmp"_s) };
    t.indexes = { { u"Users_ID"_s, { u"ID"_s }, true }, { u"Users_KartID"_s, { u"Kart ID"_s }, true } };
    return t;
}

SchemaTable visitors()
{
    SchemaTable t{ u"Visitors"_s, {}, {}, {}, {} };
    t.columns = { counter(u"Kayit No"_s), integer(u"User ID"_s),     bigInt(u"Kart ID"_s),  text(u"Adi"_s),
                  text(u"Soyadi"_s),      text(u"TCKimlik"_s),       text(u"Plaka"_s, 25),  dateTime(u"Tarih"_s),
                  dateTime(u"Saat"_s),    text(u"Ziyaret Sebebi"_s), integer(u"Grup No"_s), integer(u"ID"_s) };
    t.indexes = { { u"Visitors_KartID_Tarih"_s, { u"Kart ID"_s, u"Tarih"_s }, false } };
    return t;
}

SchemaTable accessDatas()
{
    SchemaTable t{ u"AccessDatas"_s, {}, {}, {}, {} };
    t.columns = { counter(u"Kayit No"_s),
                  integer(u"Panel ID"_s),
                  integer(u"Kapi ID"_s),
                  integer(u"Lokal Bolge No"_s, u"1"_s),
                  integer(u"Global Bolge No"_s, u"1"_s),
                  integer(u"ID"_s),
                  bigInt(u"Kart ID"_s),
                  dateTime(u"Tarih"_s),
                  integer(u"Gecis Tipi"_s),
                  integer(u"Kod"_s),
                  integer(u"Kullanici Tipi"_s),
                  integer(u"Visitor No"_s) };
    // Reports select by date; the import checks for an already stored record by panel, id and date;
    // one person's passages are read newest first through the person's own index.
    t.indexes = { { u"AccessDatas_Tarih"_s, { u"Tarih"_s }, false },
                  { u"AccessDatas_Panel_ID_Tarih"_s, { u"Panel ID"_s, u"ID"_s, u"Tarih"_s }, false },
                  { u"AccessDatas_ID_Tarih"_s, { u"ID"_s, u"Tarih"_s }, false } };
    return t;
}

// When each panel's record memory was last erased: the highest "Kayit No" of AccessDatas and of
// UnreadRecords at that moment. What a panel holds afterwards is compared only with rows stored
// after them.
SchemaTable recordErasures()
{
    SchemaTable t{ u"RecordErasures"_s, {}, { u"Panel ID"_s }, {}, {} };
    t.columns = { integer(u"Panel ID"_s, {}), bigInt(u"Son Kayit No"_s), bigInt(u"Son Okunamayan No"_s),
                  dateTime(u"Tarih"_s) };
    return t;
}

// Each person's latest granted passage per zone and panel, kept as passages are stored, so that
// "who is inside now" reads a row per person instead of every passage ever stored.
// Keyed by zone first: "who is inside now" lists them by zone, then person, in the key's order.
SchemaTable whereabouts()
{
    SchemaTable t{ u"Whereabouts"_s, {}, { u"Global Bolge No"_s, u"ID"_s, u"Panel ID"_s }, {}, {} };
    t.columns = { integer(u"ID"_s, {}),       integer(u"Global Bolge No"_s, {}),
                  integer(u"Panel ID"_s, {}), bigInt(u"Kayit No"_s),
                  bigInt(u"Kart ID"_s),       integer(u"Kapi ID"_s),
                  integer(u"Gecis Tipi"_s),   dateTime(u"Tarih"_s) };
    return t;
}

// Pieces of downloaded record streams that could not be read as passages, kept for the operator.
SchemaTable unreadRecords()
{
    SchemaTable t{ u"UnreadRecords"_s, {}, {}, {}, {} };
    t.columns
        = { counter(u"Kayit No"_s), integer(u"Panel ID"_s), dateTime(u"Tarih"_s), text(u"Metin"_s), text(u"Neden"_s) };
    t.indexes = { { u"UnreadRecords_Panel_ID"_s, { u"Panel ID"_s }, false } };
    return t;
}

// What the station last sent to each panel, and when: one row per panel and kind of data (users,
// groups, time groups), with a fingerprint of the data as it was then.
SchemaTable panelSends()
{
    SchemaTable t{ u"PanelSends"_s, {}, { u"Panel No"_s, u"Veri"_s }, {}, {} };
    t.columns = { integer(u"Panel No"_s, {}), integer(u"Veri"_s, {}), dateTime(u"Tarih"_s), text(u"Imza"_s) };
    return t;
}

// The users each panel acknowledged, as their user blocks: what a send of changed users compares.
SchemaTable panelUsers()
{
    SchemaTable t{ u"PanelUsers"_s, {}, { u"Panel No"_s, u"ID"_s }, {}, {} };
    t.columns = { integer(u"Panel No"_s, {}), integer(u"ID"_s, {}), text(u"Imza"_s) };
    return t;
}

SchemaTable groupsMaster()
{
    SchemaTable t{ u"GroupsMaster"_s, {}, { u"Grup No"_s }, {}, {} };
    t.columns = { integer(u"Grup No"_s, {}),
                  text(u"Grup Adi"_s),
                  flag(u"Gunluk Onay Gerekli"_s),
                  flag(u"Mukerrer Engelleme Gecersiz"_s),
                  flag(u"Lokal Kapasite Gecersiz"_s),
                  flag(u"Gece Icerdeki Kisi Sayisini Sil"_s),
                  flag(u"Antipassback Gecersiz"_s),
                  integer(u"Grup Gecis Sayisi"_s),
                  integer(u"Grup Gecis Sayisi Global Bolge No"_s),
                  integer(u"Grup Icerdeki Kisi Sayisi"_s),
                  integer(u"Grup Icerdeki Kisi Sayisi Global Bolge No"_s),
                  integer(u"Gunluk Aylik"_s) };
    return t;
}

SchemaTable groupsDetail()
{
    SchemaTable t{ u"GroupsDetail"_s, {}, {}, {}, {} };
    t.columns = { counter(u"Kayit No"_s), integer(u"Grup No"_s), text(u"Grup Adi"_s), integer(u"Seri No"_s),
                  integer(u"Panel No"_s) };
    for (int d = 1; d <= 4; ++d)
        t.columns << flag(u"Kapi"_s + n(d));
    for (int d = 1; d <= 4; ++d)
        t.columns << integer(u"Kapi"_s + n(d) + u" Zaman Grup No"_s);
    for (int d = 1; d <= 4; ++d)
        t.columns << integer(u"Kapi"_s + n(d) + u" Global Bolge No"_s, u"1"_s);
    t.indexes = { { u"GroupsDetail_GrupNo"_s, { u"Grup No"_s }, false },
                  { u"GroupsDetail_PanelNo"_s, { u"Panel No"_s }, false } };
    return t;
}

SchemaTable panelSettings()
{
    SchemaTable t{ u"PanelSettings"_s, {}, {}, {}, {} };
    auto& c = t.columns;
    c << integer(u"Sira No"_s) << integer(u"Panel ID"_s, {}) << integer(u"Seri No"_s) << text(u"Panel Adi"_s)
      << integer(u"Panel Model"_s) << integer(u"Kontrol Modu"_s) << integer(u"Kart Sayisi"_s);
    for (const QString& part : { u"Panel IP"_s, u"Panel Subnet"_s, u"Panel GW"_s }) {
        for (int i = 1; i <= 4; ++i)
            c << integer(part + n(i));
    }
    c << integer(u"Panel TCP Port"_s);
    for (int i = 1; i <= 4; ++i)
        c << integer(u"Panel Remote IP"_s + n(i));
    c << integer(u"Panel Remote TCP Port"_s);
    for (int i = 1; i <= 4; ++i)
        c << integer(u"Panel M"_s + n(i) + u" Role"_s);
    for (const QString& name :
         { u"SingleUart"_s, u"Lokal APB"_s, u"Lokal APB2"_s, u"Global APB"_s, u"Global APB Grup"_s,
           u"Global Access Count Control"_s, u"Global MaxIn Count Control"_s, u"Global Capacity Control"_s,
           u"Panel Local Capacity"_s, u"Panel Local Capacity Value"_s, u"Panel Local Capacity Clear"_s,
           u"Panel Same Tag Block"_s, u"Panel Same Tag Block Type"_s, u"Panel Same Tag Block MinSec"_s,
           u"Status Data Update"_s, u"Status Data Update Type"_s, u"Status Data Update Time"_s, u"Buton Aktif"_s,
           u"Button Loop"_s })
        c << integer(name);
    c << integer(u"Loop Trigger Time"_s, u"1"_s) << integer(u"Panel Global Bolge1"_s, u"1"_s)
      << integer(u"Panel Global Bolge2"_s, u"1"_s) << integer(u"Gecici Grup Aktif"_s) << integer(u"Yangin Aktif"_s)
      << integer(u"Yangin Yayin Aktif"_s) << integer(u"Gece Kapasiteyi Sil"_s);
    // The panel clock's offset from the station's as last read (seconds; empty until read), and when.
    c << integer(u"Saat Farki"_s, {}) << dateTime(u"Saat Okuma Zamani"_s);
    for (int d = 1; d <= 4; ++d) {
        const QString k = u"Kapi"_s + n(d);
        c << integer(k + u" Aktif"_s) << text(k + u" Adi"_s) << integer(k + u" Role"_s)
          << integer(k + u" Calisma Modu"_s) << integer(k + u" Kapi Tipi"_s) << integer(k + u" Gecis Modu"_s)
          << integer(k + u" Modeli"_s) << integer(k + u" Role Secimi"_s) << integer(k + u" Role No"_s)
          << integer(k + u" Button Loop"_s, u"1"_s) << integer(k + u" Lokal Bolge"_s, u"1"_s);
    }
    // A panel number appears once; the unique index also lets settings be stored by upsert.
    t.indexes = { { u"PanelSettings_PanelID"_s, { u"Panel ID"_s }, true } };
    return t;
}

SchemaTable globalZones()
{
    return { u"GlobalZones"_s,
             { integer(u"Global Bolge No"_s, {}), text(u"Global Bolge Adi"_s) },
             { u"Global Bolge No"_s },
             {},
             {} };
}

SchemaTable usersApb()
{
    SchemaTable t{ u"UsersAPB"_s, { integer(u"ID"_s), integer(u"Global Bolge No"_s), integer(u"APB"_s) }, {}, {}, {} };
    t.indexes = { { u"UsersAPB_ID_Zone"_s, { u"ID"_s, u"Global Bolge No"_s }, true } };
    return t;
}

SchemaTable timeGroups()
{
    SchemaTable t{ u"TimeGroups"_s, {}, { u"Zaman Grup No"_s }, {}, {} };
    auto& c = t.columns;
    c << integer(u"Zaman Grup No"_s, {}) << text(u"Zaman Grup Adi"_s) << integer(u"Gecis Sinirlama Tipi"_s)
      << dateTime(u"Baslangic Tarihi"_s) << dateTime(u"Bitis Tarihi"_s) << dateTime(u"Baslangic Saati"_s)
      << dateTime(u"Bitis Saati"_s);
    const QStringList days
        = { u"Pazartesi"_s, u"Sali"_s, u"Carsamba"_s, u"Persembe"_s, u"Cuma"_s, u"Cumartesi"_s, u"Pazar"_s };
    for (const QString& d : days)
        c << flag(d);
    for (int i = 1; i <= 31; ++i)
        c << flag(u"Gun"_s + n(i));
    for (int i = 1; i <= 3; ++i)
        c << dateTime(u"Baslangic Saati "_s + n(i));
    c << integer(u"Ek Saat"_s, u"1"_s) << integer(u"Ek Saat 2"_s, u"1"_s) << flag(u"Ilave Saat Kontrolu"_s)
      << dateTime(u"Ilave Baslangic Saati"_s) << dateTime(u"Ilave Bitis Saati"_s);
    for (int i = 1; i <= 6; ++i)
        c << integer(u"Saat "_s + n(i));
    for (const QString& d : days) {
        c << dateTime(d + u" Baslangic Saati"_s, kEightOClock, true) << dateTime(d + u" Bitis Saati"_s, kSixPm, true);
    }
    return t;
}

SchemaTable timeZoneIds()
{
    SchemaTable t{
        u"TimeZoneIDs"_s, { counter(u"Kayit No"_s), integer(u"Gecis Sinirlama Tipi"_s), text(u"Adi"_s) }, {}, {}, {}
    };
    t.indexes = { { u"TimeZoneIDs_Tipi"_s, { u"Gecis Sinirlama Tipi"_s }, false } };
    return t;
}

SchemaTable timeZoneCalendar()
{
    return { u"TimeZoneCalendar"_s,
             { integer(u"Grup Takvimi No"_s, {}), text(u"Grup Takvimi Adi"_s), integer(u"Grup Takvimi Tipi"_s),
               integer(u"Grup No 1"_s), integer(u"Grup No 2"_s), integer(u"Grup No 3"_s), dateTime(u"Tarih 1"_s),
               dateTime(u"Saat 1"_s), dateTime(u"Tarih 2"_s), dateTime(u"Saat 2"_s) },
             { u"Grup Takvimi No"_s },
             {},
             {} };
}

SchemaTable progRelay2()
{
    SchemaTable t{ u"ProgRelay2"_s, {}, {}, {}, {} };
    t.columns << counter(u"Kayit No"_s) << integer(u"Panel No"_s) << integer(u"Haftanin Gunu"_s)
              << integer(u"Zaman Dilimi"_s) << dateTime(u"Saat 1"_s) << dateTime(u"Saat 2"_s) << flag(u"Aktif"_s);
    for (int i = 1; i <= 8; ++i)
        t.columns << flag(u"Cihaz "_s + n(i));
    for (int i = 1; i <= 8; ++i)
        t.columns << flag(u"Role "_s + n(i));
    t.indexes
        = { { u"ProgRelay2_Panel_Gun_Dilim"_s, { u"Panel No"_s, u"Haftanin Gunu"_s, u"Zaman Dilimi"_s }, false } };
    return t;
}

SchemaTable keyedNames(const QString& table, const QString& key, const QString& nameColumn)
{
    return { table, { integer(key, {}), text(nameColumn) }, { key }, {}, {} };
}

SchemaTable progInit()
{
    SchemaTable t{ u"ProgInit"_s, {}, {}, {}, {} };
    // No administrator password until the operator chooses one.
    t.columns << bigInt(u"AdminPassword"_s, {});
    for (int i = 1; i <= 10; ++i)
        t.columns << text(u"User Name "_s + n(i));
    for (int i = 1; i <= 10; ++i)
        t.columns << bigInt(u"Password "_s + n(i), {});
    for (int i = 1; i <= 10; ++i)
        t.columns << integer(u"User Type "_s + n(i));
    t.columns << flag(u"LiveAPBInvalid"_s) << flag(u"LiveDeniedInvalid"_s) << flag(u"LiveUnknownInvalid"_s)
              << dateTime(u"LastBackupDate"_s) << integer(u"BackupPeriode"_s, u"1"_s)
              << integer(u"BackupDay"_s, u"1"_s);
    // The nightly fall-back of the daily passage approvals: off until the operator sets a time.
    t.columns << flag(u"Onay Sifirlama Aktif"_s) << dateTime(u"Onay Sifirlama Saati"_s)
              << flag(u"Onay Sifirlama Panellere"_s);
    // The daily send takes only the users changed since each panel's last send: off, every user.
    t.columns << flag(u"Gunluk Gonderim Degisenler"_s);
    return t;
}

SchemaTable rawUsers()
{
    SchemaTable t{ u"RawUsers"_s, {}, {}, u"RawUsers_PK"_s, {} };
    SchemaColumn id{ u"ID"_s, ColumnType::Integer, {}, true, 0, u"RawUsers_U1"_s };
    SchemaColumn card{ u"Kart ID"_s, ColumnType::BigInt, {}, true, 0, u"RawUsers_U2"_s };
    t.columns << counter(u"Kayit No"_s) << id << card << text(u"Adi"_s, 50) << text(u"Soyadi"_s, 50)
              << integer(u"Grup No"_s, {}) << text(u"Plaka"_s, 50) << integer(u"Sirket No"_s, {})
              << integer(u"Departman No"_s, {});
    return t;
}

SchemaTable rawGroups()
{
    SchemaTable t{ u"RawGroups"_s, {}, {}, u"RawGroups_PK"_s, {} };
    SchemaColumn group{ u"Grup No"_s, ColumnType::Integer, {}, true, 0, u"RawGroups_U1"_s };
    t.columns << counter(u"Kayit No"_s) << group << text(u"Grup Adi"_s, 50);
    return t;
}

QList<SchemaTable> buildMainTables()
{
    return { users(),
             visitors(),
             accessDatas(),
             groupsMaster(),
             groupsDetail(),
             panelSettings(),
             globalZones(),
             usersApb(),
             timeGroups(),
             timeZoneIds(),
             timeZoneCalendar(),
             progRelay2(),
             keyedNames(u"Sirketler"_s, u"Sirket No"_s, u"Adi"_s),
             keyedNames(u"Departmanlar"_s, u"Departman No"_s, u"Adi"_s),
             keyedNames(u"Bloklar"_s, u"Blok No"_s, u"Adi"_s),
             keyedNames(u"UserTypes"_s, u"Kullanici Tipi"_s, u"Adi"_s),
             keyedNames(u"AccessModes"_s, u"Gecis Modu"_s, u"Adi"_s),
             keyedNames(u"CodeDefinition"_s, u"TKod"_s, u"Operasyon"_s),
             keyedNames(u"CodeOperation"_s, u"TKod"_s, u"Operasyon"_s),
             progInit(),
             rawUsers(),
             rawGroups(),
             recordErasures(),
             unreadRecords(),
             whereabouts(),
             panelSends(),
             panelUsers() };
}

} // namespace

const QList<SchemaTable>& SchemaDefinition::mainTables()
{
    static const QList<SchemaTable> tables = buildMainTables();
    return tables;
}

const SchemaTable* SchemaDefinition::table(const QString& name)
{
    for (const SchemaTable& t : mainTables()) {
        if (t.name.compare(name, Qt::CaseInsensitive) == 0)
            return &t;
    }
    return nullptr;
}

int SchemaDefinition::currentVersion()
{
    // 2: record erasures and unread record pieces; 3: panel clock offsets; 4: whereabouts; 5: what
    // each panel was last sent.
    return 5;
}

QString SchemaDefinition::versionTable()
{
    return u"SchemaVersion"_s;
}
