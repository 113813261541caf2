#include "MainWindowFixture.h"
#include "WindowDriver.h"
#include "store/LookupTable.h"
#include "ui/common/MessageBox.h"
#include "ui/main/LanguageSwitch.h"
#include "ui/main/WindowOperator.h"
#include "ui/main/frmMain.h"
#include "ui/users/frmLookupTable.h"

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
QPushButton* button(QWidget* form, const QString& name)
{
    return form->findChild<QPushButton*>(name);
}

// Types into the grid's open editor and commits it with Return, as the person would.
void typeIntoEditor(QTableView* grid, const QString& text)
{
    QLineEdit* editor = WindowDriver::openEditor(grid);
    QVERIFY(editor);
    editor->clear();
    WindowDriver::type(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
}

QStringList storedNames(Database& db, LookupTable::Kind kind)
{
    QStringList names;
    for (const LookupTable::Row& row : LookupTable(kind).rows(db))
        names.append(QString::number(row.key) + u' ' + row.name);
    return names;
}
} // namespace

class LookupFormTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { MessageBox::setDefaultAnswer(QMessageBox::Ok); }
    void init()
    {
        MessageBox::clearShownTexts();
        LanguageSwitch::apply(0);
    }

    void editingNeedsRights()
    {
        MainWindowFixture f;
        QVERIFY2(f.ok(), qPrintable(f.error()));
        frmMain& window = f.window();
        frmLookupTable form(LookupTable::Kind::Blocks, f.database(), window.session(), window.windowOperator());
        QCOMPARE(form.windowTitle(), u"Blok Girişleri"_s);

        WindowDriver::whenModal([](QDialog* login) { WindowDriver::click(login, u"cmdCancel"_s); });
        WindowDriver::click(&form, u"cmdAdd"_s);
        QCOMPARE(MessageBox::shownTexts(), QStringList{ u"Yetki hatası, Yönetici şifresi gerekli!"_s });
        QVERIFY(!form.isAdding());
        QVERIFY(storedNames(f.database(), LookupTable::Kind::Blocks).isEmpty());
    }

    void addUpdateDelete()
    {
        MainWindowFixture f;
        QVERIFY2(f.ok(), qPrintable(f.error()));
        frmMain& window = f.window();
        window.session().logInAsAdministrator(u"admin"_s);
        frmLookupTable form(LookupTable::Kind::Companies, f.database(), window.session(), window.windowOperator());
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        auto* grid = form.findChild<QTableView*>(u"grdRecords"_s);
        auto* position = form.findChild<QLabel*>(u"datPrimaryRS"_s);

        // A new row: the button turns into its cancel and everything else but the update rests.
        WindowDriver::click(&form, u"cmdAdd"_s);
        QVERIFY(form.isAdding());
        QCOMPARE(button(&form, u"cmdAdd"_s)->text(), u"Vazgeç"_s);
        QVERIFY(button(&form, u"cmdUpdate"_s)->isEnabled());
        for (const QString& name : { u"cmdDelete"_s, u"cmdRefresh"_s, u"cmdClose"_s })
            QVERIFY2(!button(&form, name)->isEnabled(), qPrintable(name));
        WindowDriver::click(&form, u"cmdAdd"_s);
        QCOMPARE(grid->model()->rowCount(), 0);
        QVERIFY(button(&form, u"cmdClose"_s)->isEnabled());

        // Names with apostrophes and Turkish letters are stored exactly as typed.
        const QStringList names{ u"O'Brien Şti."_s, u"Çağrı A.Ş."_s, u"Işık' Ltd"_s };
        for (const QString& name : names) {
            WindowDriver::click(&form, u"cmdAdd"_s);
            typeIntoEditor(grid, name);
            const int row = grid->model()->rowCount() - 1;
            QTRY_COMPARE(grid->model()->index(row, 1).data().toString(), name);
            WindowDriver::click(&form, u"cmdUpdate"_s);
        }
        QCOMPARE(storedNames(f.database(), LookupTable::Kind::Companies),
                 (QStringList{ u"1 O'Brien Şti."_s, u"2 Çağrı A.Ş."_s, u"3 Işık' Ltd"_s }));
        QCOMPARE(button(&form, u"cmdAdd"_s)->text(), u"Yeni"_s);

        // Editing a row in the grid is written by cmdUpdate.
        grid->setCurrentIndex(grid->model()->index(1, 1));
        grid->edit(grid->currentIndex());
        typeIntoEditor(grid, u"Çağrı'nın Şirketi"_s);
        QTRY_COMPARE(grid->model()->index(1, 1).data().toString(), u"Çağrı'nın Şirketi"_s);
        WindowDriver::click(&form, u"cmdUpdate"_s);
        QCOMPARE(storedNames(f.database(), LookupTable::Kind::Companies).at(1), u"2 Çağrı'nın Şirketi"_s);

        // Deleting asks first; No keeps the row.
        MessageBox::clearShownTexts();
        MessageBox::setNextAnswer(QMessageBox::No);
        WindowDriver::click(&form, u"cmdDelete"_s);
        QCOMPARE(MessageBox::shownTexts(), QStringList{ u"Bu kaydı silmek istiyor musunuz?"_s });
        QCOMPARE(grid->model()->rowCount(), 3);

        // Yes deletes it and moves on to the row that followed.
        MessageBox::setNextAnswer(QMessageBox::Yes);
        WindowDriver::click(&form, u"cmdDelete"_s);
        QCOMPARE(storedNames(f.database(), LookupTable::Kind::Companies),
                 (QStringList{ u"1 O'Brien Şti."_s, u"3 Işık' Ltd"_s }));
        QCOMPARE(grid->model()->index(form.currentRow(), 1).data().toString(), u"Işık' Ltd"_s);
        QCOMPARE(position->text(), u"Kayıt: 2"_s);

        // Refresh shows what another station may have added meanwhile.
        QVERIFY(LookupTable(LookupTable::Kind::Companies).add(f.database(), u"Dış Kayıt"_s).ok);
        WindowDriver::click(&form, u"cmdRefresh"_s);
        QCOMPARE(grid->model()->rowCount(), 3);
    }
};

QTEST_MAIN(LookupFormTest)
#include "LookupFormTest.moc"
