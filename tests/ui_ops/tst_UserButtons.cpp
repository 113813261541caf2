// The user transfer buttons of the panels page and the daily send's progress window, pressed by
// name against simulated panels: the work reaches the panels, questions are answered through the
// pre-answered message box, and a second operation is refused while one runs.

#include "support/StationWindow.h"
#include "ui/common/MessageBox.h"
#include "ui/main/PanelWorkerBridge.h"
#include "ui/users/UserTableModel.h"
#include "ui/users/UsersPage.h"
#include "ui/users/frmSendingUsersAllPanels.h"

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {
int usersOn(SimPanel* panel)
{
    int count = 0;
    panel->inspect([&](const SimPanelState& s) { count = int(s.users.size()); });
    return count;
}
} // namespace

class UserButtonsTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        MessageBox::clearShownTexts();
        // Nothing may wait for a person: an unplanned box counts as No and shows in the texts.
        MessageBox::setDefaultAnswer(QMessageBox::No);
    }

    void sendAllUsersToAllPanelsWhileTheWindowStaysBusy()
    {
        StationWindow f;
        QVERIFY(f.sim().addPanel(1));
        SimPanel* p2 = f.sim().addPanel(2);
        f.sim().addUser(1, 1001);
        f.sim().addUser(2, 1002);
        QVERIFY(f.open());

        f.find<QRadioButton>(u"opsPanelOption1"_s)->setChecked(true);
        QSignalSpy busy(&f.pages().bridge(), &PanelWorkerBridge::busyChanged);
        MessageBox::setNextAnswer(QMessageBox::Yes); // the confirmation
        QVERIFY(f.click(u"cmdSendUserAll"_s));

        // Until the worker is done the window shows it is busy and starts nothing else.
        QVERIFY(f.pages().bridge().busy());
        QCOMPARE(busy.count(), 1);
        QVERIFY(QApplication::overrideCursor() && QApplication::overrideCursor()->shape() == Qt::WaitCursor);
        QVERIFY(!f.find<QPushButton>(u"cmdDeleteAllUsers"_s)->isEnabled());

        QVERIFY(f.waitIdle());
        QVERIFY(f.find<QPushButton>(u"cmdDeleteAllUsers"_s)->isEnabled());
        QVERIFY(!QApplication::overrideCursor());
        QCOMPARE(
            MessageBox::shownTexts(),
            (QStringList{
                u"Kullanıcı listesini göndermek istiyor musunuz?"_s,
                u"Tüm işlemler tamamlandı!\nPanel 1: 2 kullanıcı gönderildi\nPanel 2: 2 kullanıcı gönderildi"_s }));
        QCOMPARE(usersOn(p2), 2);
        QVERIFY(!f.progressBar()->isVisible());
    }

    void rangeAndSelectedUserGoToTheSelectedPanelOnly()
    {
        StationWindow f;
        SimPanel* p1 = f.sim().addPanel(1);
        SimPanel* p2 = f.sim().addPanel(2);
        for (int id = 1; id <= 5; ++id)
            f.sim().addUser(id, 2000 + id);
        QVERIFY(f.open());
        f.pages().roster().select(2);

        // The range typed is the one sent (its refusals are the transfer's tests).
        f.find<QCheckBox>(u"chkSendAllUsers"_s)->setChecked(false);
        f.find<QLineEdit>(u"txtNumOfUser0"_s)->setText(u"2"_s);
        f.find<QLineEdit>(u"txtNumOfUser1"_s)->setText(u"4"_s);
        MessageBox::setNextAnswer(QMessageBox::Yes);
        QVERIFY(f.click(u"cmdSendUserAll"_s));
        QVERIFY(f.waitIdle());
        QCOMPARE(MessageBox::lastShownText(),
                 u"Kullanıcı bilgileri gönderme işlemi tamamlandı!\nPanel 2: 3 kullanıcı gönderildi"_s);
        QCOMPARE(usersOn(p2), 3);
        QCOMPARE(usersOn(p1), 0);

        // The selected user is the current row of the users grid.
        auto* users = f.pages().usersPage();
        users->reload();
        QVERIFY(users->selectRecordNo(users->model()->row(4).recordNo));
        MessageBox::setNextAnswer(QMessageBox::Yes);
        QVERIFY(f.click(u"cmdSendUserSelected"_s));
        QVERIFY(f.waitIdle());
        QCOMPARE(MessageBox::lastShownText(), u"İşlem başarı ile tamamlandı!"_s);
        QCOMPARE(p2->user(5).value_or(SimUser{}).card, 2005);
    }

    void receivedUsersShowOnTheUsersPage()
    {
        StationWindow f;
        SimPanel* p1 = f.sim().addPanel(1);
        SimUser user;
        user.id = 12;
        user.card = 4012;
        user.pin = 55;
        p1->putUser(user);
        QVERIFY(f.open());

        f.find<QLineEdit>(u"txtNumOfUser0"_s)->setText(u"11"_s);
        f.find<QLineEdit>(u"txtNumOfUser1"_s)->setText(u"13"_s);
        MessageBox::setDefaultAnswer(QMessageBox::Yes);
        QVERIFY(f.click(u"cmdReceiveUser"_s));
        QVERIFY(f.waitIdle());
        auto* model = f.pages().usersPage()->model();
        QCOMPARE(model->rowCount(), 1);
        QCOMPARE(model->row(0).cardId, 4012);
    }

    void dailySendStopsOnCancel()
    {
        StationWindow f;
        SimPanel* p1 = f.sim().addPanel(1);
        SimPanel* p2 = f.sim().addPanel(2);
        for (int id = 1; id <= 40; ++id)
            f.sim().addUser(id, 3000 + id);
        QVERIFY(f.open());
        frmSendingUsersAllPanels* window = f.pages().sendingWindow();
        QCOMPARE(window->windowTitle(), u"Tüm Panellere Kullanıcılar Gönderiliyor ..."_s);

        // The window's Cancel stops the run before its next user (the window showing the run
        // and its outcome is the schedule window's test).
        SimFault slow;
        slow.mode = SimFault::Mode::Slow;
        slow.delayMs = 20;
        slow.codes = { "NC" };
        // The daily send walks the panels at once: both are slow, and both stop.
        p1->setFault(slow);
        p2->setFault(slow);
        QVERIFY(f.pages().sendUsersToAllPanels());
        QVERIFY(window->findChild<QProgressBar*>(u"prgSending"_s));
        QTRY_VERIFY(usersOn(p1) >= 1);
        QVERIFY(f.click(u"cmdCancel"_s));
        QVERIFY(f.waitIdle());
        QVERIFY(usersOn(p1) < 40);
        QVERIFY(usersOn(p2) < 40);
        QVERIFY(!window->cancelRequested());
    }
};

QTEST_MAIN(UserButtonsTest)
#include "tst_UserButtons.moc"
