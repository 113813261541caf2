#include "SimFault.h"

#include <array>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {
const std::array<std::pair<SimFault::Mode, const char*>, 11> kModes{ {
    { SimFault::Mode::None, "none" },
    { SimFault::Mode::Silent, "silent" },
    { SimFault::Mode::Refuse, "refuse" },
    { SimFault::Mode::Slow, "slow" },
    { SimFault::Mode::Late, "late" },
    { SimFault::Mode::CutStream, "cut" },
    { SimFault::Mode::Garbage, "garbage" },
    { SimFault::Mode::Noise, "noise" },
    { SimFault::Mode::Drop, "drop" },
    { SimFault::Mode::Trickle, "trickle" },
    { SimFault::Mode::WrongPanel, "wrongpanel" },
} };

// Past the 2-second answer deadline with room for scheduling jitter.
constexpr int kLateDefaultMs = 2600;
constexpr int kSlowDefaultMs = 500;
constexpr int kTrickleDefaultMs = 1;
} // namespace

bool SimFault::active() const
{
    return mode != Mode::None && remaining != 0;
}

bool SimFault::appliesTo(const QByteArray& code) const
{
    if (!active())
        return false;
    if (mode == Mode::CutStream && code != "DD")
        return false;
    return codes.isEmpty() || codes.contains(code);
}

QString SimFault::describe() const
{
    QString text = modeName(mode);
    if (mode == Mode::None)
        return text;
    if (delayMs > 0)
        text += u" delay="_s + QString::number(delayMs);
    if (mode == Mode::CutStream)
        text += u" after="_s + QString::number(cutAfter);
    if (remaining >= 0)
        text += u" count="_s + QString::number(remaining);
    if (skip > 0)
        text += u" skip="_s + QString::number(skip);
    if (!codes.isEmpty()) {
        QStringList list;
        for (const QByteArray& code : codes)
            list.append(QString::fromLatin1(code));
        list.sort();
        text += u" codes="_s + list.join(u',');
    }
    return text;
}

std::optional<SimFault> SimFault::parse(const QStringList& words, QString* error)
{
    if (words.isEmpty()) {
        if (error)
            *error = u"missing fault mode"_s;
        return std::nullopt;
    }
    const auto mode = modeFromName(words.first());
    if (!mode) {
        if (error)
            *error = u"unknown fault mode "_s + words.first();
        return std::nullopt;
    }
    SimFault fault;
    fault.mode = *mode;
    if (fault.mode == Mode::Slow)
        fault.delayMs = kSlowDefaultMs;
    else if (fault.mode == Mode::Late)
        fault.delayMs = kLateDefaultMs;
    else if (fault.mode == Mode::Trickle)
        fault.delayMs = kTrickleDefaultMs;
    for (qsizetype i = 1; i < words.size(); ++i) {
        const QString& word = words.at(i);
        const qsizetype eq = word.indexOf(u'=');
        const QString key = eq < 0 ? word : word.left(eq);
        const QString value = eq < 0 ? QString() : word.mid(eq + 1);
        bool ok = false;
        if (key == u"delay") {
            fault.delayMs = value.toInt(&ok);
            ok = ok && fault.delayMs >= 0 && fault.delayMs <= 600000;
        } else if (key == u"after") {
            fault.cutAfter = value.toInt(&ok);
            ok = ok && fault.cutAfter >= 0;
        } else if (key == u"count") {
            fault.remaining = value.toInt(&ok);
            ok = ok && fault.remaining >= -1;
        } else if (key == u"skip") {
            fault.skip = value.toInt(&ok);
            ok = ok && fault.skip >= 0;
        } else if (key == u"codes") {
            ok = true;
            const QStringList list = value.split(u',', Qt::SkipEmptyParts);
            for (const QString& code : list) {
                const QByteArray latin = code.trimmed().toUpper().toLatin1();
                ok = ok && (latin.size() == 2 || latin.size() == 3);
                fault.codes.insert(latin);
            }
        }
        if (!ok) {
            if (error)
                *error = u"bad fault option "_s + word;
            return std::nullopt;
        }
    }
    return fault;
}

QString SimFault::modeName(Mode mode)
{
    for (const auto& [m, name] : kModes) {
        if (m == mode)
            return QString::fromLatin1(name);
    }
    return QString();
}

std::optional<SimFault::Mode> SimFault::modeFromName(const QString& name)
{
    for (const auto& [m, text] : kModes) {
        if (name.compare(QLatin1String(text), Qt::CaseInsensitive) == 0)
            return m;
    }
    return std::nullopt;
}

QStringList SimFault::modeNames()
{
    QStringList names;
    for (const auto& entry : kModes)
        names.append(QString::fromLatin1(entry.second));
    return names;
}
