#include "ui/panels/PanelDoorsBox.h"

#include "operations/panels/PanelChoices.h"
#include "store/Translate.h"
#include "ui/common/Caption.h"
#include "ui/common/MessageBox.h"
#include "ui/panels/ChoiceButtons.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QTableWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

QLabel* label(const QString& name, const QString& caption, QWidget* parent)
{
    auto* l = new QLabel(parent);
    l->setObjectName(name);
    setCaption(l, caption);
    return l;
}

QList<PanelChoices::Choice> relayNumbers()
{
    return { { 1, u"1"_s }, { 2, u"2"_s }, { 3, u"3"_s }, { 4, u"4"_s } };
}

} // namespace

PanelDoorsBox::PanelDoorsBox(QWidget* parent)
    : QGroupBox(parent)
{
    setObjectName(u"frReaders"_s);
    setCaption(this, u"Kapılar"_s);
    m_grid = new QTableWidget(4, 3, this);
    m_grid->setObjectName(u"FlexReaders"_s);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->verticalHeader()->setVisible(false);
    m_grid->horizontalHeader()->setStretchLastSection(true);
    m_grid->setMaximumHeight(150);

    m_frame = new QGroupBox(this);
    m_frame->setObjectName(u"frReader"_s);
    setCaption(m_frame, u"Seçilen Kapıya İlişkin Ayarlar"_s);
    m_active = new QCheckBox(m_frame);
    m_active->setObjectName(u"chkReaderActive"_s);
    m_name = new QLineEdit(m_frame);
    m_name->setObjectName(u"txtReaderName"_s);
    m_name->setMaxLength(30);
    m_relayTime = new QLineEdit(m_frame);
    m_relayTime->setObjectName(u"txtRelayTime"_s);
    m_relayTime->setValidator(new QIntValidator(0, 99, m_relayTime));
    m_relayTime->setMaximumWidth(50);
    m_doorType = new ChoiceButtons(u"opsReaderDoorType"_s, PanelChoices::doorTypes(), 2, m_frame);
    m_accessMode = new ChoiceButtons(u"opsAccessMode"_s, PanelChoices::accessModes(0), 2, m_frame);
    m_readerModel = new ChoiceButtons(u"opsReaderModel"_s, PanelChoices::readerModels(), 1, m_frame);
    m_relayOption = new ChoiceButtons(u"opsRelayOption"_s, PanelChoices::relayChoices(), 1, m_frame);
    m_relayNo = new ChoiceButtons(u"opsRelayNo"_s, relayNumbers(), 4, m_frame);
    m_input = new ChoiceButtons(u"opsDoorButtonLoop"_s, PanelChoices::doorInputs(), 2, m_frame);
    m_localZone = new QComboBox(m_frame);
    m_localZone->setObjectName(u"cmbLocalGroup"_s);
    m_localZone->addItems({ u"1"_s, u"2"_s });

    auto* form = new QFormLayout(m_frame);
    form->addRow(label(u"lblReaderActive"_s, u"Kapı Aktif:"_s, m_frame), m_active);
    form->addRow(label(u"lblReaderName"_s, u"Kapı Adı:"_s, m_frame), m_name);
    form->addRow(label(u"lblRelayTime"_s, u"Kapı Röle Süresi:"_s, m_frame), m_relayTime);
    form->addRow(label(u"lblReaderDoorType"_s, u"Geçiş Tipi:"_s, m_frame), m_doorType);
    form->addRow(label(u"lblReaderModel"_s, u"Cihaz Modeli:"_s, m_frame), m_readerModel);
    form->addRow(label(u"lblAccessMode"_s, u"Geçiş Modu:"_s, m_frame), m_accessMode);
    form->addRow(label(u"lblRelayOption"_s, u"Röle Seçimi:"_s, m_frame), m_relayOption);
    form->addRow(label(u"lblRelayNo"_s, u"Master Röle:"_s, m_frame), m_relayNo);
    form->addRow(label(u"lblDoorButtonLoop"_s, u"Buton/Dedektör Girişi Seçimi:"_s, m_frame), m_input);
    form->addRow(label(u"lblLocalGroup"_s, u"Lokal Kapı Bölgesi:"_s, m_frame), m_localZone);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_grid);
    layout->addWidget(m_frame);

    connect(m_grid, &QTableWidget::currentCellChanged, this, [this](int row) {
        if (row >= 0 && row < 4 && row != m_current) {
            m_current = row;
            showDoor();
        }
    });
    connect(m_active, &QCheckBox::clicked, this, &PanelDoorsBox::takeDoor);
    connect(m_name, &QLineEdit::textEdited, this, &PanelDoorsBox::takeDoor);
    connect(m_relayTime, &QLineEdit::textEdited, this, &PanelDoorsBox::takeDoor);
    connect(m_doorType, &ChoiceButtons::chosen, this, &PanelDoorsBox::takeDoor);
    connect(m_accessMode, &ChoiceButtons::chosen, this, &PanelDoorsBox::takeDoor);
    connect(m_readerModel, &ChoiceButtons::chosen, this, [this](qint32 model) {
        // A UHF reader offers other access modes than a standard one.
        const QList<PanelChoices::Choice> modes = PanelChoices::accessModes(model);
        const qint32 mode = m_accessMode->value();
        m_accessMode->setChoices(modes);
        m_accessMode->setValue(PanelChoices::contains(modes, mode) ? mode : modes.first().code);
        takeDoor();
    });
    connect(m_relayOption, &ChoiceButtons::chosen, this, &PanelDoorsBox::relayOptionChosen);
    connect(m_relayNo, &ChoiceButtons::chosen, this, &PanelDoorsBox::takeDoor);
    connect(m_input, &ChoiceButtons::chosen, this, &PanelDoorsBox::takeDoor);
    connect(m_localZone, &QComboBox::activated, this, &PanelDoorsBox::takeDoor);
    retranslate();
}

void PanelDoorsBox::retranslate()
{
    m_grid->setHorizontalHeaderLabels({ Translate(u"ID"_s), Translate(u"Aktif"_s), Translate(u"Kapı Adı"_s) });
    for (int index = 0; index < 4; ++index)
        fillRow(index);
}

void PanelDoorsBox::load(const Doors& doors, const Names& names)
{
    m_doors = doors;
    m_names = names;
    for (int index = 0; index < 4; ++index)
        fillRow(index);
    showDoor();
}

void PanelDoorsBox::fillRow(int index)
{
    const auto item = [](const QString& text) {
        auto* i = new QTableWidgetItem(text);
        i->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
        return i;
    };
    m_grid->setItem(index, 0, item(QString::number(index + 1)));
    m_grid->setItem(index, 1, item(Translate(m_doors[index].active != 0 ? u"Evet"_s : u"Hayır"_s)));
    m_grid->setItem(index, 2, item(m_names[index]));
}

void PanelDoorsBox::selectDoor(int door)
{
    if (door >= 1 && door <= 4)
        m_grid->setCurrentCell(door - 1, 0);
}

void PanelDoorsBox::setModel(const PanelModel& model)
{
    m_model = model;
    showDoor();
}

qint32 PanelDoorsBox::localZone() const
{
    return m_localZone->currentIndex() >= 0 ? m_localZone->currentIndex() + 1 : 0;
}

void PanelDoorsBox::showDoor()
{
    m_showing = true;
    if (m_grid->currentRow() != m_current)
        m_grid->setCurrentCell(m_current, 0);
    const PanelSettingsRecord::Door& door = m_doors[m_current];
    m_active->setChecked(door.active != 0);
    m_name->setText(m_names[m_current]);
    m_relayTime->setText(QString::number(door.relayTime));
    m_relayTime->setEnabled(m_model.doorRelays);
    m_doorType->setValue(door.doorType);
    m_readerModel->setValue(door.readerModel);
    QList<qint32> readers;
    for (const PanelChoices::Choice& reader : PanelChoices::readerModels()) {
        if (m_model.allowsReaderModel(reader.code))
            readers << reader.code;
    }
    m_readerModel->enableCodes(readers);
    m_accessMode->setChoices(PanelChoices::accessModes(door.readerModel));
    m_accessMode->setValue(door.accessMode);
    m_relayOption->setValue(door.relayChoice);
    m_relayOption->enableCodes(m_model.doorRelays ? QList<qint32>{ 1, 2, 3 }
                                                  : QList<qint32>{ PanelChoices::RelayChoiceMasterOnly });
    m_relayNo->setValue(door.relayNo);
    m_input->setValue(door.buttonLoop);
    m_localZone->setCurrentIndex(door.localZone == 1 || door.localZone == 2 ? door.localZone - 1 : -1);
    m_showing = false;
}

void PanelDoorsBox::takeDoor()
{
    if (m_showing)
        return;
    PanelSettingsRecord::Door& door = m_doors[m_current];
    door.active = m_active->isChecked() ? 1 : 0;
    m_names[m_current] = m_name->text();
    door.relayTime = m_relayTime->text().toInt();
    door.doorType = qMax(0, m_doorType->value());
    door.readerModel = qMax(0, m_readerModel->value());
    door.accessMode = qMax(0, m_accessMode->value());
    door.relayChoice = qMax(1, m_relayOption->value());
    door.relayNo = qMax(0, m_relayNo->value());
    door.buttonLoop = qMax(0, m_input->value());
    door.localZone = localZone() > 0 ? localZone() : door.localZone;
    fillRow(m_current);
}

void PanelDoorsBox::relayOptionChosen(qint32 code)
{
    takeDoor();
    if (code == PanelChoices::RelayChoiceMasterOnly && (m_relayNo->value() < 1 || m_relayNo->value() > 4)) {
        MessageBox::warning(
            this, Message(u"Sadece Panel Master Röle seçimi yaptınız, 1-4 arası Master Röle seçmelisiniz!"_s));
    }
}
