#pragma once

#include <QString>

// The terminal of the command line: results on standard output, messages and progress on
// standard error, both UTF-8 and flushed at once so that a script sees them in order.
class CliConsole
{
public:
    static void out(const QString& text);
    static void outLine(const QString& line);
    static void errLine(const QString& line);
    // A progress figure: rewritten in place on a terminal, printed as a line otherwise.
    static void errProgress(const QString& text);
    // Ends a progress line that was rewritten in place.
    static void endProgress();
    static bool errIsTerminal();

private:
    static bool s_progressOpen;
};
