#include "MainWindowFixture.h"
#include "WindowDriver.h"
#include "store/ConfigFile.h"
#include "store/LookupTable.h"
#include "store/Translate.h"
#include "store/Translator.h"
#include "ui/common/MessageBox.h"
#include "ui/main/LanguageSwitch.h"
#include "ui/main/WindowOperator.h"
#include "ui/main/frmMain.h"

#include <QAction>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QThread>

using namespace Qt::StringLiterals;

class MainWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { MessageBox::setDefaultAnswer(QMessageBox::Ok); }
    void init()
    {
        MessageBox::clearShownTexts();
        SetCurrentTranslator(Translator());
        LanguageSwitch::apply(Translator::Turkish);
    }

    void titleMenusAndPages()
    {
        MainWindowFixture f;
        QVERIFY2(f.ok(), qPrintable(f.error()));
        frmMain& window = f.window();
        QCOMPARE(window.windowTitle(), u"Halvoran KX-410 Panel Konfigürasyon V2.1 - SERVER"_s);
        QVERIFY(!window.findChild<QProgressBar*>(u"PrBar"_s)->isVisible());
        QVERIFY(window.findChild<QAction*>(u"mnuChangeLanguage0"_s)->isChecked());

        // The lookup menu opens one form per table and brings it back instead of a second one.
        window.findChild<QAction*>(u"mnuDepartments"_s)->trigger();
        window.findChild<QAction*>(u"mnuDepartments"_s)->trigger();
        QCOMPARE(window.findChildren<QDialog*>(u"frmDepartmanlar"_s).size(), 1);
        QCOMPARE(window.findChild<QDialog*>(u"frmDepartmanlar"_s)->windowTitle(), u"Departman Girişleri"_s);
    }

    void languageChoiceRewritesSettingsAndCaptions()
    {
        Translator translator;
        translator.addRow(u"Dil"_s, u"Language"_s, u"اللغة"_s);
        translator.addRow(u"Halvoran KX-410 Panel Konfigürasyon V2.1 - SERVER"_s,
                          u"Halvoran KX-410 Panel Configuration V2.1 - SERVER"_s, u"تكوين اللوحة - الخادم"_s);
        translator.addRow(u"Şirket Girişleri"_s, u"Companies"_s, u"الشركات"_s);
        translator.addRow(u"Sirket No"_s, u"Company No"_s, u"رقم الشركة"_s);
        translator.addRow(u"Yeni"_s, u"New"_s, u"جديد"_s);
        SetCurrentTranslator(translator);

        MainWindowFixture f;
        QVERIFY2(f.ok(), qPrintable(f.error()));
        frmMain& window = f.window();
        window.show();
        window.openLookupTable(LookupTable::Kind::Companies);
        auto* companies = window.findChild<QDialog*>(u"frmSirketler"_s);

        window.findChild<QAction*>(u"mnuChangeLanguage1"_s)->trigger();
        // Written at once (the rest of the record is the settings file's own test).
        QCOMPARE(ConfigFile::read(f.start().folder.configFile()).settings.language, qint16(1));
        QCOMPARE(window.findChild<QMenu*>(u"mnuLanguage"_s)->title(), u"Language"_s);
        QCOMPARE(window.windowTitle(), u"Halvoran KX-410 Panel Configuration V2.1 - SERVER"_s);
        // Other open windows follow, grid headers included.
        QCOMPARE(companies->windowTitle(), u"Companies"_s);
        QCOMPARE(companies->findChild<QTableView*>(u"grdRecords"_s)->model()->headerData(0, Qt::Horizontal).toString(),
                 u"Company No"_s);

        window.findChild<QAction*>(u"mnuChangeLanguage2"_s)->trigger();
        QCOMPARE(ConfigFile::read(f.start().folder.configFile()).settings.language, qint16(2));
        QCOMPARE(companies->layoutDirection(), Qt::RightToLeft);
        // Each language keeps its own name; Qt's own buttons speak the language too.
        QCOMPARE(window.findChild<QAction*>(u"mnuChangeLanguage0"_s)->text(), u"Türkçe"_s);
        const auto yesText = [] {
            QMessageBox box;
            box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
            return box.button(QMessageBox::Yes)->text().remove(u'&');
        };
        QCOMPARE(yesText(), u"نعم"_s);

        window.findChild<QAction*>(u"mnuChangeLanguage0"_s)->trigger();
        QCOMPARE(window.layoutDirection(), Qt::LeftToRight);
        QCOMPARE(companies->windowTitle(), u"Şirket Girişleri"_s);
        QCOMPARE(yesText(), u"Evet"_s);

        // A settings file that cannot be written is reported; the language changes all the same.
        const QString config = f.start().folder.configFile();
        QVERIFY(QFile::remove(config));
        QVERIFY(QDir().mkpath(config + u"/blocked"_s));
        MessageBox::clearShownTexts();
        window.findChild<QAction*>(u"mnuChangeLanguage1"_s)->trigger();
        QCOMPARE(MessageBox::shownTexts(), QStringList{ u"Başlangıç ayarları kaydedilemedi."_s });
        QCOMPARE(window.findChild<QMenu*>(u"mnuLanguage"_s)->title(), u"Language"_s);
    }

    void operatorCallsFromAWorkerThread()
    {
        MainWindowFixture f;
        QVERIFY2(f.ok(), qPrintable(f.error()));
        frmMain& window = f.window();
        WindowOperator& op = window.windowOperator();

        MessageBox::setNextAnswer(QMessageBox::Yes);
        WindowDriver::whenModal([](QDialog* dialog) {
            QCOMPARE(dialog->objectName(), u"frmPassword"_s);
            WindowDriver::click(dialog, u"cmdCancel"_s);
        });
        bool answer = false;
        bool windowThreadShowedTheBox = false;
        QThread* worker = QThread::create([&] {
            answer = op.ask(Message(u"Devam etmek istiyor musunuz?"_s));
            op.progress(3, 10);
            op.status(Message(u"BEKLEYİNİZ..."_s));
            op.requestLogin();
            windowThreadShowedTheBox = MessageBox::shownTexts().size() == 1;
        });
        worker->start();
        QTRY_VERIFY_WITH_TIMEOUT(worker->isFinished(), 10000);
        delete worker;

        QVERIFY(answer);
        QVERIFY(windowThreadShowedTheBox);
        QCOMPARE(MessageBox::shownTexts(), QStringList{ u"Devam etmek istiyor musunuz?"_s });
        auto* bar = window.findChild<QProgressBar*>(u"PrBar"_s);
        QCOMPARE(bar->value(), 3);
        QCOMPARE(window.findChild<QLabel*>(u"lblStatus"_s)->text(), u"BEKLEYİNİZ..."_s);

        op.progress(0, 0);
        QVERIFY(bar->isHidden());
    }
};

QTEST_MAIN(MainWindowTest)
#include "MainWindowTest.moc"
