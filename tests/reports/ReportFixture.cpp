#include "ReportFixture.h"

#include "reports/ReportBuilder.h"
#include "reports/ReportRowSource.h"
#include "store/Whereabouts.h"

using namespace Qt::StringLiterals;

QDateTime ReportFixture::at(int dayOffset, int h, int m, int s)
{
    return QDateTime(day().addDays(dayOffset), QTime(h, m, s));
}

QDateTime ReportFixture::wall(int dayOffset, int h, int m, int s)
{
    return QDateTime(day().addDays(dayOffset), QTime(h, m, s), Qt::UTC);
}

ReportFilter ReportFixture::oneDay()
{
    ReportFilter f;
    f.allDates = false;
    f.dateStart = day();
    f.day = day();
    return f;
}

bool ReportFixture::addRecords(Database& db, const QList<QVariantList>& rows, QString* error)
{
    return db.insertRows(u"AccessDatas"_s,
                         { u"Panel ID"_s, u"Kapi ID"_s, u"Global Bolge No"_s, u"ID"_s, u"Kart ID"_s, u"Tarih"_s,
                           u"Gecis Tipi"_s, u"Kod"_s, u"Kullanici Tipi"_s, u"Visitor No"_s },
                         rows, error);
}

bool ReportFixture::seed(Database& db, QString* error)
{
    QList<QVariantList> panels;
    // Panel, order, serial, global zone of local zones 1 and 2, local zone of doors 1..4.
    panels << QVariantList{ 1, 1, 1, 1, 2, 1, 1, 2, 2 } << QVariantList{ 2, 2, 2, 2, 2, 1, 1, 1, 1 }
           << QVariantList{ 3, 3, 3, 1, 1, 1, 1, 1, 1 };
    if (!db.insertRows(u"PanelSettings"_s,
                       { u"Panel ID"_s, u"Sira No"_s, u"Seri No"_s, u"Panel Global Bolge1"_s, u"Panel Global Bolge2"_s,
                         u"Kapi1 Lokal Bolge"_s, u"Kapi2 Lokal Bolge"_s, u"Kapi3 Lokal Bolge"_s,
                         u"Kapi4 Lokal Bolge"_s },
                       panels, error))
        return false;
    if (!db.insertRows(u"GlobalZones"_s, { u"Global Bolge No"_s, u"Global Bolge Adi"_s },
                       { { 1, u"Ana Bina"_s }, { 2, u"Otopark"_s } }, error)
        || !db.insertRows(u"GroupsMaster"_s, { u"Grup No"_s, u"Grup Adi"_s },
                          { { 1, u"Genel"_s }, { 2, u"Yönetim"_s } }, error)
        || !db.insertRows(u"Sirketler"_s, { u"Sirket No"_s, u"Adi"_s }, { { 1, u"Acme"_s } }, error)
        || !db.insertRows(u"Departmanlar"_s, { u"Departman No"_s, u"Adi"_s },
                          { { 1, u"Muhasebe"_s }, { 2, u"Üretim"_s } }, error)
        || !db.insertRows(u"Bloklar"_s, { u"Blok No"_s, u"Adi"_s }, { { 1, u"A Blok"_s } }, error))
        return false;

    const QStringList userColumns
        = { u"ID"_s,        u"Kart ID"_s,      u"Adi"_s,     u"Soyadi"_s, u"Kullanici Tipi"_s, u"Grup No"_s,
            u"Sirket No"_s, u"Departman No"_s, u"Blok No"_s, u"Daire"_s,  u"Plaka"_s };
    QList<QVariantList> users;
    users << QVariantList{ 1, 1001, u"Ali"_s, u"Veli"_s, 0, 1, 1, 1, 1, 5, u"34 O'NEIL 1"_s }
          << QVariantList{ 2, 1002, u"Ayşe"_s, u"Yılmaz"_s, 0, 2, 1, 2, 0, 0, u"50%OFF"_s }
          << QVariantList{ 3, 1003, u"Mehmet"_s, u"Öz"_s, 0, 1, 0, 1, 0, 0, QString() }
          << QVariantList{ 4, 1004, u"أحمد"_s, u"Çelik"_s, 0, 1, 0, 1, 0, 0, QString() }
          << QVariantList{ 5, 1005, u"Fatma"_s, u"Kaya"_s, 0, 1, 0, 1, 0, 0, QString() }
          << QVariantList{ 6, 9001, u"Ziyaretçi"_s, u"Kartı"_s, 1, 1, 0, 0, 0, 0, QString() };
    if (!db.insertRows(u"Users"_s, userColumns, users, error))
        return false;
    if (!db.insertRows(u"Visitors"_s,
                       { u"Kayit No"_s, u"User ID"_s, u"Kart ID"_s, u"Adi"_s, u"Soyadi"_s, u"TCKimlik"_s, u"Plaka"_s,
                         u"Tarih"_s, u"Ziyaret Sebebi"_s, u"ID"_s },
                       { { 7, 6, 9001, u"Can"_s, u"Demir"_s, u"12345678901"_s, u"06 ZZ 06"_s,
                           QDateTime(day(), QTime(0, 0)), u"Toplantı"_s, 1 } },
                       error))
        return false;

    QList<QVariantList> records;
    records << QVariantList{ 1, 1, 1, 1, 1001, at(0, 0, 0, 0), 0, 1, 0, 0 } // r1 midnight entry
            << QVariantList{ 1, 2, 1, 1, 1001, at(0, 17, 30, 0), 1, 1, 0, 0 } // r2 exit
            << QVariantList{ 2, 1, 2, 2, 1002, at(0, 23, 59, 59), 0, 1, 0, 0 } // r3 last second
            << QVariantList{ 1, 1, 1, 4, 1004, at(0, 8, 0, 0), 1, 1, 0, 0 } // r4 exit only
            << QVariantList{ 1, 1, 1, 5, 1005, at(0, 9, 0, 0), 0, 0, 0, 0 } // r5 denied
            << QVariantList{ 3, 1, 1, 99, 5555, at(0, 10, 0, 0), 0, 4, 0, 0 } // r6 no Users row
            << QVariantList{ 1, 1, 1, 1, 1001, at(-1, 23, 59, 59), 0, 1, 0, 0 } // r7 day before
            << QVariantList{ 1, 3, 2, 2, 1002, at(1, 0, 0, 0), 0, 1, 0, 0 } // r8 day after
            << QVariantList{ 1, 1, 1, 6, 0, at(0, 12, 0, 0), 0, 6, 0, 0 } // r9 operator open
            << QVariantList{ 2, 2, 2, 42, 0, at(0, 12, 30, 0), 1, 5, 0, 0 } // r10 code without text
            << QVariantList{ 1, 1, 1, 6, 9001, at(0, 11, 0, 0), 0, 1, 1, 7 } // r11 visitor
            << QVariantList{ 4, 1, 1, 2, 1002, at(0, 13, 0, 0), 0, 1, 0, 0 }; // r12 unwatched panel
    // Written past the passage store: the kept whereabouts are made from them as a repair would.
    if (!addRecords(db, records, error) || Whereabouts::rebuild(db, error) < 0)
        return false;
    return db.insertRows(u"UsersAPB"_s, { u"ID"_s, u"Global Bolge No"_s, u"APB"_s }, { { 2, 2, 0 } }, error);
}

bool ReportFixture::addRepeats(Database& db, QString* error)
{
    const auto at = [](int h) { return QDateTime(repeatDay(), QTime(h, 0)); };
    const QVariantList p1{ 1, 1, 1, 1, 1001, at(9), 0, 1, 0, 0 };
    const QVariantList p2{ 2, 1, 2, 2, 1002, at(9), 0, 1, 0, 0 };
    const QVariantList p2Denied{ 2, 1, 2, 2, 1002, at(9), 0, 0, 0, 0 };
    const QVariantList p3{ 3, 1, 1, 3, 1003, at(9), 0, 1, 0, 0 };
    const QVariantList p4{ 1, 1, 1, 4, 1004, at(8), 0, 1, 0, 0 };
    const QVariantList p5{ 1, 2, 1, 5, 1005, at(7), 1, 1, 0, 0 };
    const QVariantList opened{ 1, 1, 1, 6, 0, at(10), 0, 6, 0, 0 };
    // Copies stored apart, so that the copies of a second are not neighbours.
    return addRecords(db, { p3, p1, p1, p2, p2Denied, p3, p5, p5, p3, p4, p5, opened, opened }, error)
        && Whereabouts::rebuild(db, error) >= 0;
}

bool ReportFixture::removeRepeats(Database& db, QString* error)
{
    return db.exec(u"DELETE FROM \"AccessDatas\" WHERE \"Tarih\" >= ? AND \"Tarih\" < ?"_s,
                   { db.toSql(repeatDay().startOfDay()), db.toSql(repeatDay().addDays(1).startOfDay()) }, error)
        && Whereabouts::rebuild(db, error) >= 0;
}

QList<QVariantList> ReportFixture::rows(const Database& db, ReportKind kind, const ReportFilter& filter, QString* error)
{
    QList<QVariantList> all;
    const ReportStatement st = ReportBuilder::build(db, kind, filter);
    ReportRowSource source;
    if (!source.open(db, st, error))
        return all;
    // Small steps, so that reading across pages is exercised too.
    while (!source.atEnd())
        all += source.fetch(2);
    if (error && !source.error().isEmpty())
        *error = source.error();
    return all;
}

QVariantList ReportFixture::column(const QList<QVariantList>& rows, int index)
{
    QVariantList values;
    for (const QVariantList& r : rows)
        values << r.value(index);
    return values;
}
