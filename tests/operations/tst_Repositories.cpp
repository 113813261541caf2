#include "operations/UserCsvImport.h"
#include "operations/UserRepository.h"
#include "operations/VisitorRepository.h"
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

// The users and visits tables as the users page and the command line change them, on each engine.
class RepositoriesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void usersAreCheckedAndNeverHalfChanged_data() { TestDatabases::addEngineRows(); }
    void usersAreCheckedAndNeverHalfChanged();
    void searchFindsByNumberOrName_data() { TestDatabases::addEngineRows(); }
    void searchFindsByNumberOrName();
    void importTakesAllLinesOrNone_data() { TestDatabases::addEngineRows(); }
    void importTakesAllLinesOrNone();
    void visitsAreRegisteredForExistingCards_data() { TestDatabases::addEngineRows(); }
    void visitsAreRegisteredForExistingCards();

private:
    TestDatabases m_dbs;
};

void RepositoriesTest::usersAreCheckedAndNeverHalfChanged()
{
    QFETCH(int, engine);
    KX_REQUIRE_ENGINE(TestDatabases::Engine(engine));
    Database db;
    QString error;
    QVERIFY2(m_dbs.openFresh(TestDatabases::Engine(engine), db, true, &error), qPrintable(error));
    UserRepository users(db);

    UserRow a;
    a.id = 7;
    a.cardId = 2147483647; // the largest card the panels carry
    a.name = u"Çağrı"_s;
    a.temporaryGroupDate = QDate(2016, 3, 5);
    a.temporaryGroupTime = QTime(14, 7);
    Message why;
    QVERIFY(users.add(a, &why));
    QVERIFY(a.recordNo > 0);
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
    QVERIFY(!users.add(b, &why));
    QCOMPARE(why.turkish(), kDuplicate);
    b.cardId = 88;
    QVERIFY(users.add(b, &why));
    b.id = 7;
    QVERIFY(!users.update(b, &why));
    QCOMPARE(why.turkish(), kDuplicate);
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
    db.close();
}

void RepositoriesTest::searchFindsByNumberOrName()
{
    QFETCH(int, engine);
    KX_REQUIRE_ENGINE(TestDatabases::Engine(engine));
    Database db;
    QVERIFY(m_dbs.openFresh(TestDatabases::Engine(engine), db));
    UserRepository users(db);
    const QList<std::tuple<int, qint64, QString, QString>> people = { { 30, 123456, u"Ahmet"_s, u"Kaya"_s },
                                                                      { 4, 999, u"Mehmet"_s, u"Ak"_s },
                                                                      { 12, 555, u"Zeynep"_s, u"Kahraman"_s } };
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
    QCOMPARE(ids(users.list()), QList<int>({ 4, 12, 30 }));
    QCOMPARE(ids(users.list(u"kaya"_s)), QList<int>{ 30 });
    QCOMPARE(ids(users.list(u"KA"_s)), QList<int>({ 12, 30 }));
    QCOMPARE(ids(users.list(u"345"_s)), QList<int>{ 30 });
    QCOMPARE(ids(users.list(u"12"_s)), QList<int>({ 12, 30 }));
    QCOMPARE(ids(users.list(QString(), 2)), QList<int>({ 4, 12 }));
    // Text is bound, never joined into the statement.
    QVERIFY(users.list(u"x' OR '1'='1"_s).isEmpty());
    QCOMPARE(users.byCard(555)->id, 12);
    db.close();
}

void RepositoriesTest::importTakesAllLinesOrNone()
{
    QFETCH(int, engine);
    KX_REQUIRE_ENGINE(TestDatabases::Engine(engine));
    Database db;
    QVERIFY(m_dbs.openFresh(TestDatabases::Engine(engine), db));
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
    QCOMPARE(one.groupNo, 3);
    QCOMPARE(one.pin, 1234);
    QCOMPARE(one.companyNo, 2);
    QCOMPARE(one.departmentNo, 4);
    QCOMPARE(one.plate, u"34 AB 12"_s);
    QCOMPARE(users.byId(5)->name, u"Yeni"_s);
    QCOMPARE(users.byId(5)->cardId, 501);
    QCOMPARE(users.byId(20000)->cardId, 2147483647);
    QCOMPARE(users.count(), 3);
    db.close();
}

void RepositoriesTest::visitsAreRegisteredForExistingCards()
{
    QFETCH(int, engine);
    KX_REQUIRE_ENGINE(TestDatabases::Engine(engine));
    Database db;
    QVERIFY(m_dbs.openFresh(TestDatabases::Engine(engine), db));
    UserRow card;
    card.id = 901;
    card.cardId = 9010;
    card.userType = UserType::VisitorCard;
    QVERIFY(UserRepository(db).add(card));
    VisitorRepository visits(db);

    VisitRow v{
        0, 902, 0, u"Ayşe"_s, u"Demir"_s, u"123"_s, u"06 XY 1"_s, QDate(2016, 1, 31), QTime(9, 30), u"Toplantı"_s, 1, 7
    };
    Message why;
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
    db.close();
}

QTEST_GUILESS_MAIN(RepositoriesTest)
#include "tst_Repositories.moc"
