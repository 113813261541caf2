#include "ui/main/frmStart.h"

#include "store/Translate.h"
#include "ui/common/Caption.h"
#include "ui/common/FileDialog.h"
#include "ui/common/MessageBox.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QEvent>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

frmStart::frmStart(const StationSettings& settings, QWidget* parent)
    : QDialog(parent)
    , m_settings(settings)
{
    setObjectName(u"frmStart"_s);
    setCaption(this, u"Başlangıç Ayarları"_s);

    auto* frWorkingMode = new QGroupBox(this);
    frWorkingMode->setObjectName(u"frWorkingMode"_s);
    setCaption(frWorkingMode, u"Çalışma Modu"_s);
    m_mode = new QButtonGroup(this);
    m_mode->setObjectName(u"opsClientServer"_s);
    auto* modeLayout = new QVBoxLayout(frWorkingMode);
    for (int index = 0; index < 2; ++index) {
        auto* option = new QRadioButton(frWorkingMode);
        option->setObjectName(u"opsClientServer"_s + QString::number(index));
        m_mode->addButton(option, index);
        modeLayout->addWidget(option);
    }
    setCaption(m_mode->button(0), u"Client Mod"_s);
    setCaption(m_mode->button(1), u"Server Mod (Lokal Veritabanı)"_s);

    auto* lblDB = new QLabel(this);
    lblDB->setObjectName(u"lblDB"_s);
    setCaption(lblDB, u"Uzak Veritabanı"_s);
    // Kept editable so that a database server's address can be typed as well as a file chosen.
    m_remoteName = new QLineEdit(this);
    m_remoteName->setObjectName(u"lblRemoteDatabaseName"_s);
    m_remoteName->setMinimumWidth(320);
    auto* cmdDB = new QPushButton(this);
    cmdDB->setObjectName(u"cmdDB"_s);
    setCaption(cmdDB, u"Gözat..."_s);

    auto* lblWatchPanelList = new QLabel(this);
    lblWatchPanelList->setObjectName(u"lblWatchPanelList"_s);
    setCaption(lblWatchPanelList, u"İzlenecek Paneller"_s);
    m_panels = new QListWidget(this);
    m_panels->setObjectName(u"lstPanelList"_s);
    // 64 entries read best in columns.
    m_panels->setFlow(QListView::TopToBottom);
    m_panels->setWrapping(true);
    m_panels->setResizeMode(QListView::Adjust);
    m_panels->setUniformItemSizes(true);
    m_panels->setMinimumHeight(200);
    fillPanelList();

    auto* lblLanguage = new QLabel(this);
    lblLanguage->setObjectName(u"lblTLanguage"_s);
    setCaption(lblLanguage, u"Dil"_s);
    m_language = new QComboBox(this);
    m_language->setObjectName(u"cmbTLanguage"_s);
    m_language->addItems({ QString(), QString(), QString() });
    setCaption(m_language, 0, u"Türkçe"_s);
    setCaption(m_language, 1, u"English"_s);
    setCaption(m_language, 2, u"Arabic"_s);

    auto* cmdSaveOk = new QPushButton(this);
    cmdSaveOk->setObjectName(u"cmdSaveOk"_s);
    setCaption(cmdSaveOk, u"Kaydet"_s);
    cmdSaveOk->setDefault(true);
    auto* cmdCancel = new QPushButton(this);
    cmdCancel->setObjectName(u"cmdCancel"_s);
    setCaption(cmdCancel, u"İptal"_s);

    auto* grid = new QGridLayout;
    grid->addWidget(lblDB, 0, 0);
    grid->addWidget(m_remoteName, 0, 1);
    grid->addWidget(cmdDB, 0, 2);
    grid->addWidget(lblLanguage, 1, 0);
    grid->addWidget(m_language, 1, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdSaveOk);
    buttons->addWidget(cmdCancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(frWorkingMode);
    layout->addLayout(grid);
    layout->addWidget(lblWatchPanelList);
    layout->addWidget(m_panels, 1);
    layout->addLayout(buttons);

    // Show the record as it stands: a station that was never set up starts as a server.
    const bool server = m_settings.isServer() || !m_settings.isSetUp();
    m_mode->button(server ? 1 : 0)->setChecked(true);
    m_remoteName->setText(m_settings.remotePath);
    m_language->setCurrentIndex(qBound(0, int(m_settings.language), 2));

    // The database and the watched panels only mean something to a client.
    const QList<QWidget*> clientOnly{ m_remoteName, m_panels, cmdDB, lblWatchPanelList, lblDB };
    auto showMode = [this, clientOnly] {
        for (QWidget* widget : clientOnly)
            widget->setEnabled(m_mode->checkedId() == 0);
    };
    showMode();
    connect(m_mode, &QButtonGroup::idClicked, this, showMode);
    connect(cmdDB, &QPushButton::clicked, this, &frmStart::chooseDatabase);
    connect(cmdSaveOk, &QPushButton::clicked, this, &frmStart::save);
    connect(cmdCancel, &QPushButton::clicked, this, &frmStart::reject);
}

void frmStart::fillPanelList()
{
    const bool fresh = m_panels->count() == 0;
    for (int panel = 1; panel <= StationSettings::PanelCount; ++panel) {
        const QString text = Translate(u"Panel"_s) + u' ' + QString::number(panel);
        if (fresh) {
            auto* item = new QListWidgetItem(text, m_panels);
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
            item->setCheckState(m_settings.isWatched(panel) ? Qt::Checked : Qt::Unchecked);
        } else {
            m_panels->item(panel - 1)->setText(text);
        }
    }
}

void frmStart::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        fillPanelList();
    QDialog::changeEvent(event);
}

void frmStart::chooseDatabase()
{
    const QString name = FileDialog::getOpenFileName(this, Translate(u"Veritabanı Konumu"_s), QString(),
                                                     Translate(u"Veritabanı Dosyaları"_s) + u" (*.db)"_s);
    if (name.trimmed().isEmpty() || !QFileInfo(name).isFile()) {
        MessageBox::warning(this, Message(u"Geçersiz dosya adı!"_s));
        return;
    }
    m_remoteName->setText(QFileInfo(name).absoluteFilePath());
}

void frmStart::save()
{
    QList<int> watched;
    for (int row = 0; row < m_panels->count(); ++row) {
        if (m_panels->item(row)->checkState() == Qt::Checked)
            watched.append(row + 1);
    }
    StationSettings chosen = m_settings;
    const Message refusal
        = chosen.applyStartChoices(m_mode->checkedId() == 1, m_remoteName->text(), watched, m_language->currentIndex());
    if (!refusal.isEmpty()) {
        MessageBox::warning(this, refusal);
        return;
    }
    m_settings = chosen;
    accept();
}
