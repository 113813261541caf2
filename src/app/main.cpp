#include "operations/station/Station.h"
#include "protocol/ProcessTimeZone.h"
#include "store/Clock.h"
#include "store/StartupOptions.h"
#include "store/StartupSequence.h"
#include "ui/common/MessageBox.h"
#include "ui/main/LanguageSwitch.h"
#include "ui/main/MainPages.h"
#include "ui/main/ScreenshotTour.h"
#include "ui/main/WindowStartupUi.h"
#include "ui/main/frmMain.h"
#include "ui/schedule/MainSchedule.h"

#include <QApplication>
#include <QDir>
#include <QHostAddress>
#include <QTimer>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {
// "--screenshot DIR": every window of the start is saved as a PNG in DIR, the dialogs answer
// themselves with sample choices, then the main window and each of its pages in each language are
// saved and the program ends.
QString screenshotFolder(const QStringList& arguments)
{
    for (qsizetype i = 1; i < arguments.size(); ++i) {
        if (arguments.at(i) == u"--screenshot"_s && i + 1 < arguments.size())
            return arguments.at(i + 1);
        if (arguments.at(i).startsWith(u"--screenshot="_s))
            return arguments.at(i).mid(13);
    }
    return QString();
}

// "--broadcast ADDR" (or KX410_BROADCAST): where status, search and alarm datagrams go; the
// field's broadcast address when not given. Demos on one machine use 127.0.0.1.
QString broadcastAddress(const QStringList& arguments)
{
    for (qsizetype i = 1; i < arguments.size(); ++i) {
        if (arguments.at(i) == u"--broadcast"_s && i + 1 < arguments.size())
            return arguments.at(i + 1);
        if (arguments.at(i).startsWith(u"--broadcast="_s))
            return arguments.at(i).mid(12);
    }
    return qEnvironmentVariable("KX410_BROADCAST");
}

// How long the screenshots wait for the panels and the live monitor (KX410_SCREENSHOT_DELAY_MS).
int screenshotDelayMs()
{
    bool ok = false;
    const int delay = qEnvironmentVariableIntValue("KX410_SCREENSHOT_DELAY_MS", &ok);
    return ok && delay >= 0 ? delay : 1000;
}

bool wantsHelp(const QStringList& arguments)
{
    return arguments.contains(u"--help"_s) || arguments.contains(u"-h"_s);
}
} // namespace

int main(int argc, char** argv)
{
    // Before any thread: local date-times are made per passage and must not re-read the zone.
    ProcessTimeZone::settle();
    QApplication app(argc, argv);
    QApplication::setApplicationName(u"kx410"_s);
    QApplication::setApplicationVersion(u"2.1"_s);

    const QStringList arguments = QApplication::arguments();
    if (wantsHelp(arguments)) {
        std::puts("usage: kx410-station [--data-dir DIR] [--db URL] [--broadcast ADDR] [--screenshot DIR]");
        return 0;
    }
    const QString broadcast = broadcastAddress(arguments);
    if (!broadcast.isEmpty() && QHostAddress(broadcast).protocol() != QAbstractSocket::IPv4Protocol) {
        std::fprintf(stderr, "--broadcast needs an IPv4 address\n");
        return 2;
    }
    const StartupOptions options = StartupOptions::fromArguments(arguments);
    const QString screenshots = screenshotFolder(arguments);

    WindowStartupUi ui;
    if (!screenshots.isEmpty()) {
        QDir().mkpath(screenshots);
        ui.setScreenshotFolder(screenshots, true);
    }
    StartupSequence sequence(ui, options);
    const StartupResult start = sequence.run();
    if (!start.ok)
        return 1;

    MessageBox::setTitle(start.title);
    LanguageSwitch::apply(start.settings.language);
    // The station outlives its window: the window's pages stop the live monitor and the worker
    // when they go, and the station then closes the database.
    Station station(start, Clock::system());
    if (!broadcast.isEmpty())
        station.network().udp.broadcastAddress = broadcast;
    QString loadError;
    if (!station.load(&loadError))
        qWarning().noquote() << loadError;
    frmMain window(station);
    MainPages* pages = MainPages::install(window);
    MainSchedule::install(window, *pages, station.clock());
    window.show();
    if (!screenshots.isEmpty()) {
        QTimer::singleShot(
            500, &window, [&window, screenshots] { window.grab().save(QDir(screenshots).filePath(u"frmMain.png"_s)); });
        // Then every page in every language, and the program ends.
        (new ScreenshotTour(window, screenshots, start.settings.language))->start(screenshotDelayMs());
    }
    return QApplication::exec();
}
