#include "operations/panels/PanelClockOperations.h"
#include "operations/panels/PanelModel.h"
#include "operations/panels/PanelSettingsOperations.h"
#include "operations/panels/PanelSettingsRepository.h"
#include "operations/panels/RepeatBlockTime.h"
#include "operations/panels/UhfReaderOperations.h"
#include "operations/panels/ZoneCounterOperations.h"
#include "protocol/PanelSettingsFrame.h"
#include "support/FaultOf.h"
#include "support/ReadyStation.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString kSaveQuestion = u"Değişiklikleri Kaydetmek İstiyor musunuz?"_s;
const QString kSendQuestion = u"Panele yeni ayarları göndermek istiyor musunuz?"_s;
const QString kFailed = u"Hata, İşlem tamamlanamadı!"_s;

PanelSlot stored(StationFixture& f, qint32 order)
{
    return PanelSettingsRepository(f.db()).slot(order).value_or(PanelSlot());
}

PanelSettingsInput inputOf(StationFixture& f, qint32 order)
{
    return PanelSettingsInput::fromSlot(stored(f, order));
}

QByteArray simRecord(SimPanel* panel)
{
    QByteArray record;
    panel->inspect([&](const SimPanelState& s) { record = s.settings.record; });
    return record;
}

} // namespace

// The panel settings against simulated panels: save, send, remove, clocks, zone counters and UHF
// readers, each with its question, the rights check and the station's messages.
class PanelSettingsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void checkRefusesIdentityAndCorrectsTheRest();
    void modelChoiceBringsItsRules();
    void saveStoresOnlyWhatWasAllowedAndRemoveKeepsAFreeSlot_data() { TestDatabases::addEngineRows(); }
    void saveStoresOnlyWhatWasAllowedAndRemoveKeepsAFreeSlot();
    void sendSavesFirstThenAsksAndSaysWhyItFailed();
    void zoneCountersAndUhfReadersCheckRangesAndRights();
    void clockReadKeepsTheOffsetAndSetBringsAllInLine_data() { TestDatabases::addEngineRows(); }
    void clockReadKeepsTheOffsetAndSetBringsAllInLine();
};

void PanelSettingsTest::checkRefusesIdentityAndCorrectsTheRest()
{
    PanelSlot base;
    base.settings.sameTagBlockMinSec = RepeatBlockTime{ 5, RepeatBlockTime::Minutes }.packed();
    PanelSettingsInput in = PanelSettingsInput::fromSlot(base);
    in.panelNumber = u"7"_s;
    in.serial = u"A"_s;
    PanelSlot out;

    // One number and one serial per way of being wrong.
    const QList<std::pair<QString, QString>> wrongs
        = { { u"0"_s, u"A"_s },    { u"65"_s, u"A"_s },    { u"x1"_s, u"A"_s },  { u"7"_s, u""_s },
            { u"7"_s, u"0000"_s }, { u"7"_s, u"12345"_s }, { u"7"_s, u"12G4"_s } };
    for (const auto& [number, serial] : wrongs) {
        PanelSettingsInput wrong = in;
        wrong.panelNumber = number;
        wrong.serial = serial;
        QCOMPARE(wrong.check(&out).turkish(),
                 number == u"7"_s ? u"Lütfen Panel Seri Numarasını Giriniz (4 haneli)"_s
                                  : u"Lütfen Panel No'sunu giriniz (1-64 arası)"_s);
    }
    in.serial = u" 00a1 "_s;

    // Out-of-range numbers are put right without a word.
    in.masterRelayTimes = { u"45"_s, u"30"_s, u"0"_s, u"abc"_s };
    in.globalZones = { u"65"_s, u"64"_s };
    in.capacity = u"0"_s;
    in.blockTime = u"61"_s;
    in.detectorTime = u"10"_s;
    QVERIFY(in.check(&out).isEmpty());
    const PanelSettingsRecord& s = out.settings;
    QCOMPARE(
        std::tuple(out.panelNumber, out.serial, s.globalZone1, s.globalZone2, s.localCapacityValue, s.loopTriggerTime),
        std::tuple(7, quint16(0xA1), 1, 64, 9999, 1));
    QCOMPARE(s.masterRelayTimes, (std::array<qint32, 4>{ 1, 30, 1, 1 }));
    QCOMPARE(RepeatBlockTime::unpack(out.settings.sameTagBlockMinSec),
             (RepeatBlockTime{ 0, RepeatBlockTime::Minutes }));
}

void PanelSettingsTest::modelChoiceBringsItsRules()
{
    PanelSettingsRecord s;
    s.sameTagBlockMinSec = RepeatBlockTime{ 30, RepeatBlockTime::Minutes }.packed();
    s.doors[0].readerModel = 2;
    s.doors[0].accessMode = 3;
    s.buttonLoop = 1;

    // A UHF panel needs the block over the whole panel: raised to 2, time 1, the unit kept.
    PanelModel::byCode(1).applyTo(s);
    QCOMPARE(std::tuple(s.model, s.sameTagBlock, s.doors[0].readerModel, s.buttonLoop), std::tuple(1, 2, 2, 1));
    QCOMPARE(RepeatBlockTime::unpack(s.sameTagBlockMinSec), (RepeatBlockTime{ 1, RepeatBlockTime::Minutes }));

    // A door panel has no UHF readers and no detectors; the door falls back to a standard reader
    // and to a mode a standard reader offers.
    PanelModel::byCode(0).applyTo(s);
    QCOMPARE(std::tuple(s.doors[0].readerModel, s.doors[0].accessMode, s.buttonLoop), std::tuple(0, 0, 0));

    // A turnstile panel drives master relays only.
    s.doors[1].relayNo = 0;
    PanelModel::byCode(2).applyTo(s);
    for (const PanelSettingsRecord::Door& door : s.doors)
        QCOMPARE(door.relayChoice, 3);
    QCOMPARE(s.doors[1].relayNo, 1);
    QCOMPARE(PanelModel::byCode(42).code, 0);
}

void PanelSettingsTest::saveStoresOnlyWhatWasAllowedAndRemoveKeepsAFreeSlot()
{
    KX_READY_STATION_ON_ENGINE(f);
    QVERIFY(f.addPanel(1));
    QVERIFY(f.addPanel(2));
    const qint32 order = f.roster().entryForPanel(1)->order;
    // Columns the window leaves alone, and an access group row of the panel.
    QVERIFY(f.db().exec(u"UPDATE \"PanelSettings\" SET \"Global APB Grup\" = 12, \"Panel Local Capacity Clear\" = 1 "
                        u"WHERE \"Panel ID\" = ?"_s,
                        { 1 }));
    QVERIFY(f.db().insert(u"GroupsDetail"_s, { u"Grup No"_s, u"Panel No"_s, u"Seri No"_s }, { 3, 1, 0x1001 }));
    const PanelSlot before = stored(f, order);
    PanelSettingsOperations panels(f.context());

    PanelSettingsInput in = inputOf(f, order);
    in.serial = u"a1"_s;
    in.values.settings.name = u"Otopark Girişi"_s;
    in.values.settings.localCapacityClear = 0;
    in.values.settings.doors[2].doorType = 1;
    in.values.doorNames[2] = u"Bariyer"_s;

    // Without rights nothing is asked or stored.
    f.session().logOut();
    QCOMPARE(panels.save(order, in).outcome, WalkResult::Outcome::NoRights);
    QVERIFY(f.op().questions().isEmpty());
    f.session().logInAsAdministrator(u"admin"_s);

    f.op().no();
    QCOMPARE(panels.save(order, in).outcome, WalkResult::Outcome::Declined);
    QCOMPARE(f.op().questions(), QStringList{ kSaveQuestion });

    // A number another panel has (the checks of the fields themselves are the input's own test).
    PanelSettingsInput wrong = in;
    wrong.panelNumber = u"2"_s;
    f.op().yes();
    QCOMPARE(panels.save(order, wrong).outcome, WalkResult::Outcome::Refused);
    QCOMPARE(f.op().lastTold(), u"2 nolu panel sistemde zaten tanımlı."_s);
    QCOMPARE(stored(f, order), before);

    f.op().clearRecords();
    f.op().yes();
    PanelSlot saved;
    QVERIFY(panels.save(order, in, &saved).succeeded());
    QVERIFY(f.op().told().isEmpty());
    const PanelSlot after = stored(f, order);
    QCOMPARE(std::tuple(after.serial, after.settings.name, after.settings.doors[2].doorType, after.doorNames[2],
                        after.settings.globalApbGroup, after.settings.localCapacityClear),
             std::tuple(quint16(0xA1), u"Otopark Girişi"_s, 1, u"Bariyer"_s, 12, 1));
    QCOMPARE(saved.serial, after.serial);
    // The serial follows into the panel's access group rows, and the lists read the new row.
    QCOMPARE(f.db().scalar(u"SELECT \"Seri No\" FROM \"GroupsDetail\" WHERE \"Panel No\" = ?"_s, { 1 }).toInt(), 0xA1);
    QCOMPARE(f.roster().entryForPanel(1)->name, u"Otopark Girişi"_s);

    // Removing keeps the row as a free slot, and the panel's access group rows.
    f.op().clearRecords();
    f.op().no();
    QCOMPARE(panels.remove(order).outcome, WalkResult::Outcome::Declined);
    QCOMPARE(f.op().questions(), QStringList{ u"1 nolu paneli sistemden kaldırmak istiyor musunuz?"_s });

    f.op().yes();
    QVERIFY(panels.remove(order).succeeded());
    const PanelSlot slot = stored(f, order);
    QVERIFY(!slot.inUse());
    QCOMPARE(slot.panelNumber, 0);
    QCOMPARE(slot.settings.ip, (std::array<qint32, 4>{}));
    QCOMPARE(slot.doorNames[3], u"Kapi 4"_s);
    QCOMPARE(f.roster().count(), 2);
    QVERIFY(!f.roster().entry(1)->isEligible());
    QCOMPARE(f.db().scalar(u"SELECT COUNT(*) FROM \"GroupsDetail\" WHERE \"Panel No\" = ?"_s, { 1 }).toInt(), 1);

    // A new panel takes the free slot first, then new rows up to 64.
    QCOMPARE(panels.newSlot(), order);
    for (int n = 3; n <= 64; ++n)
        f.addRow(n, 0x1000 + n, u"127.0.0.1"_s, 1);
    QCOMPARE(panels.newSlot(), order);
    f.op().yes();
    in = inputOf(f, order);
    in.panelNumber = u"1"_s;
    in.serial = u"1"_s;
    QVERIFY(panels.save(order, in).succeeded());
    f.op().clearRecords();
    QCOMPARE(panels.newSlot(), 0);
    QCOMPARE(f.op().lastTold(), u"Boş panel yeri kalmadı (en fazla 64 panel)."_s);
}

void PanelSettingsTest::sendSavesFirstThenAsksAndSaysWhyItFailed()
{
    KX_READY_STATION(f);
    SimPanel* panel = f.addPanel(1);
    const qint32 order = f.roster().entryForPanel(1)->order;
    PanelSettingsOperations panels(f.context());
    PanelSettingsInput in = inputOf(f, order);
    in.values.settings.name = u"Kapı Paneli"_s;
    in.values.settings.ip = { 127, 0, 0, 1 };
    in.values.settings.tcpPort = panel->port();

    // No to the send: stored, not sent.
    f.op().yes().no();
    QCOMPARE(panels.send(order, in, false).outcome, WalkResult::Outcome::Declined);
    QCOMPARE(f.op().questions(), (QStringList{ kSaveQuestion, kSendQuestion }));
    QCOMPARE(stored(f, order).settings.name, u"Kapı Paneli"_s);
    QCOMPARE(panel->requestCount("DS"), 0);

    // The record the panel keeps is the one stored; a new number renames the panel.
    in.panelNumber = u"9"_s;
    in.values.settings.sameTagBlock = 1;
    in.values.settings.sameTagBlockMinSec = RepeatBlockTime{ 0, RepeatBlockTime::Minutes }.packed();
    in.blockTime = u"2"_s;
    f.op().clearRecords();
    f.op().yes(2);
    QVERIFY(panels.send(order, in, false).succeeded());
    QCOMPARE(f.op().told(), QStringList{ u"Ayarlar gönderildi."_s });
    const PanelSlot sent = stored(f, order);
    QCOMPARE(simRecord(panel), PanelSettingsFrame::buildRecord(sent.settings));
    QCOMPARE(f.sim().panel(9), panel);

    // A refused save stops the send before its question.
    in.serial = u"0"_s;
    f.op().clearRecords();
    f.op().yes();
    QCOMPARE(panels.send(order, in, false).outcome, WalkResult::Outcome::Refused);
    QCOMPARE(f.op().questions(), QStringList{ kSaveQuestion });
    QCOMPARE(panel->requestCount("DS"), 1);

    // A panel out of reach is the walk's own test.
    const QList<std::pair<SimFault::Mode, QString>> failures
        = { { SimFault::Mode::Refuse, u"Ayarlar gönderilemedi. (Hata oluştu)"_s },
            { SimFault::Mode::Drop, u"Ayarlar gönderilemedi. (Zaman aşımı)"_s } };
    for (const auto& [mode, message] : failures) {
        panel->setFault(faultOf(mode, "DS", 1));
        f.op().yes(2);
        QCOMPARE(panels.send(order, inputOf(f, order), false).panelsFailed, 1);
        QCOMPARE(f.op().lastTold(), message);
    }

    // Broadcast: the datagram is not awaited, the panel takes it when it comes.
    in = inputOf(f, order);
    in.values.settings.name = u"UDP"_s;
    f.op().yes(2);
    QVERIFY(panels.send(order, in, true).succeeded());
    QCOMPARE(f.op().lastTold(), u"Ayarlar gönderildi."_s);
    QTRY_COMPARE(simRecord(panel).mid(58, 16), QByteArray("UDP").leftJustified(16, ' '));
    QVERIFY(!f.link().isConnected());
}

void PanelSettingsTest::zoneCountersAndUhfReadersCheckRangesAndRights()
{
    KX_READY_STATION(f);
    SimPanel* panel = f.addPanel(4);
    panel->modify([](SimPanelState& s) { s.zoneCounters = { 17, 3 }; });
    ZoneCounterOperations counters(f.context());
    const auto zoneCount = [panel](int zone) {
        int count = -1;
        panel->inspect([&](const SimPanelState& s) { count = s.zoneCounters[zone - 1]; });
        return count;
    };

    QCOMPARE(counters.read(0).outcome, WalkResult::Outcome::Refused);
    QCOMPARE(f.op().lastTold(), u"Bir Lokal Bölge seçiniz"_s);
    QString count;
    QVERIFY(counters.read(1, &count).succeeded());
    QCOMPARE(count, u"17"_s);

    // A count must stay below the capacity; asked before it is checked.
    f.op().yes();
    QCOMPARE(counters.write(2, u"100"_s, u"100"_s).outcome, WalkResult::Outcome::Refused);
    QCOMPARE(f.op().questions(), QStringList{ u"Mevcut araç/kullanıcı sayısını düzeltmek istiyor musunuz?"_s });
    QCOMPARE(f.op().lastTold(), u"Lütfen geçerli ve Araç Kapasitesi'nden daha küçük bir sayı giriniz"_s);
    f.op().yes();
    QVERIFY(counters.write(2, u"99"_s, u"100"_s).succeeded());
    QCOMPARE(zoneCount(2), 99);

    f.op().clearRecords();
    f.op().yes();
    QVERIFY(counters.clear(1).succeeded());
    QCOMPARE(f.op().questions(), QStringList{ u"Mevcut araç/kullanıcı sayısını silmek istiyor musunuz?"_s });
    QCOMPARE(zoneCount(1), 0);
    QVERIFY(f.op().told().isEmpty());

    f.session().logOut();
    QCOMPARE(counters.clear(1).outcome, WalkResult::Outcome::NoRights);
    f.session().logInAsAdministrator(u"admin"_s);
    panel->setFault(faultOf(SimFault::Mode::Drop, "GR", 1));
    QCOMPARE(counters.read(2).panelsFailed, 1);
    QCOMPARE(f.op().lastTold(), kFailed);

    f.op().clearRecords();
    UhfReaderOperations readers(f.context());
    const auto reader = [panel](int number) {
        SimPanelState::Reader r;
        panel->inspect([&](const SimPanelState& s) { r = s.readers[number - 1]; });
        return r;
    };

    // The range is checked before the question.
    for (const QString& power : { u"14"_s, u"31"_s }) {
        QCOMPARE(readers.setPower(2, power).outcome, WalkResult::Outcome::Refused);
        QCOMPARE(f.op().lastTold(), u"UHF Okuyucu çıkış gücü 15 dBm - 30 dBm arasında seçilebilir"_s);
    }
    QVERIFY(f.op().questions().isEmpty());
    f.op().yes();
    QVERIFY(readers.setPower(2, u"15"_s).succeeded());
    QCOMPARE(f.op().questions(), QStringList{ u"Çıkış gücünün değiştirilmesini onaylıyor musunuz?"_s });
    QCOMPARE(reader(2).power, 15);
    qint32 power = 0;
    QVERIFY(readers.readPower(2, &power).succeeded());
    QCOMPARE(power, 15);

    f.op().clearRecords();
    f.op().yes();
    QVERIFY(readers.setBuzzerLed(3, false, true).succeeded());
    QCOMPARE(f.op().questions(),
             QStringList{ u"4 nolu panele bağlı 3 nolu UHF okuyucunun Buzzer ve Led ayarlarını değiştirmek istiyor "
                          u"musunuz?"_s });
    bool buzzer = true;
    bool led = false;
    QVERIFY(readers.readBuzzerLed(3, &buzzer, &led).succeeded());
    QVERIFY(!buzzer && led);

    f.session().logOut();
    QCOMPARE(readers.setBuzzerLed(3, true, true).outcome, WalkResult::Outcome::NoRights);
    QCOMPARE(readers.setPower(3, u"20"_s).outcome, WalkResult::Outcome::NoRights);
    panel->setFault(faultOf(SimFault::Mode::Refuse, "LR", 1));
    QCOMPARE(readers.readBuzzerLed(3).panelsFailed, 1);
    QCOMPARE(f.op().lastTold(), kFailed);
}

void PanelSettingsTest::clockReadKeepsTheOffsetAndSetBringsAllInLine()
{
    KX_READY_STATION_ON_ENGINE(f);
    SimPanel* p1 = f.addPanel(1);
    SimPanel* p2 = f.addPanel(2);
    p1->modify([&](SimPanelState& s) { s.setClock(f.now().addSecs(3600)); });
    p2->modify([&](SimPanelState& s) { s.setClock(f.now().addSecs(-7200)); });
    PanelClockOperations clocks(f.context());

    QList<PanelClockOperations::Reading> readings;
    QVERIFY(clocks.read(PanelTarget::Selected, &readings).succeeded());
    QVERIFY(f.op().questions().isEmpty() && f.op().told().isEmpty());
    QVERIFY2(readings.first().clock.text.startsWith(u"31/01/2016 10:0"_s), qPrintable(readings.first().clock.text));
    // The panel's clock runs on while the test does: a minute is plenty.
    QVERIFY(readings.first().offset && *readings.first().offset >= 3600 && *readings.first().offset < 3660);
    QCOMPARE(stored(f, f.roster().entryForPanel(1)->order).clockOffset, readings.first().offset);
    QVERIFY(!f.roster().entryForPanel(2)->clockOffset);

    readings.clear();
    QVERIFY(clocks.read(PanelTarget::All, &readings).succeeded());
    QVERIFY(*f.roster().entryForPanel(2)->clockOffset <= -7140);

    // One walk sets every panel; no rights are needed, the question is asked once.
    f.session().logOut();
    f.op().clearRecords();
    f.op().yes();
    QVERIFY(clocks.set(PanelTarget::All).succeeded());
    QCOMPARE(f.op().questions(), QStringList{ u"PC saatini panele göndermek istediğinizden emin misiniz?"_s });
    for (SimPanel* panel : { p1, p2 }) {
        QDateTime now;
        panel->inspect([&](const SimPanelState& s) { now = s.now(); });
        QVERIFY(qAbs(f.now().secsTo(now)) < 60);
    }
    QCOMPARE(f.roster().entryForPanel(2)->clockOffset, std::optional<qint32>(0));
}

QTEST_GUILESS_MAIN(PanelSettingsTest)
#include "tst_PanelSettings.moc"
