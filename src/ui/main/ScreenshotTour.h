#pragma once

#include <QObject>
#include <QString>

class frmMain;

// For people who want to look at the station without clicking through it: shows every page of the
// main window in each language in turn (Turkish, English, Arabic), saves each as a PNG in a folder
// ("tr-01-tabPanels.png", ...), puts the starting language back and quits the program. The
// settings file is left as it was.
class ScreenshotTour : public QObject
{
    Q_OBJECT

public:
    ScreenshotTour(frmMain& window, const QString& folder, int startLanguage);

    // Begins after `delayMs`, so that the panels and the live monitor have been heard from.
    void start(int delayMs);

private:
    void takeAll();

    frmMain& m_window;
    QString m_folder;
    int m_startLanguage;
};
