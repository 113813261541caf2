#include "ui/reports/ReportDatabaseBox.h"

#include "store/Translate.h"
#include "ui/common/Caption.h"
#include "ui/common/FileDialog.h"
#include "ui/common/MessageBox.h"

#include <QDir>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

using namespace Qt::StringLiterals;

ReportDatabaseBox::ReportDatabaseBox(const QString& objectName, const QString& backupFolder, QWidget* parent)
    : QGroupBox(parent)
    , m_folder(backupFolder)
{
    setObjectName(objectName);
    setCaption(this, u"Veritabanı"_s);
    m_main = new QRadioButton(this);
    m_main->setObjectName(u"opsDBType0"_s);
    setCaption(m_main, u"Ana Veritabanı"_s);
    m_copy = new QRadioButton(this);
    m_copy->setObjectName(u"opsDBType1"_s);
    setCaption(m_copy, u"Yedek Veritabanı"_s);
    m_select = new QPushButton(this);
    m_select->setObjectName(u"cmdSelectDB"_s);
    setCaption(m_select, u"Seç"_s);
    m_current = new QLabel(this);
    m_current->setObjectName(u"lblCurrentDB"_s);
    m_current->setFrameShape(QFrame::Panel);
    m_current->setFrameShadow(QFrame::Sunken);
    m_current->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_current->setMinimumWidth(160);

    auto* layout = new QGridLayout(this);
    layout->addWidget(m_main, 0, 0, 1, 2);
    layout->addWidget(m_copy, 1, 0, 1, 2);
    layout->addWidget(m_current, 2, 0);
    layout->addWidget(m_select, 2, 1);
    layout->setColumnStretch(0, 1);

    m_main->setChecked(true);
    optionChanged();
    connect(m_copy, &QRadioButton::toggled, this, &ReportDatabaseBox::optionChanged);
    connect(m_select, &QPushButton::clicked, this, &ReportDatabaseBox::selectFile);
}

void ReportDatabaseBox::optionChanged()
{
    m_select->setEnabled(m_copy->isChecked());
    m_current->setEnabled(m_copy->isChecked());
}

void ReportDatabaseBox::selectFile()
{
    const QString filter = Translate(BackupDatabase::fileFilter()) + u" (*.db *.sqlite);;* (*)"_s;
    const QString chosen
        = FileDialog::getOpenFileName(window(), Translate(BackupDatabase::dialogTitle()), m_folder, filter);
    if (chosen.trimmed().isEmpty()) {
        MessageBox::warning(window(), BackupDatabase::invalidFileMessage());
        return;
    }
    m_path = chosen;
    m_current->setText(QDir::toNativeSeparators(chosen));
    m_current->setToolTip(m_current->text());
}

const Database& ReportDatabaseBox::choose(const Database& main)
{
    // The backup stays open while unused: the last report read from it can still be printed.
    if (!m_copy->isChecked() || m_path.isEmpty())
        return main;
    if (m_backup.isOpen() && m_openedPath == m_path)
        return m_backup.choose(main);
    Message fallback;
    QString error;
    if (!m_backup.open(m_path, &fallback, &error)) {
        qWarning().noquote() << "backup database:" << error;
        m_openedPath.clear();
        MessageBox::warning(window(), fallback);
        // Back on the main database until another backup is chosen.
        m_main->setChecked(true);
        return main;
    }
    m_openedPath = m_path;
    return m_backup.choose(main);
}
