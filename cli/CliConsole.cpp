#include "CliConsole.h"

#include <cstdio>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

bool CliConsole::s_progressOpen = false;

namespace {
void write(std::FILE* stream, const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stream);
    std::fflush(stream);
}
} // namespace

void CliConsole::out(const QString& text)
{
    write(stdout, text);
}

void CliConsole::outLine(const QString& line)
{
    write(stdout, line + u'\n');
}

void CliConsole::errLine(const QString& line)
{
    endProgress();
    write(stderr, line + u'\n');
}

void CliConsole::errProgress(const QString& text)
{
    if (errIsTerminal()) {
        write(stderr, u"\r\x1b[K"_s + text);
        s_progressOpen = true;
    } else {
        write(stderr, text + u'\n');
    }
}

void CliConsole::endProgress()
{
    if (s_progressOpen) {
        write(stderr, QStringLiteral("\n"));
        s_progressOpen = false;
    }
}

bool CliConsole::errIsTerminal()
{
    return isatty(fileno(stderr)) != 0;
}
