// The main window's pages after the first are made when first shown or asked for: not before,
// not by a change of language, and then in the language in force.

#include "MainWindowFixture.h"
#include "ShippedLanguage.h"
#include "store/Translator.h"
#include "ui/calendars/ProgrammedSlotsPage.h"
#include "ui/configuration/GroupsPage.h"
#include "ui/main/MainPages.h"
#include "ui/main/frmMain.h"
#include "ui/panels/PanelsPage.h"
#include "ui/users/UsersPage.h"

#include <QTabWidget>
#include <QTest>

using namespace Qt::StringLiterals;

class LazyPagesTest : public QObject
{
    Q_OBJECT

private slots:
    void pagesAreMadeWhenFirstShownOrAskedFor()
    {
        ShippedLanguage shipped;
        QVERIFY2(shipped.isReady(), qPrintable(shipped.error()));
        MainWindowFixture f;
        QVERIFY2(f.ok(), qPrintable(f.error()));
        frmMain& window = f.window();
        MainPages* pages = MainPages::install(window);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QTabWidget* tabs = window.tabMain();
        QVERIFY(window.findChild<PanelsPage*>());
        QVERIFY(!window.findChild<GroupsPage*>());

        // Another language shows the tabs' captions in it and makes no page.
        window.changeLanguage(Translator::English);
        QCOMPARE(tabs->tabText(1), u"Users"_s);
        QVERIFY(!window.findChild<UsersPage*>());

        // Opening the tab makes the page in its place.
        tabs->setCurrentIndex(1);
        auto* users = window.findChild<UsersPage*>();
        QVERIFY(users && users->isVisible());
        QCOMPARE(tabs->indexOf(users), 1);

        // Asking for a page makes it, unseen; the others wait.
        QVERIFY(pages->groupsPage());
        QVERIFY(!window.findChild<ProgrammedSlotsPage*>());
        pages->buildAllPages();
        QVERIFY(window.findChild<ProgrammedSlotsPage*>());
        window.changeLanguage(Translator::Turkish);
        QCOMPARE(tabs->tabText(1), u"Kullanıcılar"_s);
    }
};

QTEST_MAIN(LazyPagesTest)
#include "LazyPagesTest.moc"
