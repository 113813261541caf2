// The users page by name: every column edited in place (Turkish text typed key by key, picker
// columns showing names), the row checks of the user store shown as messages with the row left
// unsaved (the checks themselves are the store's tests), rights, the photograph and the search box.

#include "WindowDriver.h"
#include "support/StationWindow.h"
#include "ui/common/MessageBox.h"
#include "ui/main/WindowOperator.h"
#include "ui/users/UserTableModel.h"
#include "ui/users/UsersPage.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QLineEdit>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace {
QVariant column(Database& db, const QString& name, qint32 id)
{
    return db.scalar(u"SELECT "_s + Database::quoted(name) + u" FROM \"Users\" WHERE \"ID\" = ?"_s, { id });
}
} // namespace

class UsersPageTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        MessageBox::clearShownTexts();
        MessageBox::setDefaultAnswer(QMessageBox::No);
    }

    void refusedRowsStayUnsavedWithTheStoreMessage()
    {
        StationWindow f;
        f.sim().addGroup(1, u"Genel"_s);
        f.sim().addUser(1, 1001);
        f.sim().addUser(2, 1002);
        QVERIFY(f.open());
        UsersPage* page = f.pages().usersPage();
        UserTableModel* model = page->model();

        // The store's refusal reaches the operator and the row stays unsaved.
        QVERIFY(model->setData(model->index(0, UserTableModel::Id), 0));
        QVERIFY(f.click(u"cmdSaveUser"_s));
        QCOMPARE(MessageBox::shownTexts(), QStringList{ u"Kullanıcı ID, 1-20000 arasında bir sayı olmalıdır!"_s });
        QVERIFY(model->isPending(0));
        QCOMPARE(column(f.db(), u"Kart ID"_s, 1).toLongLong(), 1001);

        // One good row and one duplicate card: the good one is stored, the other reported.
        QVERIFY(model->setData(model->index(0, UserTableModel::Id), 20000));
        QVERIFY(model->setData(model->index(1, UserTableModel::Card), 1001));
        QVERIFY(f.click(u"cmdSaveUser"_s));
        QCOMPARE(column(f.db(), u"Kart ID"_s, 20000).toLongLong(), 1001);
        QCOMPARE(model->pendingRows(), QList<int>{ 1 });

        // Two refused rows at once.
        QVERIFY(model->setData(model->index(0, UserTableModel::Id), 0));
        MessageBox::clearShownTexts();
        QVERIFY(f.click(u"cmdSaveUser"_s));
        QCOMPARE(MessageBox::shownTexts(), QStringList{ u"Çoklu hatalı işlem yürütüldü, Tekrar deneyiniz!"_s });
        QCOMPARE(model->pendingRows(), (QList<int>{ 0, 1 }));
    }

    void newUserTypedInTheGridWithPickers()
    {
        StationWindow f;
        f.sim().addUser(7, 1007);
        f.sim().addGroup(3, u"Yönetim"_s);
        f.db().insert(u"Sirketler"_s, { u"Sirket No"_s, u"Adi"_s }, { 4, u"Çınar A.Ş."_s });
        QVERIFY(f.open());
        UsersPage* page = f.pages().usersPage();
        UserTableModel* model = page->model();
        auto* grid = f.find<QTableView>(u"grdUsers"_s);

        QVERIFY(f.click(u"cmdAddUser"_s));
        QCOMPARE(model->row(1).id, 8); // one above the highest ID
        QCOMPARE(grid->currentIndex().column(), int(UserTableModel::Card));

        const auto typeInto = [&](int col, const QString& text) {
            const QModelIndex at = grid->model()->index(1, col);
            grid->setCurrentIndex(at);
            grid->edit(at);
            auto* editor = grid->viewport()->findChild<QWidget*>();
            QVERIFY(editor);
            editor = QApplication::focusWidget() ? QApplication::focusWidget() : editor;
            if (auto* line = qobject_cast<QLineEdit*>(editor))
                line->clear();
            WindowDriver::type(editor, text);
            QTest::keyClick(editor, Qt::Key_Return);
        };
        typeInto(UserTableModel::Name, u"Çağrı"_s);
        QTRY_COMPARE(model->row(1).name, u"Çağrı"_s);
        typeInto(UserTableModel::Surname, u"Güneş"_s);
        QTRY_COMPARE(model->row(1).surname, u"Güneş"_s);
        QVERIFY(model->setData(model->index(1, UserTableModel::Card), u"1008"_s));
        QVERIFY(model->setData(model->index(1, UserTableModel::Group), 3));
        QVERIFY(model->setData(model->index(1, UserTableModel::Company), 4));
        QVERIFY(model->setData(model->index(1, UserTableModel::TemporaryActive), Qt::Checked, Qt::CheckStateRole));
        QCOMPARE(model->index(1, UserTableModel::Company).data().toString(), u"Çınar A.Ş."_s);
        QVERIFY(!model->setData(model->index(1, UserTableModel::Pin), u"12a"_s));

        QVERIFY(f.click(u"cmdSaveUser"_s));
        QCOMPARE(MessageBox::shownTexts(), QStringList{ u"Kullanıcı bilgileri kaydedildi."_s });
        QCOMPARE(column(f.db(), u"Adi"_s, 8).toString(), u"Çağrı"_s);
        QCOMPARE(column(f.db(), u"Soyadi"_s, 8).toString(), u"Güneş"_s);
        QCOMPARE(column(f.db(), u"Kart ID"_s, 8).toLongLong(), 1008);
        QCOMPARE(column(f.db(), u"Grup No"_s, 8).toInt(), 3);
        QCOMPARE(column(f.db(), u"Sirket No"_s, 8).toInt(), 4);
        QVERIFY(column(f.db(), u"Gecici Grup Aktif"_s, 8).toBool());
        QCOMPARE(page->selectedRecordNo(), model->row(1).recordNo);
    }

    void choosersShowNamesStoreTheChoiceAndWarnOfMissingGroups()
    {
        StationWindow f;
        f.sim().addGroup(3, u"Yönetim"_s);
        f.sim().addGroup(5, u"Misafir"_s);
        f.db().insert(u"TimeZoneCalendar"_s, { u"Grup Takvimi No"_s, u"Grup Takvimi Adi"_s }, { 2, u"Bayram"_s });
        f.sim().addUser(7, 1007, 3);
        f.sim().addUser(8, 1008, 3);
        QVERIFY(f.open());
        UserTableModel* model = f.pages().usersPage()->model();
        auto* grid = f.find<QTableView>(u"grdUsers"_s);
        // Opens the cell's chooser, checks the names offered and picks one by its name.
        const auto choose = [&](int row, int col, const QStringList& offered, const QString& pick) {
            const QModelIndex at = grid->model()->index(row, col);
            grid->setCurrentIndex(at);
            grid->edit(at);
            auto* combo = grid->viewport()->findChild<QComboBox*>();
            QVERIFY(combo);
            QStringList names;
            for (int i = 0; i < combo->count(); ++i)
                names << combo->itemText(i);
            QCOMPARE(names, offered);
            combo->setCurrentIndex(combo->findText(pick));
            QTest::keyClick(combo, Qt::Key_Return);
        };
        choose(0, UserTableModel::Group, { u"Yönetim"_s, u"Misafir"_s }, u"Misafir"_s);
        QTRY_COMPARE(model->row(0).groupNo, 5);
        choose(0, UserTableModel::UserType, { u"Personel"_s, u"Ziyaretçi Kartı"_s }, u"Ziyaretçi Kartı"_s);
        QTRY_COMPARE(storedNumber(model->row(0).userType), 1);
        QStringList calendars{ u"1"_s, u"2 - Bayram"_s };
        for (int n = 3; n <= 8; ++n)
            calendars << QString::number(n);
        choose(0, UserTableModel::CalendarNo, calendars, u"2 - Bayram"_s);
        QTRY_COMPARE(model->row(0).calendarNo, 2);

        QVERIFY(f.click(u"cmdSaveUser"_s));
        QCOMPARE(column(f.db(), u"Grup No"_s, 7).toInt(), 5);
        QCOMPARE(column(f.db(), u"Kullanici Tipi"_s, 7).toInt(), 1);
        QCOMPARE(column(f.db(), u"Grup Takvimi No"_s, 7).toInt(), 2);

        // Group 0 and a group that does not exist are stored, with a warning naming the users.
        QVERIFY(model->setData(model->index(0, UserTableModel::Group), 0));
        QVERIFY(model->setData(model->index(1, UserTableModel::Group), 99));
        MessageBox::clearShownTexts();
        QVERIFY(f.click(u"cmdSaveUser"_s));
        QCOMPARE(MessageBox::shownTexts(),
                 (QStringList{ u"7 nolu kullanıcının geçiş grubu tanımlı değil! Kullanıcı panellerden geçemez.\n"
                               u"8 nolu kullanıcının geçiş grubu tanımlı değil! Kullanıcı panellerden geçemez."_s,
                               u"Kullanıcı bilgileri kaydedildi."_s }));
        QCOMPARE(column(f.db(), u"Grup No"_s, 8).toInt(), 99);
    }

    void savingAndDeletingNeedRights()
    {
        StationWindow f;
        f.sim().addGroup(1, u"Genel"_s);
        f.sim().addUser(1, 1001);
        f.sim().addUser(2, 1002);
        QVERIFY(f.open());
        UserTableModel* model = f.pages().usersPage()->model();
        f.sim().session().logInAsOperator(u"ayse"_s);
        int logins = 0;
        f.op().setLoginHandler([&] { ++logins; });

        QVERIFY(model->setData(model->index(0, UserTableModel::Name), u"Ali"_s));
        QVERIFY(f.click(u"cmdSaveUser"_s));
        QCOMPARE(logins, 1);
        QCOMPARE(MessageBox::lastShownText(), u"Yetki hatası, Yönetici şifresi gerekli!"_s);
        QCOMPARE(column(f.db(), u"Adi"_s, 1).toString(), u"Ad1"_s);

        // The login brings the rights: the same press now stores the row.
        f.op().setLoginHandler([&] { f.sim().session().logInAsAdministrator(u"admin"_s); });
        QVERIFY(f.click(u"cmdSaveUser"_s));
        QCOMPARE(column(f.db(), u"Adi"_s, 1).toString(), u"Ali"_s);

        // Deleting asks first.
        QVERIFY(f.pages().usersPage()->selectRecordNo(model->row(1).recordNo));
        MessageBox::clearShownTexts();
        MessageBox::setNextAnswer(QMessageBox::Yes);
        QVERIFY(f.click(u"cmdDeleteUser"_s));
        QCOMPARE(MessageBox::shownTexts(), QStringList{ u"Bu kaydı silmek istiyor musunuz?"_s });
        QCOMPARE(model->rowCount(), 1);
        QVERIFY(!column(f.db(), u"ID"_s, 2).isValid());
    }

    void pictureAndSearch()
    {
        StationWindow f;
        f.sim().addUser(1, 1001);
        f.sim().addUser(2, 1002);
        f.sim().addUser(12, 1012);
        f.db().exec(u"UPDATE \"Users\" SET \"Resim\" = ? WHERE \"ID\" = ?"_s, { u"ali.png"_s, 2 });
        QImage image(8, 8, QImage::Format_RGB32);
        image.fill(Qt::red);
        QVERIFY(image.save(QDir(f.pictureFolder()).filePath(u"ali.png"_s)));
        QVERIFY(f.open());
        UsersPage* page = f.pages().usersPage();

        QVERIFY(page->selectRecordNo(page->model()->row(0).recordNo));
        QCOMPARE(QFileInfo(page->shownPicture()).fileName(), u"NoImage.jpg"_s);
        QVERIFY(page->selectRecordNo(page->model()->row(1).recordNo));
        QCOMPARE(QFileInfo(page->shownPicture()).fileName(), u"ali.png"_s);

        auto* search = f.find<QLineEdit>(u"txtSearchUser"_s);
        auto* grid = f.find<QTableView>(u"grdUsers"_s);
        // Only number, card and names are searched: every PIN here is 1234.
        search->clear();
        WindowDriver::type(search, u"123"_s);
        QCOMPARE(grid->model()->rowCount(), 0);
        search->clear();
        WindowDriver::type(search, u"ad1"_s);
        WindowDriver::type(search, u"2"_s);
        QCOMPARE(grid->model()->rowCount(), 1);
        grid->setCurrentIndex(grid->model()->index(0, 0));
        QCOMPARE(page->selectedRecordNo(), page->model()->row(2).recordNo);
    }
};

QTEST_MAIN(UsersPageTest)
#include "tst_UsersPage.moc"
