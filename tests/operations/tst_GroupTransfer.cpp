// Access groups sent to and erased from simulated panels: the values fitted to what a panel takes,
// frame by frame, a panel that does not take one group, and the erase. That a sent group opens its
// doors is the simulator's round trip test.

#include "operations/configuration/GroupRepository.h"
#include "operations/configuration/GroupTransfer.h"
#include "operations/panels/PanelSendLog.h"
#include "support/ReadyStation.h"
#include "support/TableSendChecks.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// A group with its number and name, everything else as a new group has it.
GroupMasterRow master(int number, const QString& name)
{
    return { .number = number, .name = name };
}

} // namespace

class GroupTransferTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void valuesAreFittedToWhatThePanelTakes();
    void aGroupNotTakenAndTheEraseAreAskedAbout();
};

void GroupTransferTest::valuesAreFittedToWhatThePanelTakes()
{
    KX_READY_STATION(f);
    f.addPanel(1, 0x12AB);
    f.addPanel(2, 0x2A02);
    const GroupRepository groups(f.db());

    // The counts at their limits, but for an inside count zone beyond its own; the fitting itself
    // is the frame's test.
    GroupMasterRow group = master(9, u"Sınırda"_s);
    group.accessCount = 255;
    group.accessCountZone = 99;
    group.insideCount = 9999;
    group.insideCountZone = 101;
    group.dailyApprovalRequired = true;
    group.repeatedAccessBlockOff = true;
    group.clearInsideCountAtNight = true;
    GroupDetailRow doors = groups.freshDetails().at(0);
    doors.doors = { true, true, false, true };
    doors.doorTimeGroups = { 1, 16, 0, 2 };
    QVERIFY(groups.add(group, { doors }).ok);

    // A group whose row for panel 1 belongs to a removed panel is not sent there.
    QVERIFY(groups.add(master(20, u"Eski panel"_s)).ok);
    QVERIFY(f.db().exec(u"UPDATE \"GroupsDetail\" SET \"Seri No\" = 0 WHERE \"Grup No\" = 20 AND \"Panel No\" = 1"_s));

    QStringList frames; // as sent, without the carriage return
    f.setSendHook([&](const QByteArray& frame) { frames << QString::fromLatin1(frame).trimmed(); });
    f.op().yes();
    QVERIFY(GroupTransfer(f.context()).send(PanelTarget::Selected).succeeded());
    // Head, group, four door time groups, count and its zone, inside count and its zone, daily
    // approval, four doors, reserved, the other four switches.
    QCOMPARE(std::exchange(frames, {}),
             QStringList{ u"%TN12AB001"_s + u"0009"_s + u"001016000002"_s + u"255"_s + u"99"_s + u"9999"_s + u"01"_s
                          + u"1"_s + u"1101"_s + u"0000"_s + u"1010"_s + u"**"_s });

    // The other panel gets its own rows, group 20 with them.
    f.op().yes();
    QVERIFY(GroupTransfer(f.context()).send(PanelTarget::All).succeeded());
    QCOMPARE(frames.value(2), u"%TN2A020020020000000000000000010000010000000000000**"_s);
}

void GroupTransferTest::aGroupNotTakenAndTheEraseAreAskedAbout()
{
    KX_READY_STATION(f);
    SimPanel* panel = f.addPanel(1);
    const GroupRepository groups(f.db());
    for (const int number : { 1, 2, 3 })
        QVERIFY(groups.add(master(number, u"Grup"_s)).ok);
    GroupTransfer transfer(f.context());
    const auto send = [&](PanelTarget target) { return transfer.send(target); };
    TableSendChecks::refusedMemberIsAskedAbout(f, panel, &SimPanelState::groups, "TN",
                                               u"1 nolu grup ayarları gönderilemedi, Devam etmek istiyor musunuz?"_s,
                                               send);
    QCOMPARE(f.op().questions().first(), u"Grup ayarlarını tüm panellere göndermek istiyor musunuz?"_s);
    // A panel that missed a group is not noted as holding the groups; one that took them all is.
    QVERIFY(!PanelSendLog(f.db()).last(1, SentData::Groups));
    f.op().yes();
    QVERIFY(transfer.send(PanelTarget::Selected).succeeded());
    QCOMPARE(f.op().questions().last(), u"Grup ayarlarını seçilen panele göndermek istiyor musunuz?"_s);
    QVERIFY(PanelSendLog(f.db()).last(1, SentData::Groups));

    TableSendChecks::eraseAsksWithItsNote(f, panel, &SimPanelState::groups,
                                          u"Tüm geçiş grup hafızasını silmek istediğinizden emin misiniz?"_s,
                                          [&] { return transfer.erase(); });
}

QTEST_GUILESS_MAIN(GroupTransferTest)
#include "tst_GroupTransfer.moc"
