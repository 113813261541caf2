#include "operations/configuration/ZoneRepository.h"
#include "support/TestDatabases.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString kDuplicate = u"Birincil anahtar hatası! Bu değer daha önce girilmişti. Lütfen kontrol ediniz!"_s;
const QString kRange = u"Global Bölge No 1-64 arasında olmalıdır!"_s;
const QString kNoName = u"Lütfen Global Bölge Adını giriniz"_s;

using Row = ZoneRepository::Row;

bool addPanel(Database& db, int number, int serial, int zone1, int zone2)
{
    return db.insert(u"PanelSettings"_s,
                     { u"Sira No"_s, u"Panel ID"_s, u"Seri No"_s, u"Panel Global Bolge1"_s, u"Panel Global Bolge2"_s },
                     { number, number, serial, zone1, zone2 });
}

bool addGroup(Database& db, int group, int countZone, int insideZone)
{
    return db.insert(u"GroupsMaster"_s,
                     { u"Grup No"_s, u"Grup Adi"_s, u"Grup Gecis Sayisi Global Bolge No"_s,
                       u"Grup Icerdeki Kisi Sayisi Global Bolge No"_s },
                     { group, QString(u"G"_s + QString::number(group)), countZone, insideZone });
}

// One group row for one panel; every door in zone `zone` except door 3, which is in `door3Zone`.
bool addGroupRow(Database& db, int group, int panel, int serial, int zone, int door3Zone)
{
    QStringList columns{ u"Grup No"_s, u"Panel No"_s, u"Seri No"_s };
    QVariantList values{ group, panel, serial };
    for (int d = 1; d <= 4; ++d) {
        columns << u"Kapi"_s + QString::number(d) + u" Global Bolge No"_s;
        values << (d == 3 ? door3Zone : zone);
    }
    return db.insert(u"GroupsDetail"_s, columns, values);
}

} // namespace

// The global zones as the zone window and kx410ctl keep them, on each engine.
class ZonesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void zonesAreNumberedNamedAndKeptWhileInUse_data() { TestDatabases::addEngineRows(); }
    void zonesAreNumberedNamedAndKeptWhileInUse();
};

void ZonesTest::zonesAreNumberedNamedAndKeptWhileInUse()
{
    KX_OPEN_FRESH_DATABASE(dbs, db);
    const ZoneRepository zones(db);
    QCOMPARE(zones.nextFreeNumber(), 1);

    // Without a number the lowest free one is taken; names are stored exactly as typed.
    const QString tricky = u"O'Reilly \"Otopark\"; DROP TABLE GlobalZones; -- Çağrı İşçi عربي"_s;
    ZoneRepository::Result r = zones.add({ 0, tricky });
    QVERIFY2(r.ok, qPrintable(r.error));
    QCOMPARE(r.number, 1);
    QVERIFY(zones.add({ 64, u"Son"_s }).ok);
    QVERIFY(zones.add({ 3, u"Üç"_s }).ok);
    QCOMPARE(zones.add({ 0, u"İki"_s }).number, 2);
    QCOMPARE(zones.nextFreeNumber({ 4, 5 }), 6);

    // Refusals, each with the station's words, and nothing stored by any of them.
    const QList<std::pair<Row, QString>> refusals = {
        { { 65, u"Fazla"_s }, kRange },
        { { 64, u"Yine"_s }, kDuplicate },
        { { 10, u"   "_s }, kNoName },
    };
    for (const auto& [row, message] : refusals) {
        r = zones.add(row);
        QVERIFY2(!r.ok, qPrintable(row.name));
        QCOMPARE(r.message.turkish(), message);
    }
    QCOMPARE(zones.list(), (QList<Row>{ { 1, tricky }, { 2, u"İki"_s }, { 3, u"Üç"_s }, { 64, u"Son"_s } }));

    // Renaming keeps the number; a missing zone and a blank name are refused.
    QVERIFY(zones.rename(64, u"Son'uncu"_s).ok);
    QCOMPARE(zones.rename(5, u"Yok"_s).message.turkish(), u"5 nolu global bölge bulunamadı."_s);
    QCOMPARE(zones.rename(3, u" "_s).message.turkish(), kNoName);
    QCOMPARE(zones.list().last(), (Row{ 64, u"Son'uncu"_s }));
    QCOMPARE(zones.list().at(2).name, u"Üç"_s);

    // One editing session is stored whole or not at all; the refusal names the zone to correct.
    r = zones.store({ { 2, u"İki'nci"_s } }, { { 7, u"Yedi"_s }, { 7, u"Yedi bis"_s } });
    QCOMPARE(r.message.turkish(), kDuplicate);
    QCOMPARE(r.number, 7);
    QCOMPARE(zones.list().size(), 4);
    QCOMPARE(zones.list().at(1).name, u"İki"_s);
    QVERIFY(zones.store({ { 2, u"İki'nci"_s } }, { { 7, u"Yedi"_s } }).ok);
    QCOMPARE(zones.list().at(1).name, u"İki'nci"_s);

    // Once all 64 numbers are taken a zone without a number has nowhere to go.
    for (int n = 4; n <= 63; ++n) {
        if (n != 7)
            QVERIFY(zones.add({ n, u"Z"_s + QString::number(n) }).ok);
    }
    QCOMPARE(zones.nextFreeNumber(), 0);
    QCOMPARE(zones.add({ 0, u"Fazladan"_s }).message.turkish(), u"Boş global bölge numarası kalmadı (1-64)."_s);

    // A repository opened for reading changes nothing.
    const Database& readOnly = db;
    QVERIFY(!ZoneRepository(readOnly).remove(10).ok);
    QCOMPARE(zones.list().size(), 64);

    // A zone in use is not deleted.
    QVERIFY(addPanel(db, 3, 0x12, 1, 5));
    QVERIFY(addPanel(db, 4, 0x13, 5, 2));
    // A removed panel (serial 0) no longer holds its zones.
    QVERIFY(addPanel(db, 9, 0, 6, 6));
    QVERIFY(addGroup(db, 7, 8, 0));
    QVERIFY(addGroup(db, 11, 0, 8));
    QVERIFY(addGroup(db, 9, 0, 0));
    QVERIFY(addGroupRow(db, 9, 3, 0x12, 1, 10));
    // Group rows the panels never see: a removed panel's, a number above 64, a group that is gone.
    QVERIFY(addGroupRow(db, 9, 9, 0, 11, 11));
    QVERIFY(addGroupRow(db, 9, 65, 0x20, 11, 11));
    QVERIFY(addGroupRow(db, 12, 3, 0x12, 11, 12));

    // The refusal names what uses the zone.
    QCOMPARE(zones.remove(5).message.turkish(),
             u"5 nolu global bölge kullanımda olduğu için silinemez!\nKullanan paneller: 3, 4"_s);
    QCOMPARE(zones.remove(1).message.turkish(),
             u"1 nolu global bölge kullanımda olduğu için silinemez!\nKullanan paneller: 3\n"
             "Kullanan geçiş grupları: 9"_s);
    QCOMPARE(zones.remove(8).message.turkish(),
             u"8 nolu global bölge kullanımda olduğu için silinemez!\nKullanan geçiş grupları: 7, 11"_s);
    QCOMPARE(zones.remove(10).message.turkish(),
             u"10 nolu global bölge kullanımda olduğu için silinemez!\nKullanan geçiş grupları: 9"_s);

    // Zones only named by what the panels never see go.
    for (int n : { 6, 11, 12 }) {
        r = zones.remove(n);
        QVERIFY2(r.ok, qPrintable(QString::number(n) + u' ' + r.message.turkish() + r.error));
    }
    QCOMPARE(zones.remove(6).message.turkish(), u"6 nolu global bölge bulunamadı."_s);
    QCOMPARE(zones.list().size(), 61);
    QCOMPARE(ZoneRepository::deleteQuestion(4).turkish(), u"4 nolu global bölgeyi silmek istiyor musunuz?"_s);
}

QTEST_GUILESS_MAIN(ZonesTest)
#include "tst_Zones.moc"
