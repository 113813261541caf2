#include "ui/main/WindowStartupUi.h"

#include "store/Translate.h"
#include "ui/common/MessageBox.h"
#include "ui/main/LanguageSwitch.h"
#include "ui/main/frmFirstPassword.h"
#include "ui/main/frmStart.h"

#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

using namespace Qt::StringLiterals;

bool WindowStartupUi::askInitialSettings(StationSettings& settings)
{
    frmStart dialog(settings);
    capture(&dialog, u"frmStart"_s);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    settings = dialog.settings();
    return true;
}

bool WindowStartupUi::chooseAdminPassword(const Message& hint, QString* password, QString* repeated)
{
    // The language is known by now: show this dialog (and all that follow) in it.
    LanguageSwitch::apply(CurrentLanguage());
    frmFirstPassword dialog;
    dialog.setHint(hint);
    capture(&dialog, u"frmFirstPassword"_s);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    *password = dialog.password();
    *repeated = dialog.repeated();
    return true;
}

void WindowStartupUi::showMessage(const Message& message)
{
    // Failures of the start end with the closing notice; everything else is good news.
    for (const Message::Fragment& fragment : message.fragments()) {
        if (fragment.text == u"Program kapatılacak!"_s) {
            MessageBox::critical(nullptr, message);
            return;
        }
    }
    MessageBox::information(nullptr, message);
}

void WindowStartupUi::setScreenshotFolder(const QString& folder, bool autoAnswer)
{
    m_screenshotFolder = folder;
    m_autoAnswer = autoAnswer;
    if (autoAnswer)
        MessageBox::setDefaultAnswer(QMessageBox::Ok);
}

void WindowStartupUi::capture(QWidget* dialog, const QString& name)
{
    if (m_screenshotFolder.isEmpty())
        return;
    const QString path = QDir(m_screenshotFolder).filePath(name + u".png"_s);
    const bool autoAnswer = m_autoAnswer;
    // Give the dialog time to be shown and laid out before it is grabbed.
    QTimer::singleShot(300, dialog, [dialog, path, autoAnswer] {
        dialog->grab().save(path);
        if (!autoAnswer)
            return;
        const QList<QLineEdit*> passwords
            = { dialog->findChild<QLineEdit*>(u"txtNewAdmin"_s), dialog->findChild<QLineEdit*>(u"txtNewRAdmin"_s) };
        for (QLineEdit* edit : passwords) {
            if (edit)
                edit->setText(u"1234"_s);
        }
        for (const QString& button : { u"cmdSaveOk"_s, u"cmdOK"_s }) {
            if (auto* ok = dialog->findChild<QPushButton*>(button))
                ok->click();
        }
    });
}
