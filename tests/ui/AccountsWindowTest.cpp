#include "MainWindowFixture.h"
#include "WindowDriver.h"
#include "store/OperatorAccounts.h"
#include "store/OperatorSession.h"
#include "ui/common/MessageBox.h"
#include "ui/main/LanguageSwitch.h"
#include "ui/main/frmMain.h"
#include "ui/main/frmPassword.h"
#include "ui/main/frmSetPassword.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QTabBar>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {
void fillLogin(QWidget* dialog, const QString& name, const QString& password)
{
    auto* user = dialog->findChild<QLineEdit*>(u"txtUserName"_s);
    auto* pass = dialog->findChild<QLineEdit*>(u"txtPassword"_s);
    QVERIFY(user && pass);
    QCOMPARE(pass->echoMode(), QLineEdit::Password);
    user->clear();
    pass->clear();
    WindowDriver::type(user, name);
    WindowDriver::type(pass, password);
}

void setText(QWidget* dialog, const QString& name, const QString& text)
{
    auto* edit = dialog->findChild<QLineEdit*>(name);
    QVERIFY2(edit, qPrintable(name));
    edit->clear();
    WindowDriver::type(edit, text);
}
} // namespace

class AccountsWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { MessageBox::setDefaultAnswer(QMessageBox::Ok); }
    void init()
    {
        MessageBox::clearShownTexts();
        LanguageSwitch::apply(0);
    }

    void loginDialog()
    {
        MainWindowFixture f;
        QVERIFY2(f.ok(), qPrintable(f.error()));
        frmMain& window = f.window();
        OperatorSession& session = window.session();
        session.logInAsAdministrator(u"earlier"_s);

        frmPassword dialog(window.accounts(), session);
        QCOMPARE(dialog.windowTitle(), u"Sisteme Giriş"_s);
        // Opening the dialog withdraws whatever was in force.
        QVERIFY(!session.isLoggedIn());

        // The login rules and their refusals are the accounts' tests.
        fillLogin(&dialog, u"Admin"_s, u"4321"_s);
        WindowDriver::click(&dialog, u"cmdOK"_s);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QVERIFY(session.isAdministrator());
    }

    void rightsLapseWithTheClock()
    {
        MainWindowFixture f;
        QVERIFY2(f.ok(), qPrintable(f.error()));
        frmMain& window = f.window();
        auto* timer = window.findChild<QTimer*>(u"ClockTimer"_s);
        QVERIFY(timer && timer->isActive());
        f.clock().set(QDateTime(QDate(2016, 3, 14), QTime(8, 30, 5)));
        window.clockTick();
        QCOMPARE(window.findChild<QLabel*>(u"lblDate"_s)->text(), u"14/03/2016"_s);
        QCOMPARE(window.findChild<QLabel*>(u"lblClock"_s)->text(), u"08:30:05"_s);

        // From the menu: the login dialog comes up modally.
        WindowDriver::whenModal([](QDialog* dialog) {
            QCOMPARE(dialog->objectName(), u"frmPassword"_s);
            fillLogin(dialog, u"admin"_s, u"4321"_s);
            WindowDriver::click(dialog, u"cmdOK"_s);
        });
        QVERIFY(window.showLogin());
        QVERIFY(window.findChild<QLabel*>(u"lblOperator"_s)->text().endsWith(u" *"_s));

        // The window's tick ages the rights (how long they last is the session's test elsewhere).
        f.clock().advanceSecs(OperatorSession::AdministratorSeconds);
        window.clockTick();
        QCOMPARE(window.findChild<QLabel*>(u"lblClock"_s)->text(), u"08:40:05"_s);
        QVERIFY(!window.findChild<QLabel*>(u"lblOperator"_s)->text().endsWith(u" *"_s));

        // A guarded action now asks for a login; given up, it is refused with the message.
        MessageBox::clearShownTexts();
        WindowDriver::whenModal([](QDialog* dialog) { WindowDriver::click(dialog, u"cmdCancel"_s); });
        QVERIFY(!window.checkRights());
        QCOMPARE(MessageBox::shownTexts(), QStringList{ u"Yetki hatası, Yönetici şifresi gerekli!"_s });
    }

    void accountsDialog()
    {
        MainWindowFixture f;
        QVERIFY2(f.ok(), qPrintable(f.error()));
        OperatorAccounts accounts;
        QVERIFY(accounts.load(f.database()));
        frmSetPassword dialog(accounts, f.database());
        auto* tabs = dialog.findChild<QTabBar*>(u"TabUsers"_s);
        QCOMPARE(tabs->tabText(9), u"Kullanıcı 10"_s);

        // Administrator password: a refusal is shown (the rules and their texts are the accounts'
        // own test), then the change.
        setText(&dialog, u"txtOldAdmin"_s, u"1111"_s);
        setText(&dialog, u"txtNewAdmin"_s, u"5555"_s);
        setText(&dialog, u"txtNewRAdmin"_s, u"5555"_s);
        WindowDriver::click(&dialog, u"cmdChangeAdminPassword"_s);
        QCOMPARE(MessageBox::lastShownText(), u"Mevcut yönetici şifresini doğru olarak giriniz!"_s);
        setText(&dialog, u"txtOldAdmin"_s, u"4321"_s);
        WindowDriver::click(&dialog, u"cmdChangeAdminPassword"_s);
        QCOMPARE(MessageBox::lastShownText(), u"Yönetici şifresi değiştirildi!"_s);

        // Account 3 on the third tab, an administrator named with Turkish letters.
        tabs->setCurrentIndex(2);
        QCOMPARE(dialog.currentAccount(), 3);
        setText(&dialog, u"txtUser"_s, u"Çağrı"_s);
        setText(&dialog, u"txtOld"_s, u"0"_s);
        setText(&dialog, u"txtNew"_s, u"77"_s);
        setText(&dialog, u"txtNewR"_s, u"77"_s);
        setText(&dialog, u"txtAdminPassword"_s, u"5555"_s);
        dialog.findChild<QButtonGroup*>(u"opsUserType"_s)->button(1)->click();
        WindowDriver::click(&dialog, u"cmdChangePassword"_s);
        QCOMPARE(MessageBox::lastShownText(), u"Kullanıcı 3 şifresi değiştirildi!"_s);

        // What the dialog changed is in the database.
        OperatorAccounts stored;
        QVERIFY(stored.load(f.database()));
        QCOMPARE(stored.adminPassword().toLongLong(), 5555);
        QCOMPARE(stored.account(3).userName, u"Çağrı"_s);
        QCOMPARE(stored.account(3).password.toLongLong(), 77);
        QVERIFY(stored.account(3).isAdministrator());

        // Moving between tabs shows each account as stored, with the password fields empty.
        tabs->setCurrentIndex(0);
        tabs->setCurrentIndex(2);
        QCOMPARE(dialog.findChild<QLineEdit*>(u"txtUser"_s)->text(), u"Çağrı"_s);
        QVERIFY(dialog.findChild<QLineEdit*>(u"txtNew"_s)->text().isEmpty());
    }
};

QTEST_MAIN(AccountsWindowTest)
#include "AccountsWindowTest.moc"
