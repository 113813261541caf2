#include "store/Clock.h"
#include "store/Database.h"
#include "store/Operator.h"
#include "store/OperatorAccounts.h"
#include "store/OperatorSession.h"
#include "store/RightsCheck.h"
#include "support/ScriptedOperator.h"
#include "support/TestDatabases.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

OperatorAccounts sampleAccounts()
{
    OperatorAccounts accounts;
    accounts.setAdminPassword(4321);
    accounts.setAccount(1, { u"ali"_s, 11, 0 });
    accounts.setAccount(2, { u" veli "_s, 22, 1 });
    accounts.setAccount(3, { u"ali"_s, 33, 1 });
    accounts.setAccount(4, { u"ali"_s, 11, 1 }); // same name and password as account 1
    return accounts;
}

} // namespace

class tst_OperatorAccounts : public QObject
{
    Q_OBJECT

private slots:
    void loginRules();
    void rightsLapseAndCheck();
    void storedAccounts_data() { TestDatabases::addEngineRows(); }
    void storedAccounts();
    void changeRules_data() { TestDatabases::addEngineRows(); }
    void changeRules();
};

void tst_OperatorAccounts::loginRules()
{
    const OperatorAccounts accounts = sampleAccounts();

    // Letters are refused before any comparison, even for the right name.
    QCOMPARE(accounts.login(u"admin"_s, u"43a1"_s).message.turkish(),
             u"Geçersiz şifre.\nSadece sayısal ifade giriniz!"_s);
    QCOMPARE(accounts.login(u"admin"_s, u""_s).message.turkish(), u"Geçersiz şifre.\nSadece sayısal ifade giriniz!"_s);

    // The administrator name in three spellings, not the dotted capital one.
    for (const QString& name : { u"admin"_s, u"Admin"_s, u"ADMIN"_s, u"  admin "_s }) {
        const auto r = accounts.login(name, u" 4321 "_s);
        QVERIFY2(r.isAdministrator(), qPrintable(name));
        QCOMPARE(r.account, 0);
    }
    QCOMPARE(accounts.login(u"ADMİN"_s, u"4321"_s).outcome, OperatorAccounts::LoginOutcome::Refused);
    QCOMPARE(accounts.login(u"aDmin"_s, u"4321"_s).outcome, OperatorAccounts::LoginOutcome::Refused);
    const auto wrong = accounts.login(u"admin"_s, u"4322"_s);
    QCOMPARE(wrong.outcome, OperatorAccounts::LoginOutcome::Refused);
    QCOMPARE(wrong.message.turkish(), u"Geçersiz şifre."_s);

    // Accounts in order, first match wins; names compared trimmed; the account type decides rights.
    const auto ali = accounts.login(u"ali"_s, u"11"_s);
    QCOMPARE(ali.outcome, OperatorAccounts::LoginOutcome::Operator);
    QCOMPARE(ali.account, 1);
    QVERIFY(accounts.login(u"ali"_s, u"33"_s).isAdministrator());
    const auto veli = accounts.login(u"veli"_s, u"022"_s);
    QVERIFY(veli.isAdministrator());
    QCOMPARE(veli.userName, u"veli"_s);
    QCOMPARE(accounts.login(u"Ali"_s, u"11"_s).outcome, OperatorAccounts::LoginOutcome::Refused);

    // Without any password set, nothing and nobody gets in, not even with blank names and 0.
    const OperatorAccounts fresh;
    QVERIFY(!fresh.login(u"admin"_s, u"0"_s).succeeded());
    QVERIFY(!fresh.login(u""_s, u"0"_s).succeeded());
}

void tst_OperatorAccounts::rightsLapseAndCheck()
{
    ManualClock clock(QDateTime(QDate(2016, 3, 14), QTime(8, 30, 5)));
    OperatorSession session(clock);
    ScriptedOperator op;
    const OperatorAccounts accounts = sampleAccounts();

    // No rights: the login comes up; refusing it leaves the operation forbidden with the message.
    QVERIFY(!checkAdministratorRights(session, op));
    QCOMPARE(op.loginRequests(), 1);
    QCOMPARE(op.told(), QStringList{ u"Yetki hatası, Yönetici şifresi gerekli!"_s });

    // Logging in from the login that the check brings up lets the operation go on at once.
    op.setLoginHandler([&] {
        session.beginLogin();
        session.apply(accounts.login(u"admin"_s, u"4321"_s));
    });
    QVERIFY(checkAdministratorRights(session, op));
    QCOMPARE(op.loginRequests(), 2);
    QCOMPARE(session.countdown(), 600);

    // Rights hold until the clock reaches ten minutes after the login, ticked or not, and lapse
    // at that moment; the person stays logged in.
    clock.advanceMs(599999);
    QCOMPARE(session.countdown(), 1);
    op.setLoginHandler({});
    QVERIFY(checkAdministratorRights(session, op));
    QCOMPARE(op.loginRequests(), 2);
    clock.advanceMs(1);
    QVERIFY(!session.isAdministrator() && session.isLoggedIn());
    QCOMPARE(session.countdown(), 0);
    // Withdrawn by a tick, they stay withdrawn when the clock is set back.
    session.tick();
    clock.advanceSecs(-5);
    QVERIFY(!checkAdministratorRights(session, op));

    // An ordinary operator is logged in without rights; opening the login clears everything.
    session.apply(accounts.login(u"ali"_s, u"11"_s));
    QVERIFY(session.isLoggedIn() && !session.isAdministrator());
    session.apply(accounts.login(u"ali"_s, u"33"_s));
    QVERIFY(session.isAdministrator());
    session.apply(accounts.login(u"ali"_s, u"99"_s)); // refused: no change
    QVERIFY(session.isAdministrator());
    session.beginLogin();
    QVERIFY(!session.isLoggedIn() && !session.isAdministrator());
}

void tst_OperatorAccounts::storedAccounts()
{
    KX_OPEN_FRESH_DATABASE(dbs, db);
    QString error;

    OperatorAccounts accounts;
    QVERIFY2(accounts.load(db, &error), qPrintable(error));

    // The first administrator password: numeric, typed twice, once only.
    QCOMPARE(accounts.setFirstAdminPassword(db, u"12a"_s, u"12a"_s).message.turkish(),
             u"Yönetici şifresi olarak sadece sayısal değer giriniz"_s);
    QCOMPARE(accounts.setFirstAdminPassword(db, u"1234"_s, u"1243"_s).message.turkish(),
             u"Şifreler birbirini tutmuyor!"_s);
    QCOMPARE(accounts.setFirstAdminPassword(db, u"98765432109"_s, u"98765432109"_s).message.turkish(),
             u"Yönetici şifresi belirlendi!"_s);
    QVERIFY(!accounts.setFirstAdminPassword(db, u"1"_s, u"1"_s).ok);

    // What was written is what the next start reads, as a number.
    OperatorAccounts reread;
    QVERIFY(reread.load(db, &error));
    QVERIFY(reread.login(u"ADMIN"_s, u"98765432109"_s).isAdministrator());

    // A settings table without its row gets one on save.
    QVERIFY(db.exec(u"DELETE FROM \"ProgInit\""_s));
    reread.setAccount(10, { u"Gülşen O'Neil"_s, 7, 1 });
    QVERIFY2(reread.save(db, &error), qPrintable(error));
    OperatorAccounts third;
    QVERIFY(third.load(db));
    QCOMPARE(third.account(10).userName, u"Gülşen O'Neil"_s);
    QVERIFY(third.login(u"Gülşen O'Neil"_s, u"7"_s).isAdministrator());
    QVERIFY(third.account(1).password.isNull());
}

void tst_OperatorAccounts::changeRules()
{
    KX_OPEN_FRESH_DATABASE(dbs, db);
    QString error;
    OperatorAccounts accounts = sampleAccounts();
    QVERIFY(accounts.save(db, &error));

    const auto adminChange = [&](const QString& a, const QString& b, const QString& c) {
        return accounts.changeAdminPassword(db, a, b, c).message.turkish();
    };
    QCOMPARE(adminChange(u"4321"_s, u"x"_s, u"x"_s), u"Yönetici şifresi olarak sadece sayısal değer giriniz"_s);
    QCOMPARE(adminChange(u"4320"_s, u"5"_s, u"5"_s), u"Mevcut yönetici şifresini doğru olarak giriniz!"_s);
    QCOMPARE(adminChange(u"4321"_s, u"5"_s, u"6"_s), u"Yeni Yönetici şifresini tekrar doğru olarak giriniz!"_s);
    QCOMPARE(adminChange(u"4321"_s, u"555"_s, u"555"_s), u"Yönetici şifresi değiştirildi!"_s);
    QCOMPARE(db.scalar(u"SELECT \"AdminPassword\" FROM \"ProgInit\""_s).toLongLong(), 555);

    const auto change = [&](int n, const QString& name, const QString& old, const QString& nw, const QString& rep,
                            const QString& admin) {
        return accounts.changeAccount(db, n, name, old, nw, rep, 1, admin).message.turkish();
    };
    QCOMPARE(change(5, u"ayşe"_s, u"0"_s, u"7x"_s, u"7x"_s, u"555"_s), u"Şifre olarak sadece sayısal değer giriniz"_s);
    QCOMPARE(change(5, u"   "_s, u"0"_s, u"7"_s, u"7"_s, u"555"_s), u"Lütfen geçerli bir kullanıcı adı giriniz"_s);
    for (const QString& name : { u"admin"_s, u"ADMİN"_s })
        QCOMPARE(change(5, name, u"0"_s, u"7"_s, u"7"_s, u"555"_s), u"Kullanıcı adı olarak 'Admin' girilemez"_s);
    QCOMPARE(change(2, u"veli"_s, u"21"_s, u"7"_s, u"7"_s, u"555"_s),
             u"Mevcut kullanıcı şifresini doğru olarak giriniz!"_s);
    QCOMPARE(change(2, u"veli"_s, u"22"_s, u"7"_s, u"8"_s, u"555"_s),
             u"Yeni kullanıcı şifresini tekrar doğru olarak giriniz!"_s);
    QCOMPARE(change(2, u"veli"_s, u"22"_s, u"7"_s, u"7"_s, u"4321"_s),
             u"Kullanıcı şifresini değiştirmek için Yönetici şifresinin de girilmesi gerekir!"_s);
    QCOMPARE(accounts.account(2).password.toLongLong(), 22);

    // "Admin" is let through as an account name, as the station always did.
    const auto done = accounts.changeAccount(db, 5, u" Admin "_s, u"0"_s, u"77"_s, u"77"_s, 0, u"555"_s);
    QVERIFY(done.ok);
    QCOMPARE(done.message.turkish(), u"Kullanıcı 5 şifresi değiştirildi!"_s);
    // Only the fixed texts are translated; the number and the blanks pass through as they are.
    QCOMPARE(done.message.fragments().first().text, u"Kullanıcı"_s);
    QVERIFY(done.message.fragments().first().translatable);
    QCOMPARE(done.message.fragments().at(2).text, u"5"_s);
    QVERIFY(!done.message.fragments().at(2).translatable);

    OperatorAccounts reread;
    QVERIFY(reread.load(db));
    QCOMPARE(reread.account(5).userName, u"Admin"_s);
    QCOMPARE(reread.account(2).userName.trimmed(), u"veli"_s);
    QCOMPARE(reread.login(u"Admin"_s, u"77"_s).outcome, OperatorAccounts::LoginOutcome::Operator);
    QCOMPARE(reread.login(u"Admin"_s, u"555"_s).outcome, OperatorAccounts::LoginOutcome::Administrator);
}

QTEST_GUILESS_MAIN(tst_OperatorAccounts)
#include "tst_OperatorAccounts.moc"
