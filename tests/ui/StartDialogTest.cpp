#include "WindowDriver.h"
#include "store/Database.h"
#include "store/OperatorAccounts.h"
#include "store/StartupOptions.h"
#include "store/StartupSequence.h"
#include "store/StationSettings.h"
#include "store/Translate.h"
#include "store/Translator.h"
#include "ui/common/FileDialog.h"
#include "ui/common/MessageBox.h"
#include "ui/main/LanguageSwitch.h"
#include "ui/main/WindowStartupUi.h"
#include "ui/main/frmStart.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class StartDialogTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // A box that nobody answered must not hang the test.
        MessageBox::setDefaultAnswer(QMessageBox::Ok);
    }

    void init()
    {
        MessageBox::clearShownTexts();
        LanguageSwitch::apply(Translator::Turkish);
    }

    void clientNeedsDatabaseAndWatchesPanelOneAtLeast()
    {
        frmStart dialog{ StationSettings() };
        dialog.show();
        auto* mode = dialog.findChild<QButtonGroup*>(u"opsClientServer"_s);
        QCOMPARE(mode->button(0)->text(), u"Client Mod"_s);
        mode->button(0)->click();

        // Blanks alone are no database name: the dialog stays with its message.
        dialog.findChild<QLineEdit*>(u"lblRemoteDatabaseName"_s)->setText(u"   "_s);
        WindowDriver::click(&dialog, u"cmdSaveOk"_s);
        QCOMPARE(MessageBox::lastShownText(), u"Uzak veritabanı dosya adı belirtilmedi"_s);
        QVERIFY(dialog.isVisible());

        dialog.findChild<QLineEdit*>(u"lblRemoteDatabaseName"_s)->setText(u"postgresql://kx@127.0.0.1/site"_s);
        dialog.findChild<QComboBox*>(u"cmbTLanguage"_s)->setCurrentIndex(2);
        WindowDriver::click(&dialog, u"cmdSaveOk"_s);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        const StationSettings chosen = dialog.settings();
        QCOMPARE(chosen.workingMode, qint32(StationSettings::Client));
        QCOMPARE(chosen.remotePath, u"postgresql://kx@127.0.0.1/site"_s);
        QCOMPARE(chosen.watchedPanels(), QList<int>{ 1 });
        QCOMPARE(chosen.language, qint16(2));
    }

    void ticksAndServerModeAreTaken()
    {
        StationSettings old;
        old.marker = StationSettings::SetUpMarker;
        old.workingMode = StationSettings::Client;
        old.remotePath = u"/old/site.db"_s;
        old.setWatched(7, true);

        frmStart client(old);
        auto* list = client.findChild<QListWidget*>(u"lstPanelList"_s);
        QCOMPARE(list->item(63)->text(), u"Panel 64"_s);
        // The dialog opens on the record as it stands.
        QCOMPARE(list->item(6)->checkState(), Qt::Checked);
        list->item(6)->setCheckState(Qt::Unchecked);
        list->item(2)->setCheckState(Qt::Checked);
        list->item(63)->setCheckState(Qt::Checked);
        WindowDriver::click(&client, u"cmdSaveOk"_s);
        QCOMPARE(client.settings().watchedPanels(), (QList<int>{ 3, 64 }));
        QCOMPARE(client.settings().remotePath, u"/old/site.db"_s);

        frmStart server(old);
        server.findChild<QRadioButton*>(u"opsClientServer1"_s)->click();
        WindowDriver::click(&server, u"cmdSaveOk"_s);
        QCOMPARE(server.result(), int(QDialog::Accepted));
        QCOMPARE(server.settings().workingMode, qint32(StationSettings::Server));

        frmStart cancelled(old);
        WindowDriver::click(&cancelled, u"cmdCancel"_s);
        QCOMPARE(cancelled.result(), int(QDialog::Rejected));
    }

    void databaseFileChoice()
    {
        frmStart dialog{ StationSettings() };
        auto* name = dialog.findChild<QLineEdit*>(u"lblRemoteDatabaseName"_s);
        // The database is a client's choice only.
        QVERIFY(!dialog.findChild<QPushButton*>(u"cmdDB"_s)->isEnabled());
        dialog.findChild<QRadioButton*>(u"opsClientServer0"_s)->click();
        QVERIFY(dialog.findChild<QPushButton*>(u"cmdDB"_s)->isEnabled());

        FileDialog::setNextFileName(QString()); // cancelled
        WindowDriver::click(&dialog, u"cmdDB"_s);
        QCOMPARE(MessageBox::lastShownText(), u"Geçersiz dosya adı!"_s);

        QTemporaryDir dir;
        const QString missing = dir.filePath(u"yok.db"_s);
        FileDialog::setNextFileName(missing);
        WindowDriver::click(&dialog, u"cmdDB"_s);
        QCOMPARE(MessageBox::shownTexts().size(), 2);
        QVERIFY(name->text().isEmpty());

        const QString file = dir.filePath(u"Şirket merkezi.db"_s);
        QFile f(file);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.close();
        FileDialog::setNextFileName(file);
        WindowDriver::click(&dialog, u"cmdDB"_s);
        QCOMPARE(MessageBox::shownTexts().size(), 2);
        QCOMPARE(name->text(), file);
    }

    void windowStartUp()
    {
        QTemporaryDir dir;
        StartupOptions options;
        options.dataDir = dir.filePath(u"data"_s);
        options.singleInstance = false;

        // Set up as a server in English, then a refused and an accepted password choice.
        WindowStartupUi ui;
        QStringList dialogs;
        QStringList hints;
        auto choosePassword = [&](const QString& again) {
            return [&, again](QDialog* dialog) {
                dialogs << dialog->objectName();
                hints << dialog->findChild<QLabel*>(u"lblHint"_s)->text();
                WindowDriver::type(dialog->findChild<QLineEdit*>(u"txtNewAdmin"_s), u"2468"_s);
                WindowDriver::type(dialog->findChild<QLineEdit*>(u"txtNewRAdmin"_s), again);
                WindowDriver::click(dialog, u"cmdOK"_s);
            };
        };
        WindowDriver::whenModal([&](QDialog* dialog) {
            dialogs << dialog->objectName();
            dialog->findChild<QComboBox*>(u"cmbTLanguage"_s)->setCurrentIndex(1);
            WindowDriver::click(dialog, u"cmdSaveOk"_s);
            WindowDriver::whenModal([&](QDialog* first) {
                choosePassword(u"2469"_s)(first);
                WindowDriver::whenModal(choosePassword(u"2468"_s));
            });
        });
        StartupSequence sequence(ui, options);
        const StartupResult start = sequence.run();
        QVERIFY(start.ok);
        QCOMPARE(dialogs, (QStringList{ u"frmStart"_s, u"frmFirstPassword"_s, u"frmFirstPassword"_s }));
        // The password is chosen in the station's language; a refusal comes back as the hint.
        QCOMPARE(hints.at(0), Translate(u"Yönetici şifresini belirleyiniz"_s));
        QVERIFY(hints.at(0) != u"Yönetici şifresini belirleyiniz"_s);
        QVERIFY(hints.at(1) != hints.at(0));
        OperatorAccounts accounts;
        QVERIFY(accounts.load(*start.database));
        QCOMPARE(accounts.adminPassword().toLongLong(), 2468);
        start.database->close();
    }
};

QTEST_MAIN(StartDialogTest)
#include "StartDialogTest.moc"
