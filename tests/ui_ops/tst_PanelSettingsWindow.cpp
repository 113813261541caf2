#include "ShippedLanguage.h"
#include "WindowDriver.h"
#include "operations/configuration/GroupRepository.h"
#include "operations/configuration/ZoneRepository.h"
#include "operations/panels/PanelSettingsRepository.h"
#include "store/Translator.h"
#include "support/StationWindow.h"
#include "ui/common/MessageBox.h"
#include "ui/main/LanguageSwitch.h"
#include "ui/panels/ChoiceButtons.h"
#include "ui/panels/PanelSettingsLauncher.h"
#include "ui/panels/frmPanelSettings.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTableWidget>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

void doubleClickRow(QTableWidget* grid, int row)
{
    grid->setCurrentCell(row, 0);
    Q_EMIT grid->cellDoubleClicked(row, 0);
}

template <typename T> T* in(QWidget* window, const QString& name)
{
    return WindowDriver::find<T>(window, name);
}

void setText(QWidget* window, const QString& name, const QString& text)
{
    auto* edit = in<QLineEdit>(window, name);
    edit->selectAll();
    edit->clear();
    WindowDriver::type(edit, text);
}

void clickOption(QWidget* window, const QString& name)
{
    auto* option = in<QRadioButton>(window, name);
    QVERIFY2(option && option->isEnabled(), qPrintable(name));
    option->click();
}

PanelSlot stored(StationWindow& f, qint32 panelNumber)
{
    return PanelSettingsRepository(f.db()).slotOfPanel(panelNumber).value_or(PanelSlot());
}

} // namespace

// The panel settings window driven by its control names, against a simulated panel.
class PanelSettingsWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        MessageBox::clearShownTexts();
        MessageBox::setDefaultAnswer(QMessageBox::Yes);
    }
    void cleanup() { MessageBox::setDefaultAnswer(QMessageBox::NoButton); }

    void doubleClickOpensThePanelAndSaveStoresIt()
    {
        StationWindow f;
        QVERIFY(f.sim().addPanel(1));
        QVERIFY(f.sim().addPanel(2));
        GroupMasterRow group;
        group.number = 1;
        group.name = u"Ofis"_s;
        QVERIFY(GroupRepository(f.db()).add(group).ok);
        QVERIFY(f.open());
        doubleClickRow(f.find<QTableWidget>(u"FlexPanel"_s), 0);
        QCOMPARE(f.pages().panelSettings()->windows().size(), 1);
        frmPanelSettings* w = f.pages().panelSettings()->windows().first();
        QCOMPARE(w->windowTitle(), u"Panel Ayarları - Panel 1 - 1001 - 127.0.0.1 | Panel No:1"_s);
        QCOMPARE(in<QLabel>(w, u"lblPCRTC"_s)->text(), u"31/01/2016 09:05:03"_s);

        // What was typed is stored (its checks are the operation's tests); door 3 made an exit
        // and renamed through the door frame.
        setText(w, u"txtPanelMAC"_s, u"00a1"_s);
        setText(w, u"txtRelay2Time"_s, u"45"_s);
        setText(w, u"txtPanelName"_s, u"Giriş Kapısı"_s);
        in<QTableWidget>(w, u"FlexReaders"_s)->setCurrentCell(2, 0);
        clickOption(w, u"opsReaderDoorType1"_s);
        setText(w, u"txtReaderName"_s, u"Bariyer"_s);
        in<QCheckBox>(w, u"chkReaderActive"_s)->setChecked(false);
        QVERIFY(WindowDriver::clickEnabled(w, u"cmdSaveSettings"_s));
        QVERIFY(f.waitIdle());
        const PanelSlot slot = stored(f, 1);
        QCOMPARE(slot.serial, quint16(0xA1));
        QCOMPARE(slot.settings.doors[2].doorType, 1);
        QCOMPARE(slot.doorNames[2], u"Bariyer"_s);
        // The window shows what was stored (the relay time put right); the main window's lists follow.
        QCOMPARE(in<QLineEdit>(w, u"txtRelay2Time"_s)->text(), u"1"_s);
        QCOMPARE(w->windowTitle(), u"Panel Ayarları - Giriş Kapısı - 00A1 - 127.0.0.1 | Panel No:1"_s);
        QTRY_COMPARE(f.find<QTableWidget>(u"FlexPanel"_s)->item(0, 2)->text(), u"Giriş Kapısı"_s);
        auto* doors = f.find<QTableWidget>(u"grdDoorList"_s);
        QCOMPARE(doors->item(2, 2)->text(), u"Bariyer"_s);
        QCOMPARE(doors->item(2, 3)->text(), u"Hayır"_s);
        // And the access groups page's rows of the panel.
        QAbstractItemModel* details = f.find<QTableView>(u"datGroupsDetail"_s)->model();
        QCOMPARE(details->index(0, 1).data().toString(), u"Giriş Kapısı"_s);
    }

    void modelEnablesOnlyWhatItHasAndZonesArePickedByName()
    {
        StationWindow f;
        QVERIFY(f.sim().addPanel(1));
        QVERIFY(ZoneRepository(f.db()).add({ 7, u"Otopark"_s }).ok);
        QVERIFY(f.open());
        frmPanelSettings* w = f.pages().panelSettings()->openPosition(1);
        // The picker lists the zones; the chosen one's number and name fill the panel's fields.
        WindowDriver::choosePickerRow(0);
        WindowDriver::click(w, u"cmdFindPG0"_s);
        QCOMPARE(in<QLineEdit>(w, u"txtGroupNo0"_s)->text(), u"7"_s);
        QCOMPARE(in<QLineEdit>(w, u"txtGroupAdi0"_s)->text(), u"Otopark"_s);

        clickOption(w, u"opsPanelModel0"_s);
        QVERIFY(!in<QGroupBox>(w, u"frUHF1"_s)->isEnabled());
        QVERIFY(!in<QRadioButton>(w, u"opsReaderModel1"_s)->isEnabled());

        // The UHF model: its frames, and the model's rules (the operation's tests) reach the controls.
        clickOption(w, u"opsPanelModel1"_s);
        QVERIFY(in<QGroupBox>(w, u"frUHF1"_s)->isEnabled());
        QCOMPARE(in<ChoiceButtons>(w, u"opsSameTagBlock"_s)->value(), 2);
        // A UHF reader offers its own access modes.
        clickOption(w, u"opsReaderModel1"_s);
        QCOMPARE(in<QRadioButton>(w, u"opsAccessMode1"_s)->text(), u"Kart veya Şifre"_s);

        // The turnstile model has no door relays.
        clickOption(w, u"opsPanelModel2"_s);
        QVERIFY(!in<QLineEdit>(w, u"txtRelayTime"_s)->isEnabled());

        // The window's own warnings.
        MessageBox::clearShownTexts();
        in<QCheckBox>(w, u"chkTemporaryGroupActive"_s)->click();
        QCOMPARE(MessageBox::lastShownText(),
                 u"Geçici grup özelliği aktifleştirilirse olay hafızası 40.000'den 30.000'e düşecektir."_s);
        clickOption(w, u"opsPanelModel0"_s);
        in<ChoiceButtons>(w, u"opsRelayNo"_s)->setValue(0);
        clickOption(w, u"opsRelayOption2"_s);
        QCOMPARE(MessageBox::lastShownText(),
                 u"Sadece Panel Master Röle seçimi yaptınız, 1-4 arası Master Röle seçmelisiniz!"_s);
    }

    void panelCommandsOfTheWindow()
    {
        StationWindow f;
        SimPanel* panel = f.sim().addPanel(1);
        panel->modify([](SimPanelState& s) {
            s.zoneCounters = { 7, 9 };
            s.readers[1].power = 22;
        });
        QVERIFY(f.open());
        frmPanelSettings* w = f.pages().panelSettings()->openPosition(1);

        QVERIFY(WindowDriver::clickEnabled(w, u"cmdReceiveRTC"_s));
        QVERIFY(f.waitIdle());
        QVERIFY(in<QLabel>(w, u"lblDeviceRTC"_s)->text().contains(u'/'));
        QTRY_VERIFY(!f.find<QTableWidget>(u"FlexPanel"_s)->item(0, 4)->text().isEmpty());

        in<QComboBox>(w, u"cmbLocalGroup"_s)->setCurrentIndex(1);
        setText(w, u"txtLocalCapacityValue"_s, u"100"_s);
        setText(w, u"txtCounter"_s, u"4"_s);
        QVERIFY(WindowDriver::clickEnabled(w, u"cmdWriteCounter"_s));
        QVERIFY(f.waitIdle());
        QCOMPARE(in<QLabel>(w, u"lblCounter"_s)->text(), u"4"_s);
        panel->inspect([](const SimPanelState& s) { QCOMPARE(s.zoneCounters[1], 4); });

        // The UHF frames are there for the UHF model only.
        QVERIFY(!in<QPushButton>(w, u"cmdGetUHFPower"_s)->isEnabled());
        clickOption(w, u"opsPanelModel1"_s);
        in<QTableWidget>(w, u"FlexReaders"_s)->setCurrentCell(1, 0);
        QVERIFY(WindowDriver::clickEnabled(w, u"cmdGetUHFPower"_s));
        QVERIFY(f.waitIdle());
        QCOMPARE(in<QLineEdit>(w, u"txtUHFPower"_s)->text(), u"22"_s);

        QVERIFY(WindowDriver::clickEnabled(w, u"cmdSend"_s));
        QVERIFY(f.waitIdle());
        QCOMPARE(panel->requestCount("DS"), 1);

        // Removing empties the window and the slot.
        QVERIFY(WindowDriver::clickEnabled(w, u"cmdClearPanel"_s));
        QVERIFY(f.waitIdle());
        QCOMPARE(in<QLineEdit>(w, u"txtPanelMAC"_s)->text(), QString());
        QVERIFY(!f.pages().roster().entry(1)->isEligible());
    }

    void newPanelIsAddedInTheWindow()
    {
        StationWindow f;
        SimPanel* panel = f.sim().addPanel(1);
        QVERIFY(f.open());
        QVERIFY(f.click(u"cmdNewPanel"_s));
        QVERIFY(f.waitIdle());
        QCOMPARE(f.pages().panelSettings()->windows().size(), 1);
        frmPanelSettings* w = f.pages().panelSettings()->windows().first();

        setText(w, u"txtPanelMAC"_s, u"2A"_s);
        setText(w, u"txtOldID"_s, u"5"_s);
        for (int i = 0; i < 4; ++i)
            setText(w, u"txtLocalIPAddress"_s + QString::number(i), i == 0 ? u"127"_s : i == 3 ? u"1"_s : u"0"_s);
        setText(w, u"txtLocalTCPPort"_s, QString::number(panel->port()));
        QVERIFY(WindowDriver::clickEnabled(w, u"cmdSaveSettings"_s));
        QVERIFY(f.waitIdle());
        QTRY_COMPARE(f.find<QTableWidget>(u"FlexPanel"_s)->rowCount(), 2);
        const auto entry = f.pages().roster().entryForPanel(5);
        QVERIFY(entry && entry->isEligible() && entry->serial == 0x2A);
    }

    void labelsFollowTheLanguage()
    {
        // The text table the station ships, so the window shows what an English or Arabic station shows.
        ShippedLanguage shipped;
        QVERIFY2(shipped.isReady(), qPrintable(shipped.error()));
        StationWindow f;
        QVERIFY(f.sim().addPanel(1));
        QVERIFY(f.open());
        frmPanelSettings* w = f.pages().panelSettings()->openPosition(1);
        ShippedLanguage::screenshot(w, u"frmPanelSettings-tr"_s);

        LanguageSwitch::apply(Translator::English);
        QCOMPARE(w->windowTitle(), u"Panel Settings - Panel 1 - 1001 - 127.0.0.1 | Panel No:1"_s);
        // A label and a check box take their captions again.
        QCOMPARE(in<QLabel>(w, u"lblPanelMAC"_s)->text(), u"Panel Serial No:"_s);
        QCOMPARE(in<QCheckBox>(w, u"chkUseUDP"_s)->text(), u"Send By UDP Protocol"_s);
        ShippedLanguage::screenshot(w, u"frmPanelSettings-en"_s);

        LanguageSwitch::apply(Translator::Arabic);
        QCOMPARE(w->layoutDirection(), Qt::RightToLeft);
        QCOMPARE(in<QLineEdit>(w, u"txtLocalIPAddress0"_s)->parentWidget()->layoutDirection(), Qt::LeftToRight);
        QVERIFY(w->windowTitle().startsWith(u"إعدادات اللوحة"_s));
        ShippedLanguage::screenshot(w, u"frmPanelSettings-ar"_s);
    }
};

QTEST_MAIN(PanelSettingsWindowTest)
#include "tst_PanelSettingsWindow.moc"
