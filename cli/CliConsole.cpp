#include "CliConsole.h"

#include <cstdio>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

bool CliConsole::s_progressOpen = false;

namespace {

// Names and texts come from the database and from panels; a control character among them (an
// escape sequence in a name can clear or rewrite the terminal) is shown as its code instead.
QString printable(const QString& text)
{
    QString shown;
    shown.reserve(text.size());
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        const bool control = (u < 0x20 && u != u'\n' && u != u'\t') || (u >= 0x7F && u <= 0x9F);
        if (control)
            shown += u"\\x"_s + QString::number(int(u), 16).rightJustified(2, u'0').toUpper();
        else
            shown += c;
    }
    return shown;
}

void write(std::FILE* stream, const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stream);
    std::fflush(stream);
}
} // namespace

void CliConsole::out(const QString& text)
{
    write(stdout, printable(text));
}

void CliConsole::outLine(const QString& line)
{
    write(stdout, printable(line) + u'\n');
}

void CliConsole::errLine(const QString& line)
{
    endProgress();
    write(stderr, printable(line) + u'\n');
}

void CliConsole::errProgress(const QString& text)
{
    if (errIsTerminal()) {
        write(stderr, u"\r\x1b[K"_s + printable(text));
        s_progressOpen = true;
    } else {
        write(stderr, printable(text) + u'\n');
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
