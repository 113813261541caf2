#include "ui/backup/frmBackup.h"

#include "operations/backup/BackupCheck.h"
#include "operations/backup/BackupList.h"
#include "operations/backup/BackupOperations.h"
#include "operations/panels/OperationContext.h"
#include "store/Translate.h"
#include "ui/common/Caption.h"
#include "ui/common/MessageBox.h"
#include "ui/main/PanelWorkerBridge.h"
#include "ui/main/frmMain.h"

#include <QDateEdit>
#include <QDebug>
#include <QDir>
#include <QEvent>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTableWidget>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

QPushButton* button(const QString& name, const QString& caption, QWidget* parent)
{
    auto* b = new QPushButton(parent);
    b->setObjectName(name);
    setCaption(b, caption);
    return b;
}

} // namespace

frmBackup::frmBackup(const QString& backupFolder, PanelWorkerBridge& bridge, QWidget* parent)
    : QDialog(parent)
    , m_folder(backupFolder)
    , m_bridge(bridge)
{
    setObjectName(u"frmBackup"_s);
    setCaption(this, u"Yedekleme ve Kayıt Silme"_s);

    m_list = new QTableWidget(0, 3, this);
    m_list->setObjectName(u"lstBackups"_s);
    m_list->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->verticalHeader()->hide();
    m_list->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_list->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_list->setWordWrap(false);

    m_backupNow = button(u"cmdBackupNow"_s, u"Şimdi Yedekle"_s, this);
    m_verify = button(u"cmdVerifyBackup"_s, u"Doğrula"_s, this);
    auto* refresh = button(u"cmdRefresh"_s, u"Yenile"_s, this);
    auto* beforeLabel = new QLabel(this);
    beforeLabel->setObjectName(u"lblDeleteBefore"_s);
    setCaption(beforeLabel, u"Bu tarihten önceki geçiş kayıtları"_s);
    m_before = new QDateEdit(this);
    m_before->setObjectName(u"dtDeleteBefore"_s);
    m_before->setDisplayFormat(u"dd/MM/yyyy"_s);
    m_before->setCalendarPopup(true);
    const QDate today = QDate::currentDate();
    m_before->setDate(QDate(today.year(), today.month(), 1));
    m_delete = button(u"cmdDeleteRecords"_s, u"Kayıtları Sil"_s, this);
    auto* close = button(u"cmdClose"_s, u"Kapat"_s, this);

    auto* layout = new QGridLayout(this);
    layout->addWidget(m_list, 0, 0, 1, 4);
    layout->addWidget(m_backupNow, 1, 0);
    layout->addWidget(m_verify, 1, 1);
    layout->addWidget(refresh, 1, 2);
    layout->addWidget(beforeLabel, 2, 0);
    layout->addWidget(m_before, 2, 1);
    layout->addWidget(m_delete, 2, 2);
    layout->addWidget(close, 3, 3);
    layout->setColumnStretch(3, 1);

    for (QPushButton* b : { m_backupNow, m_verify, m_delete })
        m_bridge.guard(b);
    connect(m_backupNow, &QPushButton::clicked, this, &frmBackup::backupNow);
    connect(m_verify, &QPushButton::clicked, this, &frmBackup::verifySelected);
    connect(m_delete, &QPushButton::clicked, this, &frmBackup::deleteRecords);
    connect(refresh, &QPushButton::clicked, this, &frmBackup::reload);
    connect(close, &QPushButton::clicked, this, &QDialog::close);

    retranslate();
    reload();
    resize(640, 420);
}

frmBackup* frmBackup::open(frmMain& window, PanelWorkerBridge& bridge)
{
    auto* form = window.findChild<frmBackup*>(u"frmBackup"_s, Qt::FindDirectChildrenOnly);
    if (!form) {
        form = new frmBackup(window.folder().backupFolder(), bridge, &window);
        form->setAttribute(Qt::WA_DeleteOnClose);
    }
    form->reload();
    form->show();
    form->raise();
    form->activateWindow();
    return form;
}

void frmBackup::reload()
{
    const QList<BackupList::Entry> entries = BackupList::in(m_folder);
    m_list->setRowCount(0);
    const QLocale locale;
    for (const BackupList::Entry& entry : entries) {
        const int row = m_list->rowCount();
        m_list->insertRow(row);
        auto* name = new QTableWidgetItem(entry.fileName);
        name->setData(Qt::UserRole, entry.path);
        m_list->setItem(row, 0, name);
        m_list->setItem(row, 1, new QTableWidgetItem(entry.modified.toString(u"dd/MM/yyyy HH:mm:ss"_s)));
        m_list->setItem(row, 2, new QTableWidgetItem(locale.formattedDataSize(entry.bytes)));
    }
    if (m_list->rowCount() > 0)
        m_list->selectRow(0);
}

bool frmBackup::backupNow()
{
    const QString folder = m_folder;
    return m_bridge.run([folder](OperationContext& c) { BackupOperations(c, folder).backupNow(); },
                        [this] { reload(); });
}

bool frmBackup::verifySelected()
{
    const QString path = selectedPath();
    if (path.isEmpty()) {
        MessageBox::warning(this, Message(u"Lütfen bir yedek seçiniz!"_s));
        return false;
    }
    auto summary = std::make_shared<BackupCheck::Summary>();
    return m_bridge.run(
        [path, summary](OperationContext&) { *summary = BackupCheck::read(path); },
        [this, summary] {
            if (!summary->ok) {
                qWarning().noquote() << "backup check:" << summary->error;
                MessageBox::warning(this, Message(u"Yedek okunamadı!"_s));
                return;
            }
            MessageBox::information(
                this, Message(u"Yedek doğrulandı."_s).newLine().value(summary->passages).add(u" geçiş kaydı"_s));
        });
}

bool frmBackup::deleteRecords()
{
    const QString folder = m_folder;
    const QDate before = m_before->date();
    return m_bridge.run([folder, before](OperationContext& c) { BackupOperations(c, folder).removeBefore(before); },
                        [this] { reload(); });
}

QString frmBackup::selectedPath() const
{
    const QList<QTableWidgetItem*> selected = m_list->selectedItems();
    for (const QTableWidgetItem* item : selected) {
        if (item->column() == 0)
            return item->data(Qt::UserRole).toString();
    }
    return QString();
}

void frmBackup::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QDialog::changeEvent(event);
}

void frmBackup::retranslate()
{
    m_list->setHorizontalHeaderLabels({ Translate(u"Dosya"_s), Translate(u"Tarih"_s), Translate(u"Boyut"_s) });
}
