#include "operations/backup/DumpTableReader.h"

#include "operations/backup/PostgresTools.h"

#include <QProcess>

using namespace Qt::StringLiterals;

namespace {

bool fail(QString* error, const QString& why)
{
    if (error)
        *error = why;
    return false;
}

QString unquoted(QString name)
{
    name = name.trimmed();
    if (name.size() >= 2 && name.startsWith(u'"') && name.endsWith(u'"'))
        return name.mid(1, name.size() - 2).replace(u"\"\""_s, u"\""_s);
    return name;
}

// The rows of the table, fed line by line; keeps track of where in the output it is.
class CopyStream
{
public:
    CopyStream(const QString& table, const QString& column, const DumpTableReader::RowVisitor& visit)
        : m_table(table)
        , m_column(column)
        , m_visit(visit)
    { }

    void line(const QString& text)
    {
        if (m_state == State::Before) {
            const QStringList columns = DumpTableReader::copyColumns(text, m_table);
            if (!columns.isEmpty()) {
                m_index = columns.indexOf(m_column);
                m_state = m_index >= 0 ? State::Inside : State::NoColumn;
            }
            return;
        }
        if (m_state != State::Inside)
            return;
        if (text == u"\\."_s) {
            m_state = State::Done;
            return;
        }
        const QStringList fields = text.split(u'\t');
        m_visit(DumpTableReader::copyField(fields.value(m_index)));
    }

    QString problem() const
    {
        switch (m_state) {
        case State::Done:
            return QString();
        case State::Before:
            return u"The dump holds no data of the table "_s + m_table + u'.';
        case State::NoColumn:
            return u"The table "_s + m_table + u" of the dump has no column "_s + m_column + u'.';
        case State::Inside:
            break;
        }
        return u"The data of the table "_s + m_table + u" ends before its end marker."_s;
    }

private:
    enum class State
    {
        Before,
        Inside,
        NoColumn,
        Done
    };

    QString m_table;
    QString m_column;
    const DumpTableReader::RowVisitor& m_visit;
    State m_state = State::Before;
    qsizetype m_index = -1;
};

} // namespace

bool DumpTableReader::read(const QString& path, const QString& table, const QString& column, const RowVisitor& visit,
                           QString* error)
{
    const QString program = PostgresTools::program(u"pg_restore"_s);
    if (program.isEmpty())
        return fail(error, u"pg_restore was not found (install the postgresql-client package)."_s);
    QProcess restore;
    restore.start(program, { u"--data-only"_s, u"--table"_s, table, u"--file"_s, u"-"_s, path });
    if (!restore.waitForStarted())
        return fail(error, program + u": "_s + restore.errorString());

    CopyStream stream(table, column, visit);
    const auto takeLines = [&] {
        while (restore.canReadLine()) {
            QByteArray bytes = restore.readLine();
            bytes.chop(bytes.endsWith('\n') ? 1 : 0);
            stream.line(QString::fromUtf8(bytes));
        }
    };
    while (restore.state() != QProcess::NotRunning) {
        restore.waitForReadyRead(1000);
        takeLines();
    }
    takeLines();
    if (const QByteArray rest = restore.readAll(); !rest.isEmpty())
        stream.line(QString::fromUtf8(rest));

    if (restore.exitStatus() != QProcess::NormalExit || restore.exitCode() != 0)
        return fail(error, u"pg_restore: "_s + QString::fromLocal8Bit(restore.readAllStandardError()).trimmed());
    if (const QString problem = stream.problem(); !problem.isEmpty())
        return fail(error, problem);
    return true;
}

QStringList DumpTableReader::copyColumns(const QString& line, const QString& table)
{
    if (!line.startsWith(u"COPY "_s) || !line.endsWith(u") FROM stdin;"_s))
        return {};
    const qsizetype open = line.indexOf(u" ("_s);
    if (open < 0)
        return {};
    // "public."AccessDatas"" or "AccessDatas": the last dotted part is the table.
    const QString qualified = line.mid(5, open - 5);
    const qsizetype dot = qualified.lastIndexOf(u"."_s);
    if (unquoted(dot >= 0 ? qualified.mid(dot + 1) : qualified) != table)
        return {};
    const QString inside = line.mid(open + 2, line.size() - open - 2 - QStringLiteral(") FROM stdin;").size());
    QStringList columns;
    for (const QString& name : inside.split(u", "_s))
        columns << unquoted(name);
    return columns;
}

QString DumpTableReader::copyField(const QString& field)
{
    if (field == u"\\N"_s)
        return QString();
    if (!field.contains(u'\\'))
        return field.isNull() ? u""_s : field;
    QString text;
    text.reserve(field.size());
    for (qsizetype i = 0; i < field.size(); ++i) {
        const QChar c = field.at(i);
        if (c != u'\\' || i + 1 >= field.size()) {
            text += c;
            continue;
        }
        const QChar next = field.at(++i);
        switch (next.unicode()) {
        case u't':
            text += u'\t';
            break;
        case u'n':
            text += u'\n';
            break;
        case u'r':
            text += u'\r';
            break;
        default:
            text += next;
            break;
        }
    }
    return text;
}
