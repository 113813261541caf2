#include "ui/main/ScreenshotTour.h"

#include "ui/main/LanguageSwitch.h"
#include "ui/main/frmMain.h"

#include <QApplication>
#include <QDir>
#include <QTabWidget>
#include <QTimer>

using namespace Qt::StringLiterals;

ScreenshotTour::ScreenshotTour(frmMain& window, const QString& folder, int startLanguage)
    : QObject(&window)
    , m_window(window)
    , m_folder(folder)
    , m_startLanguage(startLanguage)
{ }

void ScreenshotTour::start(int delayMs)
{
    QTimer::singleShot(delayMs, this, &ScreenshotTour::takeAll);
}

void ScreenshotTour::takeAll()
{
    const QDir folder(m_folder);
    QTabWidget* tabs = m_window.tabMain();
    const int shown = tabs->currentIndex();
    const QStringList codes{ u"tr"_s, u"en"_s, u"ar"_s };
    for (int language = 0; language < codes.size(); ++language) {
        // Only what is shown changes: the settings file keeps the station's own language.
        LanguageSwitch::apply(language);
        for (int page = 0; page < tabs->count(); ++page) {
            tabs->setCurrentIndex(page);
            // Lets the page lay itself out and fill its grids before it is grabbed.
            QApplication::processEvents();
            QApplication::processEvents();
            const QString name = codes.at(language) + u'-' + QString::number(page + 1).rightJustified(2, u'0') + u'-'
                + tabs->widget(page)->objectName() + u".png"_s;
            m_window.grab().save(folder.filePath(name));
        }
    }
    tabs->setCurrentIndex(shown);
    LanguageSwitch::apply(m_startLanguage);
    QApplication::quit();
}
