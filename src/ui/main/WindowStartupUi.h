#pragma once

#include "store/StartupUi.h"

#include <QString>

class QWidget;

// The start-up's questions as windows: the start-up dialog, the first administrator password
// and message boxes.
class WindowStartupUi : public StartupUi
{
public:
    WindowStartupUi() = default;

    bool askInitialSettings(StationSettings& settings) override;
    bool chooseAdminPassword(const Message& hint, QString* password, QString* repeated) override;
    void showMessage(const Message& message) override;

    // Each dialog is saved as a PNG in this folder when it appears (for looking at the windows
    // without a screen); with autoAnswer the dialogs then answer themselves with sample choices.
    void setScreenshotFolder(const QString& folder, bool autoAnswer);

private:
    void capture(QWidget* dialog, const QString& name);

    QString m_screenshotFolder;
    bool m_autoAnswer = false;
};
