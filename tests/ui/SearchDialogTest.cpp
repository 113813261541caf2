#include "WindowDriver.h"
#include "store/Translate.h"
#include "store/Translator.h"
#include "ui/common/MessageBox.h"
#include "ui/common/frmParameter.h"
#include "ui/main/LanguageSwitch.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
// A user list as a caller would hand it over; titles are the Turkish column names.
void fillUsers(QStandardItemModel& model)
{
    model.setHorizontalHeaderLabels({ u"ID"_s, u"Adi"_s, u"Tarih"_s });
    const struct
    {
        int id;
        const char16_t* name;
        QDate date;
    } rows[] = { { 1, u"Ahmet", QDate(2016, 3, 14) },
                 { 12, u"Ahu", QDate(2016, 3, 15) },
                 { 120, u"Mehmet", QDate(2016, 3, 14) },
                 { 7, u"ahmet can", QDate(2017, 1, 2) },
                 { 30, u"Şükrü", QDate(2016, 3, 14) } };
    for (const auto& r : rows) {
        QList<QStandardItem*> items{ new QStandardItem, new QStandardItem, new QStandardItem };
        items[0]->setData(r.id, Qt::EditRole);
        items[1]->setData(QString::fromUtf16(r.name), Qt::EditRole);
        items[2]->setData(QDateTime(r.date, QTime(0, 0)), Qt::EditRole);
        model.appendRow(items);
    }
}

void chooseColumn(frmParameter& dialog, const QString& shown)
{
    auto* combo = dialog.findChild<QComboBox*>(u"cmbSearchCriter"_s);
    const int index = combo->findText(shown);
    QVERIFY2(index >= 0, qPrintable(shown));
    combo->setCurrentIndex(index);
}

QLineEdit* searchText(frmParameter& dialog)
{
    return dialog.findChild<QLineEdit*>(u"txtSearchText"_s);
}
} // namespace

class SearchDialogTest : public QObject
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

    void filterWhileTyping()
    {
        QStandardItemModel users;
        fillUsers(users);
        frmParameter dialog(&users, u"Kullanıcı Arama"_s);
        QCOMPARE(dialog.windowTitle(), u"Kullanıcı Arama"_s);
        QCOMPARE(dialog.findChild<QLabel*>(u"lblFieldName"_s)->text(), u"Field Name:"_s);
        // The column chosen and the text typed reach the filter (its rules are the filter's own
        // tests): a number is an equality, text a beginning; blanks remove it.
        chooseColumn(dialog, u"ID"_s);
        WindowDriver::type(searchText(dialog), u"12"_s);
        QCOMPARE(dialog.visibleRowCount(), 1);
        searchText(dialog)->clear();
        chooseColumn(dialog, u"Adi"_s);
        WindowDriver::type(searchText(dialog), u"Şü"_s);
        QCOMPARE(dialog.visibleRowCount(), 1);
        searchText(dialog)->setText(u"   "_s);
        QCOMPARE(dialog.visibleRowCount(), 5);
        QVERIFY(MessageBox::shownTexts().isEmpty());
    }

    void enterFindsAndSelectReturnsTheRow()
    {
        QStandardItemModel users;
        fillUsers(users);
        frmParameter dialog(&users, u"Kullanıcı Arama"_s);
        dialog.show();
        auto* text = searchText(dialog);
        auto* grid = dialog.findChild<QTableView*>(u"grdSearch"_s);

        QTest::keyClick(text, Qt::Key_Return);
        QCOMPARE(MessageBox::lastShownText(), u"Lütfen bir değer giriniz."_s);

        chooseColumn(dialog, u"Tarih"_s);
        text->setText(u"02/01/2017"_s);
        QTest::keyClick(text, Qt::Key_Return);
        QCOMPARE(grid->currentIndex().row(), 3);
        text->setText(u"03/01/2017"_s);
        QTest::keyClick(text, Qt::Key_Return);
        QCOMPARE(MessageBox::lastShownText(), u"Girilen değere ilişkin kayıt bulunamadı"_s);

        chooseColumn(dialog, u"ID"_s);
        text->setText(u"30"_s);
        QTest::keyClick(text, Qt::Key_Return);
        QCOMPARE(MessageBox::shownTexts().size(), 2);
        WindowDriver::click(&dialog, u"cmdSelect"_s);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(dialog.selectedValue(u"Adi"_s).toString(), u"Şükrü"_s);
    }

    void translatedColumnNames()
    {
        Translator translator;
        translator.addRow(u"Adi"_s, u"Name"_s, u"الاسم"_s);
        translator.addRow(u"Sirket No"_s, u"Company No"_s, u"رقم الشركة"_s);
        SetCurrentTranslator(translator);
        LanguageSwitch::apply(Translator::English);

        QStandardItemModel companies;
        companies.setHorizontalHeaderLabels({ u"Sirket No"_s, u"Adi"_s });
        for (const QString& name : { u"Ayşe'nin Dükkanı"_s, u"Ayten"_s })
            companies.appendRow(
                { new QStandardItem(QString::number(companies.rowCount() + 1)), new QStandardItem(name) });
        frmParameter dialog(&companies, u"Şirket Girişleri"_s);
        auto* combo = dialog.findChild<QComboBox*>(u"cmbSearchCriter"_s);
        QCOMPARE(combo->itemText(0), u"Company No"_s);
        chooseColumn(dialog, u"Name"_s);
        QCOMPARE(dialog.searchColumn(), u"Adi"_s);
        WindowDriver::type(searchText(dialog), u"Ayşe'"_s);
        QCOMPARE(dialog.visibleRowCount(), 1);

        // Back in Turkish the list follows; the chosen column stays.
        LanguageSwitch::apply(Translator::Turkish);
        QCOMPARE(combo->currentText(), u"Adi"_s);
    }
};

QTEST_MAIN(SearchDialogTest)
#include "SearchDialogTest.moc"
