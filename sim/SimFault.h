#pragma once

#include <QByteArray>
#include <QSet>
#include <QString>
#include <QStringList>
#include <optional>

// How a panel misbehaves on purpose. A fault applies to every request, or only to the listed command
// codes, for a number of requests or until it is switched off.
class SimFault
{
public:
    enum class Mode
    {
        None,
        Silent, // reads the request and never answers
        Refuse, // answers with a status other than "O"
        Slow, // answers after delayMs
        Late, // answers after delayMs, by default past the station's deadline
        CutStream, // "%DD": stops in the middle of the record after cutAfter records, no end marker
        Garbage, // sends noise instead of the answer
        Noise, // sends noise before the answer
        Drop, // closes the connection instead of answering
        Trickle, // sends the answer one byte at a time, delayMs apart
        WrongPanel, // answers with another panel number in the head
    };

    Mode mode = Mode::None;
    int delayMs = 0;
    int cutAfter = 0;
    int remaining = -1; // requests still affected; -1 means until switched off
    int skip = 0; // requests it applies to that still pass untouched before it starts
    QSet<QByteArray> codes; // empty means every command

    bool active() const;
    bool appliesTo(const QByteArray& code) const;
    QString describe() const;

    // "slow delay=500 codes=NC,UC count=2 skip=10"; a mode name first, then key=value options.
    static std::optional<SimFault> parse(const QStringList& words, QString* error);
    static QString modeName(Mode mode);
    static std::optional<Mode> modeFromName(const QString& name);
    static QStringList modeNames();
};
