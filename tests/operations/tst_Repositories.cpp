#include "operations/panels/PanelRepository.h"
#include "operations/panels/PanelRoster.h"
#include "operations/records/PassageHistory.h"
#include "operations/users/UserCsvImport.h"
#include "operations/users/UserRepository.h"
#include "operations/users/VisitorRepository.h"
#include "support/TestDatabases.h"

#include <QBuffer>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString kDuplicate = u"Birincil anahtar hatası! Bu değer daha önce girilmişti. Lütfen kontrol ediniz!"_s;

QStringList texts(const QList<Message>& messages)
{
    QStringList out;
    for (const Message& m : messages)
        out << m.turkish();
    return out;
}

UserCsvImport::Result import(Database& db, const QString& text)
{
    QByteArray bytes = text.toUtf8();
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return UserCsvImport(db).run(buffer);
}

} // namespace

// The users, visits, panel list and passages as the windows and the command line change them, on
// each engine.
class RepositoriesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void usersAndVisitsAreCheckedAndNeverHalfChanged_data() { TestDatabases::addEngineRows(); }
    void usersAndVisitsAreCheckedAndNeverHalfChanged();
    void searchFindsByNumberOrName_data() { TestDatabases::addEngineRows(); }
    void searchFindsByNumberOrName();
    void importTakesAllLinesOrNone_data() { TestDatabases::addEngineRows(); }
    void importTakesAllLinesOrNone();
    void passagesAndPanelsAreReadBackAsStored_data() { TestDatabases::addEngineRows(); }
    void passagesAndPanelsAreReadBackAsStored();
};

void RepositoriesTest::usersAndVisitsAreCheckedAndNeverHalfChanged()
{
    KX_OPEN_FRESH_DATABASE(dbs, db);
    UserRepository users(db);

    UserRow a;
    a.id = 7;
    a.cardId = 2147483647; // the largest card the panels carry
    a.name = u"Çağrı"_s;
    a.temporaryGroupDate = QDate(2016, 3, 5);
    a.temporaryGroupTime = QTime(14, 7);
    Message why;
    QVERIFY(users.add(a, &why));
    QCOMPARE(*users.byRecordNo(a.recordNo), a);

    for (int id : { 0, 20001 }) {
        UserRow bad = a;
        bad.id = id;
        bad.cardId = 5;
        QVERIFY(!users.add(bad, &why));
        QCOMPARE(why.turkish(), u"Kullanıcı ID, 1-20000 arasında bir sayı olmalıdır!"_s);
    }

    UserRow b;
    b.id = 8;
    b.cardId = a.cardId;
    // The refusal names the card or ID repeated and who holds it already.
    QVERIFY(!users.add(b, &why));
    QCOMPARE(why.turkish(), kDuplicate + u"\nKart ID 2147483647 şu kullanıcıya ait: ID 7 Çağrı"_s);
    b.cardId = 88;
    QVERIFY(users.add(b, &why));
    b.id = 7;
    QVERIFY(!users.update(b, &why));
    QCOMPARE(why.turkish(), kDuplicate + u"\nID 7 şu kullanıcıya ait: ID 7 Çağrı"_s);
    QCOMPARE(users.byRecordNo(b.recordNo)->id, 8);
    QCOMPARE(users.count(), 2);
    QCOMPARE(users.highestId(), 8);

    b.id = 9;
    b.surname = u"Yılmaz"_s;
    QVERIFY(users.update(b, &why));
    QCOMPARE(users.byId(9)->surname, u"Yılmaz"_s);
    QVERIFY(users.remove(b.recordNo));
    QVERIFY(!users.byId(9));

    // What a panel answers changes only the panel's fields of the row.
    UserRecord fromPanel = *a.toRecord();
    fromPanel.cardId = 4242;
    fromPanel.groupNo = 12;
    QVERIFY(users.storeFromPanel(fromPanel));
    const UserRow stored = *users.byId(7);
    QCOMPARE(stored.cardId, 4242);
    QCOMPARE(stored.groupNo, 12);
    QCOMPARE(stored.name, u"Çağrı"_s);
    fromPanel.id = 12;
    fromPanel.cardId = 1212;
    QVERIFY(users.storeFromPanel(fromPanel));
    QCOMPARE(users.count(), 2);

    UserRow card;
    card.id = 901;
    card.cardId = 9010;
    card.userType = UserType::VisitorCard;
    QVERIFY(users.add(card));
    VisitorRepository visits(db);

    // A visit is registered only for a visitor card that exists.
    VisitRow v{
        0, 902, 0, u"Ayşe"_s, u"Demir"_s, u"123"_s, u"06 XY 1"_s, QDate(2016, 1, 31), QTime(9, 30), u"Toplantı"_s, 1, 7
    };
    QVERIFY(!visits.registerVisit(v, &why));
    QCOMPARE(why.turkish(), u"Kullanıcı ID hatalı!"_s);

    v.cardUserId = 901;
    QVERIFY(visits.registerVisit(v, &why));
    QCOMPARE(v.cardId, 9010);
    QCOMPARE(*visits.byVisitNo(v.visitNo), v);
    VisitRow later = v;
    later.date = QDate(2016, 2, 1);
    QVERIFY(visits.registerVisit(later));
    QCOMPARE(visits.list(QDate(2016, 1, 31)).size(), 1);
    QCOMPARE(visits.list().size(), 2);
    QCOMPARE(visits.list().first().visitNo, later.visitNo);
    QVERIFY(visits.remove(v.visitNo));
    QVERIFY(!visits.byVisitNo(v.visitNo));
}

void RepositoriesTest::searchFindsByNumberOrName()
{
    KX_OPEN_FRESH_DATABASE(dbs, db);
    UserRepository users(db);
    const QList<std::tuple<int, qint64, QString, QString>> people
        = { { 30, 123456, u"Ahmet"_s, u"Kaya"_s },   { 4, 999, u"Mehmet"_s, u"Ak"_s },
            { 12, 555, u"Zeynep"_s, u"Kahraman"_s }, { 7, 700, u"Ayşe"_s, u"Yılmaz"_s },
            { 8, 800, u"İSMAİL"_s, u"ŞAHİN"_s },     { 9, 900, u"Pınar"_s, u"50%_off"_s } };
    for (const auto& [id, card, name, surname] : people) {
        UserRow r;
        r.id = id;
        r.cardId = card;
        r.name = name;
        r.surname = surname;
        QVERIFY(users.add(r));
    }
    auto ids = [](const QList<UserRow>& rows) {
        QList<int> out;
        for (const UserRow& r : rows)
            out << r.id;
        return out;
    };
    QCOMPARE(ids(users.list()), QList<int>({ 4, 7, 8, 9, 12, 30 }));
    QCOMPARE(ids(users.list(u"KA"_s)), QList<int>({ 12, 30 }));
    QCOMPARE(ids(users.list(u"12"_s)), QList<int>({ 12, 30 }));
    // Turkish letter case, either i, and no wildcards.
    QCOMPARE(ids(users.list(u"YILMAZ"_s)), QList<int>{ 7 });
    QCOMPARE(ids(users.list(u"yilmaz"_s)), QList<int>{ 7 });
    QCOMPARE(ids(users.list(u"şahin"_s)), QList<int>{ 8 });
    QCOMPARE(ids(users.list(u"ismail"_s)), QList<int>{ 8 });
    QCOMPARE(ids(users.list(u"%_"_s)), QList<int>{ 9 });
    QCOMPARE(ids(users.list(u"_"_s)), QList<int>{ 9 });
    QCOMPARE(ids(users.list(u"a"_s, 2)), QList<int>({ 4, 7 }));
    // Text is bound, never joined into the statement.
    QVERIFY(users.list(u"x' OR '1'='1"_s).isEmpty());
    QCOMPARE(users.byCard(555)->id, 12);
}

void RepositoriesTest::importTakesAllLinesOrNone()
{
    KX_OPEN_FRESH_DATABASE(dbs, db);
    UserRepository users(db);
    UserRow existing;
    existing.id = 5;
    existing.cardId = 500;
    existing.name = u"Eski"_s;
    QVERIFY(users.add(existing));

    const QString bad = u"ID;Kart ID;Adi;Soyadi\n"
                        u"1;100;Ali;Veli\n"
                        u"0;101;Sıfır\n"
                        u"2;abc;Kart\n"
                        u"3;100;Aynı kart\n"
                        u"4;500;Başkasının kartı\n"
                        u"6;600;Fazla;;x\n"
                        u"7;700;Çok;alan;1;1;1;1;1;1;P;fazla\n"_s;
    UserCsvImport::Result r = import(db, bad);
    QVERIFY(!r.ok);
    QCOMPARE(texts(r.errors),
             QStringList({ u"3 nolu satır: Kullanıcı ID, 1-20000 arasında bir sayı olmalıdır!"_s,
                           u"4 nolu satır: Kart ID hatalı!"_s, u"5 nolu satır: "_s + kDuplicate,
                           u"6 nolu satır: "_s + kDuplicate, u"7 nolu satır: Grup No değeri hatalı!"_s,
                           u"8 nolu satır: Alan sayısı hatalı!"_s }));
    QCOMPARE(users.count(), 1);

    // A card beyond what the panels carry is refused on its line like any bad card, and takes the
    // good lines of its file with it.
    r = import(db, u"1;100;Ali\n2;4294967295;Büyük\n3;300;Can\n"_s);
    QVERIFY(!r.ok);
    QCOMPARE(texts(r.errors), QStringList{ u"2 nolu satır: Kart ID hatalı!"_s });
    QCOMPARE(users.count(), 1);

    const QString good = u"\uFEFF1;100;Ali;Veli;3;1234;1;0;2;4;34 AB 12\r\n\r\n5;501;Yeni;Ad\n20000;2147483647\n"_s;
    r = import(db, good);
    QVERIFY(r.ok);
    QCOMPARE(r.added, 2);
    QCOMPARE(r.updated, 1);
    const UserRow one = *users.byId(1);
    QCOMPARE(std::tuple(one.groupNo, one.pin, one.companyNo, one.departmentNo, one.plate),
             std::tuple(3, 1234, 2, 4, u"34 AB 12"_s));
    QCOMPARE(users.byId(5)->name, u"Yeni"_s);
    QCOMPARE(users.byId(20000)->cardId, 2147483647);
}

void RepositoriesTest::passagesAndPanelsAreReadBackAsStored()
{
    KX_OPEN_FRESH_DATABASE(dbs, db);
    UserRow holder;
    holder.id = 41;
    holder.cardId = 4100;
    holder.name = u" Ece "_s;
    holder.surname = u"Şen"_s;
    QVERIFY(UserRepository(db).add(holder));

    // Every column with a value of its own, so that a column read into the wrong field shows.
    const auto at = [](int second) { return QDateTime(QDate(2024, 5, 6), QTime(7, 8, second)); };
    RecordRow full{ 0,  7, 2, 31, 3, 41, 4100, at(9), Direction::Exit, PassageCode::AntiPassback, UserType::VisitorCard,
                    999 };
    RecordRow bare{ 0, 8, 1, 1, 4, 41, 4100, at(10), Direction::Entry, PassageCode::Granted, {}, {} };
    RecordRow door{ 0, 8, 1, 1, 2, 41, 0, at(11), Direction::Entry, PassageCode::OperatorOpen, {}, {} };
    QList<qint64> ids;
    QString error;
    QVERIFY2(db.insertRows(u"AccessDatas"_s, RecordRow::columns(),
                           { full.values(db), bare.values(db), door.values(db) }, &error, &ids, u"Kayit No"_s),
             qPrintable(error));
    full.recordNo = ids.at(0);
    bare.recordNo = ids.at(1);
    door.recordNo = ids.at(2);

    const QList<PassageHistory::Entry> page = PassageHistory(db).page(0, 10, &error);
    QVERIFY2(error.isEmpty(), qPrintable(error));
    QCOMPARE(page.size(), 3);
    QCOMPARE(page.at(0).record, door);
    QCOMPARE(page.at(1).record, bare);
    QCOMPARE(page.at(2).record, full);
    // A door operation's user column is an operation code: no name. A visit that is not stored
    // leaves the card holder's name.
    QCOMPARE(page.at(0).name, QString());
    QCOMPARE(page.at(1).name, u"Ece Şen"_s);
    QCOMPARE(page.at(2).name, u"Ece Şen"_s);
    QCOMPARE(PassageHistory(db).page(bare.recordNo, 10).size(), 1);

    // Panels: without a position a panel goes after the last one, the first into an empty list at 1.
    const PanelRepository panels(db);
    bool refused = false;
    QVERIFY2(panels.add({ 5, 0x12AB, 0x7F000002, 5005, u"Giriş"_s, 0 }, &error, &refused), qPrintable(error));
    QVERIFY(panels.add({ 3, 0x0003, 0x7F000003, 5003, u"Otopark"_s, 0 }));
    QVERIFY(panels.add({ 9, 0x0009, 0x7F000009, 5009, QString(), 1 }));
    QVERIFY(!panels.add({ 5, 0x0001, 0x7F000001, 5001, u"İkinci"_s, 0 }, &error, &refused));
    QVERIFY(refused);
    QList<int> order;
    for (const PanelRepository::Name& panel : panels.names())
        order << panel.number;
    // Equal positions are listed by panel number.
    QCOMPARE(order, QList<int>({ 5, 9, 3 }));

    // The address goes into its four columns, the serial and port as given.
    PanelRoster roster;
    QVERIFY(roster.load(db));
    QCOMPARE(std::tuple(roster.entryForPanel(5)->ip, roster.entryForPanel(5)->port),
             std::tuple(u"127.0.0.2"_s, quint16(5005)));
    // Its doors start in use and named, as a new panel of the settings window has them.
    const QList<PanelRepository::Door> doors = panels.doors();
    QCOMPARE(doors.size(), 12);
    QCOMPARE(std::tuple(doors.at(2).panelNumber, doors.at(2).name, doors.at(2).active),
             std::tuple(5, u"Kapi 3"_s, true));

    QVERIFY(panels.remove(3, &error, &refused));
    QVERIFY(!panels.remove(3, &error, &refused));
    QVERIFY(refused);
}

QTEST_GUILESS_MAIN(RepositoriesTest)
#include "tst_Repositories.moc"
