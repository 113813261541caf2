#pragma once

#include "operations/panels/PanelModel.h"
#include "protocol/PanelSettingsRecord.h"

#include <QGroupBox>
#include <QString>
#include <array>

class ChoiceButtons;
class QCheckBox;
class QComboBox;
class QLineEdit;
class QTableWidget;

// The four doors of the settings window: the grid FlexReaders (one row per door: ID, Aktif, name)
// and the frame "Seçilen Kapıya İlişkin Ayarlar" with the chosen door's settings. Choosing a row
// shows that door; changing a control writes into that door at once.
class PanelDoorsBox : public QGroupBox
{
    Q_OBJECT

public:
    using Doors = std::array<PanelSettingsRecord::Door, 4>;
    using Names = std::array<QString, 4>;

    explicit PanelDoorsBox(QWidget* parent);

    void load(const Doors& doors, const Names& names);
    const Doors& doors() const { return m_doors; }
    const Names& names() const { return m_names; }
    // Enables what the panel model has (door relay times, UHF reader models, relay choices).
    void setModel(const PanelModel& model);
    // 1..4.
    int currentDoor() const { return m_current + 1; }
    void selectDoor(int door);
    // The local zone chosen in cmbLocalGroup, 0 when none is.
    qint32 localZone() const;
    void retranslate();

private:
    void showDoor();
    void fillRow(int index);
    // Takes the controls into the current door.
    void takeDoor();
    void relayOptionChosen(qint32 code);

    QTableWidget* m_grid = nullptr;
    QGroupBox* m_frame = nullptr;
    QCheckBox* m_active = nullptr;
    QLineEdit* m_name = nullptr;
    QLineEdit* m_relayTime = nullptr;
    ChoiceButtons* m_doorType = nullptr;
    ChoiceButtons* m_accessMode = nullptr;
    ChoiceButtons* m_readerModel = nullptr;
    ChoiceButtons* m_relayOption = nullptr;
    ChoiceButtons* m_relayNo = nullptr;
    ChoiceButtons* m_input = nullptr;
    QComboBox* m_localZone = nullptr;
    Doors m_doors{};
    Names m_names;
    PanelModel m_model = PanelModel::byCode(0);
    int m_current = 0;
    bool m_showing = false;
};
