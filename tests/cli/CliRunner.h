#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <initializer_list>

// Runs kx410ctl as a separate process on a data folder of its own, the way a script would.
class CliRunner
{
public:
    struct Result
    {
        int exitCode = -1;
        QString out;
        QString err;
        QString all() const { return out + err; }
    };

    static constexpr const char* Password = "4321";

    // A fresh temporary data folder, not set up.
    CliRunner();

    QString dataDir() const { return m_dir.path() + QStringLiteral("/site"); }
    bool isValid() const { return m_dir.isValid(); }

    // kx410ctl --data-dir <folder> arguments...
    Result run(const QStringList& arguments) const;
    // The same with the administrator password given.
    Result runAsAdmin(const QStringList& arguments) const;
    // The arguments written as one line, as a shell would split it ("..." keeps a word's spaces).
    Result run(const char* line) const { return run(words(line)); }
    Result runAsAdmin(const char* line) const { return runAsAdmin(words(line)); }
    static QStringList words(const QString& line);
    static QStringList words(const char* line) { return words(QString::fromUtf8(line)); }
    // The non-empty lines a command printed, each with its runs of blanks made one.
    QStringList listed(const char* line) const;
    // One command line and the exit status it must end with.
    struct Expect
    {
        const char* line;
        int exitCode;
        bool asAdmin = true;
    };
    // Runs the lines in order; the first whose status differs, with its output, or empty.
    QString mismatch(std::initializer_list<Expect> rows) const;
    // Sets the folder up as a server with the test password; true on success.
    bool setUpServer() const;

    // A file in the temporary folder with the given UTF-8 text; returns its path.
    QString writeFile(const QString& name, const QString& text) const;

private:
    QTemporaryDir m_dir;
};
