#include "SourceTextScanner.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

// When a raw string literal (R"x(...)x") opens at the quote at i, the index of its closing quote.
qsizetype rawStringEnd(const QString& src, qsizetype i)
{
    if (i < 1 || src.at(i - 1) != u'R')
        return -1;
    const QChar before = i >= 2 ? src.at(i - 2) : QChar(u' ');
    if ((before.isLetterOrNumber() || before == u'_') && !QStringView(u"uUL8").contains(before))
        return -1;
    const qsizetype open = src.indexOf(u'(', i);
    if (open < 0)
        return -1;
    const QString close = u')' + src.mid(i + 1, open - i - 1) + u'"';
    const qsizetype end = src.indexOf(close, open);
    return end < 0 ? src.size() - 1 : end + close.size() - 1;
}

QString withoutCommentsImpl(const QString& src)
{
    QString out = src;
    enum
    {
        Code,
        String,
        Char,
        Line,
        Block
    } state
        = Code;
    for (qsizetype i = 0; i < out.size(); ++i) {
        const QChar c = out.at(i);
        const QChar next = i + 1 < out.size() ? out.at(i + 1) : QChar();
        switch (state) {
        case Code:
            if (const qsizetype raw = c == u'"' ? rawStringEnd(out, i) : -1; raw >= 0)
                i = raw;
            else if (c == u'"')
                state = String;
            else if (c == u'\'')
                state = Char;
            else if (c == u'/' && next == u'/')
                state = Line;
            else if (c == u'/' && next == u'*')
                state = Block;
            if (state == Line || state == Block) {
                out[i] = u' ';
                out[i + 1] = u' ';
                ++i;
            }
            break;
        case String:
        case Char:
            if (c == u'\\')
                ++i;
            else if ((state == String && c == u'"') || (state == Char && c == u'\''))
                state = Code;
            break;
        case Line:
            if (c == u'\n')
                state = Code;
            else
                out[i] = u' ';
            break;
        case Block:
            if (c == u'*' && next == u'/') {
                out[i] = u' ';
                out[i + 1] = u' ';
                ++i;
                state = Code;
            } else if (c != u'\n') {
                out[i] = u' ';
            }
            break;
        }
    }
    return out;
}

// The text between the parenthesis at `open` and its partner, skipping literals.
QString argumentsAt(const QString& src, qsizetype open)
{
    int depth = 0;
    for (qsizetype i = open; i < src.size(); ++i) {
        const QChar c = src.at(i);
        if (const qsizetype raw = c == u'"' ? rawStringEnd(src, i) : -1; raw >= 0) {
            i = raw;
        } else if (c == u'"' || c == u'\'') {
            for (++i; i < src.size() && src.at(i) != c; ++i) {
                if (src.at(i) == u'\\')
                    ++i;
            }
        } else if (c == u'(') {
            ++depth;
        } else if (c == u')' && --depth == 0) {
            return src.mid(open + 1, i - open - 1);
        }
    }
    return {};
}

QString unescaped(const QString& literal)
{
    QString out;
    for (qsizetype i = 0; i < literal.size(); ++i) {
        if (literal.at(i) == u'\\' && i + 1 < literal.size()) {
            const QChar e = literal.at(++i);
            out += e == u'n' ? u'\n' : e == u't' ? u'\t' : e;
        } else {
            out += literal.at(i);
        }
    }
    return out;
}

} // namespace

QList<SourceTextScanner::Use> SourceTextScanner::textsIn(const QString& path, const QString& root)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    const QString src = withoutCommentsImpl(QString::fromUtf8(f.readAll()));
    static const QRegularExpression call(
        uR"((?<![\w:])(?:Translate|ToTurkish|tr_|setCaption|Message|Message::text|Message\s+\w+)\s*\(|\.add\s*\()"_s);
    static const QRegularExpression literal(
        uR"re(^[^"]*?(?:QStringLiteral\(\s*|QLatin1String\(\s*|u)?"((?:[^"\\]|\\.)*)")re"_s);
    static const QRegularExpression continuation(uR"re(\G\s*u?"((?:[^"\\]|\\.)*)")re"_s);
    static const QRegularExpression letter(uR"(\p{L})"_s);
    QList<Use> uses;
    for (auto it = call.globalMatch(src); it.hasNext();) {
        const QRegularExpressionMatch m = it.next();
        const QString args = argumentsAt(src, m.capturedEnd() - 1);
        const QRegularExpressionMatch lit = literal.match(args);
        if (!lit.hasMatch())
            continue;
        // Adjacent literals ("a" "b", u"a" u"b"_s) are one text.
        QString joined = lit.captured(1);
        for (qsizetype at = lit.capturedEnd(0);;) {
            const QRegularExpressionMatch more = continuation.match(args, at);
            if (!more.hasMatch())
                break;
            joined += more.captured(1);
            at = more.capturedEnd(0);
        }
        const QString text = unescaped(joined).trimmed();
        if (!text.contains(letter))
            continue;
        const qsizetype line = src.left(m.capturedStart()).count(u'\n') + 1;
        uses.append({ text, QDir(root).relativeFilePath(path) + u':' + QString::number(line) });
    }
    return uses;
}

QString SourceTextScanner::withoutComments(const QString& source)
{
    return withoutCommentsImpl(source);
}

QList<SourceTextScanner::Use> SourceTextScanner::turkishLiteralsIn(const QString& path, const QString& root)
{
    static const QRegularExpression turkish(u"[çğıİöşüÇĞÖŞÜ]"_s);
    QList<Use> uses;
    for (const Use& use : literals(path, root, false)) {
        if (use.text.contains(turkish))
            uses.append(use);
    }
    return uses;
}

QList<SourceTextScanner::Use> SourceTextScanner::literalsIn(const QString& path, const QString& root)
{
    return literals(path, root, true);
}

QList<SourceTextScanner::Use> SourceTextScanner::literals(const QString& path, const QString& root, bool withRaw)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    const QString src = withoutCommentsImpl(QString::fromUtf8(f.readAll()));
    static const QRegularExpression glue(uR"(\G(?:_s)?\s*u?(?="))"_s);
    // Literals come in order, so the line count goes on from the previous one.
    qsizetype counted = 0;
    qsizetype line = 1;
    const auto lineOf = [&](qsizetype at) -> QString {
        line += QStringView(src).mid(counted, at - counted).count(u'\n');
        counted = at;
        return QDir(root).relativeFilePath(path) + u':' + QString::number(line);
    };
    QList<Use> uses;
    for (qsizetype i = 0; i < src.size(); ++i) {
        const QChar c = src.at(i);
        if (c == u'\'') {
            // A character literal, '"' included.
            for (++i; i < src.size() && src.at(i) != u'\''; ++i) {
                if (src.at(i) == u'\\')
                    ++i;
            }
            continue;
        }
        if (c != u'"')
            continue;
        if (const qsizetype raw = rawStringEnd(src, i); raw >= 0) {
            if (withRaw) {
                // R"delim( ... )delim": the text between the parentheses, as written.
                const qsizetype open = src.indexOf(u'(', i);
                const qsizetype close = raw - (open - i - 1) - 1;
                if (close > open)
                    uses.append({ src.mid(open + 1, close - open - 1).trimmed(), lineOf(i) });
            }
            i = raw;
            continue;
        }
        const qsizetype start = i;
        QString joined;
        for (;;) {
            qsizetype end = i + 1;
            while (end < src.size() && src.at(end) != u'"') {
                if (src.at(end) == u'\\')
                    ++end;
                ++end;
            }
            joined += src.mid(i + 1, end - i - 1);
            i = end;
            // Adjacent literals make one text.
            const QRegularExpressionMatch more = glue.match(src, i + 1);
            if (!more.hasMatch())
                break;
            i = more.capturedEnd();
        }
        uses.append({ unescaped(joined).trimmed(), lineOf(start) });
    }
    return uses;
}
