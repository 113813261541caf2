// The global zone window and the zone picker, driven by their control names as a person would.

#include "ShippedLanguage.h"
#include "WindowDriver.h"
#include "operations/configuration/ZoneRepository.h"
#include "store/Clock.h"
#include "store/OperatorSession.h"
#include "support/ScriptedOperator.h"
#include "support/TestDatabases.h"
#include "ui/common/MessageBox.h"
#include "ui/configuration/GlobalZonePicker.h"
#include "ui/configuration/frmPanelGroups.h"
#include "ui/main/LanguageSwitch.h"

#include <QAbstractItemModel>
#include <QDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
QString buttonText(QWidget* form, const QString& name)
{
    auto* b = form->findChild<QPushButton*>(name);
    return b ? b->text() : u"(missing "_s + name + u')';
}

QString cell(QTableView* grid, int row, int column)
{
    return grid->model()->index(row, column).data().toString();
}

// Opens the editor of a cell, types into it and commits it with Return, as the person would.
void typeIntoCell(QTableView* grid, int row, int column, const QString& text)
{
    grid->setFocus();
    grid->setCurrentIndex(grid->model()->index(row, column));
    grid->edit(grid->currentIndex());
    QLineEdit* editor = WindowDriver::openEditor(grid);
    QVERIFY(editor);
    editor->selectAll();
    WindowDriver::type(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_COMPARE(cell(grid, row, column), text);
}

void pressDelete(QTableView* grid, int row)
{
    grid->setCurrentIndex(grid->model()->index(row, 1));
    QTest::keyClick(grid, Qt::Key_Delete);
}

QStringList stored(Database& db)
{
    QStringList out;
    for (const ZoneRepository::Row& row : ZoneRepository(db).list())
        out << QString::number(row.number) + u' ' + row.name;
    return out;
}
} // namespace

class ZoneWindowsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { MessageBox::setDefaultAnswer(QMessageBox::Ok); }
    void init()
    {
        MessageBox::clearShownTexts();
        LanguageSwitch::apply(0);
        QVERIFY2(m_dbs.openFresh(TestDatabases::SQLite, m_db, true, &m_error), qPrintable(m_error));
    }
    void cleanup() { m_db.close(); }

    void zonesAreEditedInTheGridAndStoredWithRights();
    void zonesInUseAreKeptAndOthersDeletedAfterAsking();
    void pickerListsTheZonesAndReturnsTheChoice();
    void captionsFollowTheLanguage();

private:
    TestDatabases m_dbs;
    Database m_db;
    QString m_error;
};

void ZoneWindowsTest::zonesAreEditedInTheGridAndStoredWithRights()
{
    const ZoneRepository zones(m_db);
    QVERIFY(zones.add({ 1, u"Bina"_s }).ok);
    QVERIFY(zones.add({ 2, u"Otopark"_s }).ok);
    OperatorSession session(Clock::system());
    ScriptedOperator op;
    frmPanelGroups form(m_db, session, op);
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));

    QCOMPARE(form.windowTitle(), u"Global Kapı Bölgeleri"_s);
    auto* grid = form.findChild<QTableView*>(u"grdPanelGroups"_s);
    QAbstractItemModel* model = grid->model();
    // The stored zones, then the line where a new one is typed.
    QCOMPARE(cell(grid, 1, 1), u"Otopark"_s);
    QCOMPARE(model->headerData(2, Qt::Vertical).toString(), u"*"_s);
    QVERIFY(!(model->flags(model->index(0, 0)) & Qt::ItemIsEditable));
    auto* name = form.findChild<QLineEdit*>(u"txtGlobalZoneName"_s);
    QCOMPARE(name->text(), u"Bina"_s);
    QVERIFY(form.findChild<QLineEdit*>(u"txtGlobalZoneNo"_s)->isReadOnly());

    // A renamed zone and a zone typed on the last line; that line takes the lowest free number
    // and a new last line follows.
    typeIntoCell(grid, 0, 1, u"Ana Bina"_s);
    typeIntoCell(grid, 2, 1, u"Çağrı'nın Bahçesi"_s);
    QCOMPARE(cell(grid, 2, 0), u"3"_s);
    QCOMPARE(model->headerData(3, Qt::Vertical).toString(), u"*"_s);

    // Without administrator rights nothing is stored and the edits stay on the screen.
    WindowDriver::click(&form, u"cmdUpdatePG"_s);
    QCOMPARE(op.told(), QStringList{ u"Yetki hatası, Yönetici şifresi gerekli!"_s });
    QCOMPARE(stored(m_db), (QStringList{ u"1 Bina"_s, u"2 Otopark"_s }));
    QCOMPARE(cell(grid, 2, 1), u"Çağrı'nın Bahçesi"_s);

    session.logInAsAdministrator(u"admin"_s);
    WindowDriver::click(&form, u"cmdUpdatePG"_s);
    QCOMPARE(stored(m_db), (QStringList{ u"1 Ana Bina"_s, u"2 Otopark"_s, u"3 Çağrı'nın Bahçesi"_s }));
    QVERIFY(form.zonesChanged());

    // Refresh drops what was not stored and shows what another station stored meanwhile.
    typeIntoCell(grid, 1, 1, u"Kapalı Otopark"_s);
    QVERIFY(zones.add({ 9, u"Dış"_s }).ok);
    WindowDriver::click(&form, u"cmdRefreshPG"_s);
    QCOMPARE(cell(grid, 1, 1), u"Otopark"_s);
    QCOMPARE(cell(grid, 3, 1), u"Dış"_s);

    // A refusal (the session's rules are the repository's tests) is shown on the row to correct.
    typeIntoCell(grid, 4, 0, u"2"_s);
    typeIntoCell(grid, 4, 1, u"On İki"_s);
    WindowDriver::click(&form, u"cmdUpdatePG"_s);
    QCOMPARE(MessageBox::shownTexts().size(), 1);
    QCOMPARE(form.currentRow(), 4);
}

void ZoneWindowsTest::zonesInUseAreKeptAndOthersDeletedAfterAsking()
{
    const ZoneRepository zones(m_db);
    for (int n : { 1, 2, 3 })
        QVERIFY(zones.add({ n, u"Bölge "_s + QString::number(n) }).ok);
    QVERIFY(
        m_db.insert(u"PanelSettings"_s,
                    { u"Sira No"_s, u"Panel ID"_s, u"Seri No"_s, u"Panel Global Bolge1"_s, u"Panel Global Bolge2"_s },
                    { 4, 4, 0x1A, 2, 2 }));
    OperatorSession session(Clock::system());
    ScriptedOperator op;
    frmPanelGroups form(m_db, session, op);
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    auto* grid = form.findChild<QTableView*>(u"grdPanelGroups"_s);
    session.logInAsAdministrator(u"admin"_s);

    // A zone a panel uses is refused before any question (the words are the repository's tests).
    pressDelete(grid, 1);
    QCOMPARE(MessageBox::shownTexts().size(), 1);
    // No keeps the zone; Yes deletes it and the edits of other rows stay.
    typeIntoCell(grid, 0, 1, u"Giriş"_s);
    MessageBox::clearShownTexts();
    MessageBox::setNextAnswer(QMessageBox::No);
    pressDelete(grid, 2);
    QCOMPARE(MessageBox::shownTexts(), QStringList{ u"3 nolu global bölgeyi silmek istiyor musunuz?"_s });
    QCOMPARE(stored(m_db).size(), 3);
    MessageBox::setNextAnswer(QMessageBox::Yes);
    pressDelete(grid, 2);
    QCOMPARE(stored(m_db), (QStringList{ u"1 Bölge 1"_s, u"2 Bölge 2"_s }));
    QCOMPARE(cell(grid, 0, 1), u"Giriş"_s);

    // A zone not stored yet is only dropped from the grid; the last line cannot be deleted.
    typeIntoCell(grid, 2, 1, u"Taslak"_s);
    pressDelete(grid, 2);
    pressDelete(grid, 2);
    QCOMPARE(grid->model()->rowCount(), 3);
}

void ZoneWindowsTest::pickerListsTheZonesAndReturnsTheChoice()
{
    const ZoneRepository zones(m_db);
    QVERIFY(zones.add({ 1, u"Bina"_s }).ok);
    QVERIFY(zones.add({ 5, u"Otopark"_s }).ok);
    QVERIFY(zones.add({ 9, u"Bahçe"_s }).ok);

    // It opens on the zone the field holds and hands back number and name.
    QString current;
    bool numberTitleWhole = false;
    WindowDriver::whenModal([&](QDialog* dialog) {
        auto* grid = dialog->findChild<QTableView*>(u"grdSearch"_s);
        current = grid->currentIndex().siblingAtColumn(1).data().toString();
        // The number's title is read whole, not cut by the column.
        numberTitleWhole = grid->horizontalHeader()->sectionSize(0) >= grid->horizontalHeader()->sectionSizeHint(0);
        WindowDriver::click(dialog, u"cmdSelect"_s);
    });
    const std::optional<ZoneRepository::Row> chosen = pickGlobalZone(nullptr, m_db, 5);
    QCOMPARE(current, u"Otopark"_s);
    QVERIFY(numberTitleWhole);
    QCOMPARE(chosen.value_or(ZoneRepository::Row{}), (ZoneRepository::Row{ 5, u"Otopark"_s }));
}

void ZoneWindowsTest::captionsFollowTheLanguage()
{
    ShippedLanguage shipped;
    QVERIFY2(shipped.isReady(), qPrintable(shipped.error()));
    QVERIFY(ZoneRepository(m_db).add({ 1, u"Ana Bina"_s }).ok);
    OperatorSession session(Clock::system());
    ScriptedOperator op;
    frmPanelGroups form(m_db, session, op);
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    QAbstractItemModel* model = form.findChild<QTableView*>(u"grdPanelGroups"_s)->model();

    // In English the window's Kaydet carries its own word, not the table's "Save".
    for (int language : { 0, 1, 2 }) {
        LanguageSwitch::apply(language);
        QCOMPARE(buttonText(&form, u"cmdUpdatePG"_s) == u"Update"_s, language == 1);
        QCOMPARE(model->headerData(0, Qt::Horizontal).toString() == u"Zone No"_s, language == 1);
        ShippedLanguage::screenshot(&form, u"frmPanelGroups-"_s + QString::number(language));
        WindowDriver::whenModal([language](QDialog* dialog) {
            ShippedLanguage::screenshot(dialog, u"picker-"_s + QString::number(language));
            WindowDriver::click(dialog, u"cmdClose"_s);
        });
        pickGlobalZone(&form, m_db, 1);
    }
}

QTEST_MAIN(ZoneWindowsTest)
#include "ZoneWindowsTest.moc"
