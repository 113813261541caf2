// The door tab by name: the door operation with its refusals, on the selected panel and on all
// panels, and the manual passage for the selected user or visitor, stored as a passage record.

#include "operations/users/VisitorRepository.h"
#include "support/StationWindow.h"
#include "ui/common/LabelStatusOperator.h"
#include "ui/common/MessageBox.h"
#include "ui/users/UsersPage.h"
#include "ui/users/VisitorsPage.h"

#include <QDateEdit>
#include <QLabel>
#include <QListWidget>
#include <QRadioButton>
#include <QTableWidget>

using namespace Qt::StringLiterals;

class DoorsPageTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        MessageBox::clearShownTexts();
        MessageBox::setDefaultAnswer(QMessageBox::No);
    }

    void doorProcessNeedsAnOperationAndADoor()
    {
        StationWindow f;
        SimPanel* p1 = f.sim().addPanel(1);
        SimPanel* p2 = f.sim().addPanel(2);
        QVERIFY(f.open());
        f.find<QTableWidget>(u"FlexPanelGate"_s)->setCurrentCell(1, 0);

        // The refusals of what is missing are the door operations' own tests.
        f.find<QRadioButton>(u"opsDoorProcess0"_s)->setChecked(true);
        MessageBox::setDefaultAnswer(QMessageBox::Yes);

        auto* list = f.find<QListWidget>(u"lstProcess"_s);
        list->item(0)->setCheckState(Qt::Checked);
        MessageBox::clearShownTexts();
        QVERIFY(f.click(u"cmdDoorProcess"_s));
        QVERIFY(f.waitIdle());
        QCOMPARE(
            MessageBox::shownTexts(),
            (QStringList{ u"Kapı işlemini gerçekleştirmek istiyor musunuz?"_s, u"İşlem başarı ile tamamlandı!"_s }));
        QCOMPARE(p2->requestCount("DT"), 1);
        QCOMPARE(p1->requestCount("DT"), 0);

        // Hold open on every panel.
        f.find<QRadioButton>(u"opsDoorProcess1"_s)->setChecked(true);
        f.find<QRadioButton>(u"opsPanelK1"_s)->setChecked(true);
        QVERIFY(f.click(u"cmdDoorProcess"_s));
        QVERIFY(f.waitIdle());
        QCOMPARE(p1->requestCount("FO"), 1);
        QCOMPARE(p2->requestCount("FO"), 1);
    }

    void manualPassageIsStoredForTheSelectedPerson()
    {
        StationWindow f;
        QVERIFY(f.sim().addPanel(1));
        const qint64 user = f.sim().addUser(7, 7007);
        f.db().insert(u"Users"_s, { u"ID"_s, u"Kart ID"_s, u"Kullanici Tipi"_s }, { 900, 55900, 1 });
        VisitRow yesterday;
        yesterday.cardUserId = 900;
        yesterday.name = u"Ayşe"_s;
        yesterday.date = f.sim().now().date().addDays(-1);
        yesterday.time = QTime(9, 0);
        QVERIFY(VisitorRepository(f.db()).registerVisit(yesterday));
        QVERIFY(f.open());
        QVERIFY(f.pages().usersPage()->selectRecordNo(user));

        f.find<QRadioButton>(u"opsGate1"_s)->setChecked(true);
        MessageBox::setNextAnswer(QMessageBox::Yes);
        QVERIFY(f.click(u"cmdManualAccess"_s));
        QVERIFY(f.waitIdle());
        QCOMPARE(MessageBox::lastShownText(), u"İşlem başarı ile tamamlandı!"_s);
        const QList<QVariantList> rows = f.db().rows(
            u"SELECT \"Panel ID\", \"Kapi ID\", \"ID\", \"Kart ID\", \"Kod\", \"Kullanici Tipi\" FROM \"AccessDatas\""_s);
        QCOMPARE(rows, QList<QVariantList>{ (QVariantList{ 1, 2, 7, 7007, 1, 0 }) });
        QVERIFY(LabelStatusOperator::turkishText(f.find<QLabel>(u"lblProcessManuel"_s)).startsWith(u"Panel 1 : "_s));

        // A visitor registered for another day may not pass.
        auto* visits = f.find<QTableWidget>(u"grdVisitors"_s);
        f.pages().visitorsPage()->findChild<QDateEdit*>(u"dtpVisitList"_s)->setDate(yesterday.date);
        visits->setCurrentCell(0, 0);
        f.find<QRadioButton>(u"opsManualPerson1"_s)->setChecked(true);
        MessageBox::setNextAnswer(QMessageBox::Yes);
        QVERIFY(f.click(u"cmdManualAccess"_s));
        QVERIFY(f.waitIdle());
        QCOMPARE(MessageBox::lastShownText(), u"Bu ziyaretçi bugün geçiş yapamaz. Lütfen tarihi düzeltiniz."_s);
        QCOMPARE(f.db().scalar(u"SELECT COUNT(*) FROM \"AccessDatas\""_s).toInt(), 1);
    }
};

QTEST_MAIN(DoorsPageTest)
#include "tst_DoorsPage.moc"
