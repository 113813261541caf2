// The command line's own parsing and its operator, in-process: the parts whose mistakes would
// make a script do something else than it says.

#include "CliArguments.h"
#include "CliGlobalOptions.h"
#include "CliOperator.h"
#include "store/Clock.h"
#include "store/OperatorSession.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

class CliOptionsTest : public QObject
{
    Q_OBJECT

private slots:
    void globalOptionsAnywhereAndFromEnvironment();
    void commandOptionsAndLists();
    void answersInOrderThenTheDefault();
    void loginUsesTheGivenPassword();
};

void CliOptionsTest::globalOptionsAnywhereAndFromEnvironment()
{
    qputenv("KX410_ADMIN_PASSWORD", "77");
    qputenv("KX410_BROADCAST", "127.0.0.1");
    CliGlobalOptions o;
    QString error;
    QVERIFY(o.parse({ u"users"_s, u"--data-dir=/tmp/x"_s, u"send"_s, u"--yes"_s, u"--panel"_s, u"2"_s, u"--lang"_s,
                      u"AR"_s, u"--db"_s, u"postgresql://u@127.0.0.1/k"_s },
                    &error));
    QCOMPARE(o.dataDir, u"/tmp/x"_s);
    QCOMPARE(o.database, u"postgresql://u@127.0.0.1/k"_s);
    QCOMPARE(o.language, 2);
    QVERIFY(o.answer == CliGlobalOptions::Answer::Yes);
    QCOMPARE(o.adminPassword, u"77"_s);
    QCOMPARE(o.broadcast, u"127.0.0.1"_s);
    // The command's own words and options stay, in their order.
    QCOMPARE(o.rest, (QStringList{ u"users"_s, u"send"_s, u"--panel"_s, u"2"_s }));

    // The option beats the environment.
    CliGlobalOptions p;
    QVERIFY(p.parse({ u"--admin-password"_s, u"12"_s, u"--broadcast"_s, u"127.0.0.2"_s }, &error));
    QCOMPARE(p.adminPassword, u"12"_s);
    QCOMPARE(p.broadcast, u"127.0.0.2"_s);
    qunsetenv("KX410_ADMIN_PASSWORD");
    qunsetenv("KX410_BROADCAST");

    for (const QStringList& bad : QList<QStringList>{ { u"--data-dir"_s },
                                                      { u"--broadcast"_s, u"somewhere"_s },
                                                      { u"--yes"_s, u"--no"_s },
                                                      { u"--answers"_s, u"yes,perhaps"_s } }) {
        CliGlobalOptions q;
        error.clear();
        QVERIFY2(!q.parse(bad, &error), qPrintable(bad.join(u' ')));
        QVERIFY(!error.isEmpty());
    }
}

void CliOptionsTest::commandOptionsAndLists()
{
    const QList<CliArguments::Option> declared
        = { { u"--panel"_s, u"N"_s, {} }, { u"--all-panels"_s, {}, {} }, { u"--first"_s, u"N"_s, {} } };
    CliArguments args;
    QString error;
    QVERIFY(args.parse({ u"file.csv"_s, u"--panel=12"_s, u"--all-panels"_s }, declared, &error));
    QCOMPARE(args.words(), QStringList{ u"file.csv"_s });
    QCOMPARE(args.number(u"--panel"_s, 1, 64, &error), std::optional<int>(12));
    QVERIFY(args.has(u"--all-panels"_s));
    QVERIFY(!args.number(u"--first"_s, 1, 10, &error));
    QVERIFY(error.contains(u"required"_s));
    QVERIFY(args.parse({ u"--first"_s, u"20001"_s }, declared, &error));
    QVERIFY(!args.number(u"--first"_s, 1, 20000, &error));

    QVERIFY(!args.parse({ u"--panels"_s, u"1"_s }, declared, &error));
    QVERIFY(!args.parse({ u"--panel"_s }, declared, &error));
    QVERIFY(!args.parse({ u"--all-panels=1"_s }, declared, &error));

    using Places = std::array<bool, 4>;
    QCOMPARE(CliArguments::fourPlaces(u"1,3"_s), std::optional<Places>(Places{ true, false, true, false }));
    QCOMPARE(CliArguments::fourPlaces(u"all"_s), std::optional<Places>(Places{ true, true, true, true }));
    for (const QString& bad : { u""_s, u"0"_s, u"5"_s, u"1;2"_s, u"x"_s })
        QVERIFY2(!CliArguments::fourPlaces(bad), qPrintable(bad));
}

void CliOptionsTest::answersInOrderThenTheDefault()
{
    CliGlobalOptions options;
    options.answers = { true, false };
    options.answer = CliGlobalOptions::Answer::Yes;
    CliOperator scripted(options);
    QVERIFY(scripted.ask(Message(u"Birinci?"_s)));
    QVERIFY(!scripted.ask(Message(u"İkinci?"_s)));
    QVERIFY(scripted.ask(Message(u"Üçüncü?"_s)));
    QVERIFY(scripted.unansweredQuestion().isEmpty());

    // With nothing to answer from, a question is refused and remembered for the hint.
    CliGlobalOptions none;
    none.answers = { true };
    CliOperator unanswered(none);
    QVERIFY(unanswered.ask(Message(u"Birinci?"_s)));
    QVERIFY(!unanswered.ask(Message(u"İkinci?"_s)));
    QVERIFY(!unanswered.ask(Message(u"Üçüncü?"_s)));
    QCOMPARE(unanswered.unansweredQuestion().turkish(), u"İkinci?"_s);
}

void CliOptionsTest::loginUsesTheGivenPassword()
{
    OperatorAccounts accounts;
    accounts.setAdminPassword(1234);
    OperatorAccounts::Account clerk;
    clerk.userName = u"veli"_s;
    clerk.password = 55;
    accounts.setAccount(1, clerk);

    const auto rightsWith = [&](const QString& user, const QString& password) {
        OperatorSession session(Clock::system());
        CliOperator op{ CliGlobalOptions() };
        op.setLogin(session, accounts, user, password);
        op.requestLogin();
        return std::pair{ session.isAdministrator(), op.loginFailed() };
    };
    QCOMPARE(rightsWith(u"admin"_s, u"1234"_s), std::pair(true, false));
    QCOMPARE(rightsWith(u"admin"_s, u"1235"_s), std::pair(false, true));
    QCOMPARE(rightsWith(u"admin"_s, QString()), std::pair(false, true));
    // An ordinary operator logs in but gets no administrator rights.
    QCOMPARE(rightsWith(u"veli"_s, u"55"_s), std::pair(false, true));
}

QTEST_GUILESS_MAIN(CliOptionsTest)
#include "CliOptionsTest.moc"
