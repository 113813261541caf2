#include "ServerService.h"
#include "ServiceLog.h"
#include "ServiceOptions.h"
#include "protocol/ProcessTimeZone.h"

#include <QCoreApplication>
#include <QTimer>
#include <atomic>
#include <csignal>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {
std::atomic<bool> s_stop{ false };

void requestStop(int)
{
    s_stop.store(true);
}
} // namespace

int main(int argc, char** argv)
{
    // Before any thread: local date-times are made per passage and must not re-read the zone.
    ProcessTimeZone::settle();
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(u"kx410"_s);
    QCoreApplication::setApplicationVersion(u"2.1"_s);

    ServiceOptions options;
    QString error;
    if (!options.parse(QCoreApplication::arguments(), &error)) {
        ServiceLog::line(u"kx410d: "_s + error);
        std::fputs(qPrintable(ServiceOptions::usage()), stderr);
        return 2;
    }
    if (options.help) {
        std::fputs(ServiceOptions::usage().toUtf8().constData(), stdout);
        return 0;
    }

    std::signal(SIGTERM, requestStop);
    std::signal(SIGINT, requestStop);
    ServerService service(options);
    if (!service.start())
        return 1;
    // The handler only sets the flag; the stop itself runs here, on the main thread.
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &app, [] {
        if (s_stop.load())
            QCoreApplication::quit();
    });
    watch.start(100);
    QCoreApplication::exec();
    service.stop();
    return 0;
}
