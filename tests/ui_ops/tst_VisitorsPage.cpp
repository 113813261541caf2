// The visitors page by name: registering a visit with a visitor card, the day's list, deleting a
// visit behind the rights check, and the moment a visit is registered at. The refusal of a visit
// without a card is the visit store's test.

#include "support/StationWindow.h"
#include "ui/common/MessageBox.h"
#include "ui/users/VisitorsPage.h"

#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>
#include <QTableWidget>
#include <QTimeEdit>

using namespace Qt::StringLiterals;

namespace {
void addUser(Database& db, qint32 id, qint64 card, qint32 type, const QString& name)
{
    QVERIFY(db.insert(u"Users"_s, { u"ID"_s, u"Kart ID"_s, u"Adi"_s, u"Soyadi"_s, u"Kullanici Tipi"_s },
                      { id, card, name, u"Yılmaz"_s, type }));
}

int visitCount(Database& db)
{
    return db.scalar(u"SELECT COUNT(*) FROM \"Visitors\""_s).toInt();
}
} // namespace

class VisitorsPageTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        MessageBox::clearShownTexts();
        MessageBox::setDefaultAnswer(QMessageBox::No);
    }

    void registerListAndDeleteAVisit()
    {
        StationWindow f;
        addUser(f.db(), 900, 55900, 1, u"Ziyaretçi"_s);
        addUser(f.db(), 901, 55901, 1, u"Ziyaretçi"_s);
        addUser(f.db(), 5, 1005, 0, u"Mehmet"_s);
        f.sim().addGroup(3, u"Misafir"_s);
        QVERIFY(f.open());

        auto* cards = f.find<QComboBox>(u"cmbVisitorCard"_s);
        cards->setCurrentIndex(cards->findData(901));
        // Only a visitor card lends itself to a visit; only a person can be visited.
        QCOMPARE(cards->count(), 2);
        QCOMPARE(f.find<QComboBox>(u"cmbVisitedPerson"_s)->count(), 1);
        f.find<QLineEdit>(u"txtVisitorName"_s)->setText(u"Ayşe"_s);
        f.find<QLineEdit>(u"txtVisitorSurname"_s)->setText(u"Çelik"_s);
        f.find<QLineEdit>(u"txtVisitorIdentity"_s)->setText(u"12345678901"_s);
        f.find<QLineEdit>(u"txtVisitorPlate"_s)->setText(u"34 ABC 12"_s);
        f.find<QLineEdit>(u"txtVisitReason"_s)->setText(u"Toplantı 'bütçe'"_s);
        QCOMPARE(f.find<QComboBox>(u"cmbVisitorGroup"_s)->currentData().toInt(), 3);
        QCOMPARE(f.find<QDateEdit>(u"dtpVisitDate"_s)->date(), f.sim().now().date());
        f.find<QTimeEdit>(u"dtpVisitTime"_s)->setTime(QTime(14, 30));

        QVERIFY(f.click(u"cmdRegisterVisit"_s));
        QVERIFY(MessageBox::shownTexts().isEmpty());
        const QList<QVariantList> rows = f.db().rows(
            u"SELECT \"User ID\", \"Kart ID\", \"Adi\", \"Soyadi\", \"TCKimlik\", \"Plaka\", \"Ziyaret Sebebi\", "
            u"\"Grup No\", \"ID\", \"Tarih\", \"Saat\" FROM \"Visitors\""_s);
        QCOMPARE(rows.size(), 1);
        const QVariantList& v = rows.first();
        QStringList fields;
        for (const QVariant& field : v.mid(0, 9))
            fields << field.toString();
        // The card's number comes from its Users row.
        QCOMPARE(fields,
                 (QStringList{ u"901"_s, u"55901"_s, u"Ayşe"_s, u"Çelik"_s, u"12345678901"_s, u"34 ABC 12"_s,
                               u"Toplantı 'bütçe'"_s, u"3"_s, u"5"_s }));
        QCOMPARE(Database::dateTime(v.at(9)).date(), f.sim().now().date());
        QCOMPARE(Database::dateTime(v.at(10)).time(), QTime(14, 30));

        auto* list = f.find<QTableWidget>(u"grdVisitors"_s);
        QCOMPARE(list->item(0, 3)->text(), u"Ayşe"_s);
        QVERIFY(f.find<QLineEdit>(u"txtVisitorName"_s)->text().isEmpty());

        // Another day's list does not show it.
        f.find<QDateEdit>(u"dtpVisitList"_s)->setDate(f.sim().now().date().addDays(1));
        QCOMPARE(list->rowCount(), 0);
        f.find<QDateEdit>(u"dtpVisitList"_s)->setDate(f.sim().now().date());
        list->setCurrentCell(0, 0);

        f.sim().session().logInAsOperator(u"ayse"_s);
        MessageBox::setNextAnswer(QMessageBox::Yes);
        QVERIFY(f.click(u"cmdDeleteVisitor"_s));
        QCOMPARE(MessageBox::lastShownText(), u"Yetki hatası, Yönetici şifresi gerekli!"_s);
        QCOMPARE(visitCount(f.db()), 1);

        f.sim().session().logInAsAdministrator(u"admin"_s);
        QVERIFY(f.click(u"cmdDeleteVisitor"_s)); // No to the question keeps it
        QCOMPARE(visitCount(f.db()), 1);
        MessageBox::setNextAnswer(QMessageBox::Yes);
        QVERIFY(f.click(u"cmdDeleteVisitor"_s));
        QCOMPARE(visitCount(f.db()), 0);
        QCOMPARE(list->rowCount(), 0);
    }

    void aVisitTakesTheTimeOfItsSave()
    {
        StationWindow f;
        addUser(f.db(), 900, 55900, 1, u"Ziyaretçi"_s);
        QVERIFY(f.open());
        const auto storedMoments = [&f] {
            QList<QDateTime> moments;
            for (const QVariantList& row :
                 f.db().rows(u"SELECT \"Tarih\", \"Saat\" FROM \"Visitors\" ORDER BY \"Kayit No\""_s))
                moments << QDateTime(Database::dateTime(row.at(0)).date(), Database::dateTime(row.at(1)).time());
            return moments;
        };

        // Left open past midnight: the visit is registered when it is saved, not when the page opened.
        f.sim().clock().advanceSecs(15 * 3600 + 7);
        const QDateTime firstSave = f.sim().now();
        f.find<QLineEdit>(u"txtVisitorName"_s)->setText(u"Ayşe"_s);
        QVERIFY(f.click(u"cmdRegisterVisit"_s));
        // The fields now show the save's moment; the next save, later again, takes its own.
        QCOMPARE(f.find<QDateEdit>(u"dtpVisitDate"_s)->date(), firstSave.date());
        f.sim().clock().advanceSecs(125);
        const QDateTime secondSave = f.sim().now();
        f.find<QLineEdit>(u"txtVisitorName"_s)->setText(u"Ali"_s);
        QVERIFY(f.click(u"cmdRegisterVisit"_s));
        QCOMPARE(storedMoments(), (QList<QDateTime>{ firstSave, secondSave }));
    }
};

QTEST_MAIN(VisitorsPageTest)
#include "tst_VisitorsPage.moc"
