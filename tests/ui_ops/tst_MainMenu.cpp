// The main window by name: changing the language keeps the person logged in, the status line
// keeps to one line, and Dosya > Çıkış asks first while the live monitor is storing passages.

#include "support/StationWindow.h"
#include "ui/common/MessageBox.h"
#include "ui/main/WindowOperator.h"
#include "ui/main/frmMain.h"

#include <QAction>
#include <QGuiApplication>

using namespace Qt::StringLiterals;

class MainMenuTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QGuiApplication::setQuitOnLastWindowClosed(false); }

    void init()
    {
        MessageBox::clearShownTexts();
        MessageBox::setDefaultAnswer(QMessageBox::No);
    }

    void languageChangeKeepsTheAdministrator()
    {
        StationWindow f;
        QVERIFY2(f.open(), qPrintable(f.error()));
        f.sim().session().logInAsAdministrator(u"admin"_s);
        for (int language : { 1, 2, 0 }) {
            f.window().findChild<QAction*>(u"mnuChangeLanguage"_s + QString::number(language))->trigger();
            f.mainWindow().clockTick();
            QVERIFY(f.sim().session().isAdministrator());
            QCOMPARE(f.window().findChild<QLabel*>(u"lblOperator"_s)->text(), u"admin *"_s);
        }
        // No login was asked for on the way.
        QVERIFY(!MessageBox::shownTexts().contains(u"Yetki hatası, Yönetici şifresi gerekli!"_s));
    }

    void statusLineShowsOneLine()
    {
        StationWindow f;
        QVERIFY2(f.open(), qPrintable(f.error()));
        f.op().status(
            Message(u"İşlem başarı ile tamamlandı!"_s).newLine().add(u"Offline Kayıtları Silmeyi Unutmayın!"_s));
        QCOMPARE(f.statusLine()->text(), u"İşlem başarı ile tamamlandı!  Offline Kayıtları Silmeyi Unutmayın!"_s);
    }

    void exitAsksWhileTheLiveMonitorRuns()
    {
        StationWindow f(true);
        QVERIFY2(f.open(), qPrintable(f.error()));
        QVERIFY(f.monitor().isRunning());
        auto* exit = f.window().findChild<QAction*>(u"mnuExit"_s);
        exit->trigger();
        QCOMPARE(MessageBox::shownTexts(),
                 QStringList{ u"Canlı izleme çalışıyor. Programdan çıkmak istiyor musunuz?"_s });
        QVERIFY(f.window().isVisible());
        MessageBox::setNextAnswer(QMessageBox::Yes);
        exit->trigger();
        QVERIFY(!f.window().isVisible());
    }
};

QTEST_MAIN(MainMenuTest)
#include "tst_MainMenu.moc"
