#include "CliApplication.h"
#include "CliOperator.h"
#include "protocol/ProcessTimeZone.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <csignal>
#include <cstring>
#include <memory>

namespace {
// The first interrupt asks the running operation to stop at its next check; a second one ends
// the program the usual way.
void interrupted(int)
{
    CliOperator::requestCancel();
    std::signal(SIGINT, SIG_DFL);
}

// Painting report pages needs a graphical application; everything else runs without one, so a
// plain terminal never loads a display plugin.
bool needsPainting(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--pdf") == 0 || std::strncmp(argv[i], "--pdf=", 6) == 0)
            return true;
    }
    return false;
}

std::unique_ptr<QCoreApplication> makeApplication(int& argc, char** argv)
{
    if (!needsPainting(argc, argv))
        return std::make_unique<QCoreApplication>(argc, argv);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY")
        && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    return std::make_unique<QGuiApplication>(argc, argv);
}
} // namespace

int main(int argc, char** argv)
{
    ProcessTimeZone::settle();
    const std::unique_ptr<QCoreApplication> app = makeApplication(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kx410ctl"));
    QCoreApplication::setApplicationVersion(QStringLiteral("2.1"));
    std::signal(SIGINT, interrupted);
    CliApplication cli;
    return cli.run(QCoreApplication::arguments().mid(1));
}
