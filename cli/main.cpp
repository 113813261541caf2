#include "CliApplication.h"
#include "CliOperator.h"

#include <QCoreApplication>
#include <csignal>

namespace {
// The first interrupt asks the running operation to stop at its next check; a second one ends
// the program the usual way.
void interrupted(int)
{
    CliOperator::requestCancel();
    std::signal(SIGINT, SIG_DFL);
}
} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kx410ctl"));
    QCoreApplication::setApplicationVersion(QStringLiteral("2.1"));
    std::signal(SIGINT, interrupted);
    CliApplication cli;
    return cli.run(QCoreApplication::arguments().mid(1));
}
