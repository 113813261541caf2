#include "operations/users/UserCsvImport.h"

#include "operations/users/UserIdRange.h"
#include "protocol/CardField.h"
#include "store/Database.h"
#include "store/Transaction.h"

#include <QHash>
#include <QIODevice>
#include <QSqlQuery>

using namespace Qt::StringLiterals;

namespace {

// The file's columns after ID and card, in order, with the Users column each fills.
const QStringList kTextColumns = { u"Adi"_s, u"Soyadi"_s };
const QStringList kNumberColumns
    = { u"Grup No"_s, u"Sifre"_s, u"Gecis Modu"_s, u"Kullanici Tipi"_s, u"Sirket No"_s, u"Departman No"_s };
constexpr int kFields = 11;

struct Line
{
    int lineNo = 0;
    qint32 id = 0;
    qint64 card = 0;
    QString name;
    QString surname;
    QList<qint32> numbers; // in the order of kNumberColumns
    QString plate;
};

QStringList columns()
{
    return QStringList{ u"ID"_s, u"Kart ID"_s } + kTextColumns + kNumberColumns + QStringList{ u"Plaka"_s };
}

QVariantList values(const Line& l)
{
    QVariantList v{ l.id, l.card, l.name, l.surname };
    for (qint32 n : l.numbers)
        v << n;
    v << l.plate;
    return v;
}

Message lineError(int lineNo, const Message& reason)
{
    return Message().value(lineNo).add(u" nolu satır: "_s).append(reason);
}

// Reads one line; an empty message means it is good.
Message parseLine(const QString& text, Line& line)
{
    const QStringList f = text.split(u';');
    if (f.size() < 2 || f.size() > kFields)
        return Message(u"Alan sayısı hatalı!"_s);
    bool ok = false;
    line.id = f.at(0).trimmed().toInt(&ok);
    if (!ok || line.id < UserIdRange::MinId || line.id > UserIdRange::MaxId)
        return Message(u"Kullanıcı ID, 1-20000 arasında bir sayı olmalıdır!"_s);
    line.card = f.at(1).trimmed().toLongLong(&ok);
    if (!ok || line.card <= 0 || !fitsCardField(line.card))
        return Message(u"Kart ID hatalı!"_s);
    line.name = f.value(2).trimmed();
    line.surname = f.value(3).trimmed();
    for (int i = 0; i < kNumberColumns.size(); ++i) {
        const QString field = f.value(4 + i).trimmed();
        qint32 number = 0;
        if (!field.isEmpty()) {
            number = field.toInt(&ok);
            if (!ok || number < 0)
                return Message().value(kNumberColumns.at(i)).add(u" değeri hatalı!"_s);
        }
        line.numbers << number;
    }
    line.plate = f.value(10).trimmed();
    return Message();
}

} // namespace

UserCsvImport::UserCsvImport(Database& db)
    : m_db(db)
{ }

UserCsvImport::Result UserCsvImport::run(QIODevice& input)
{
    Result result;
    const QString all = QString::fromUtf8(input.readAll());
    const QStringList texts = all.split(u'\n');

    // What is stored already: ID -> card, card -> ID.
    QHash<qint32, qint64> cardOfId;
    QHash<qint64, qint32> idOfCard;
    {
        QSqlQuery q = m_db.query(u"SELECT "_s + Database::quotedList({ u"ID"_s, u"Kart ID"_s }) + u" FROM \"Users\""_s);
        while (q.next()) {
            cardOfId.insert(q.value(0).toInt(), q.value(1).toLongLong());
            idOfCard.insert(q.value(1).toLongLong(), q.value(0).toInt());
        }
    }

    QList<Line> lines;
    QHash<qint32, int> idLine;
    QHash<qint64, int> cardLine;
    const Message duplicate(u"Birincil anahtar hatası! Bu değer daha önce girilmişti. Lütfen kontrol ediniz!"_s);
    for (int i = 0; i < texts.size(); ++i) {
        QString text = texts.at(i);
        if (text.endsWith(u'\r'))
            text.chop(1);
        if (i == 0 && text.startsWith(QChar(0xFEFF)))
            text.remove(0, 1);
        if (text.trimmed().isEmpty() || (i == 0 && text.trimmed().startsWith(u"ID"_s, Qt::CaseInsensitive)))
            continue;
        Line line;
        line.lineNo = i + 1;
        const Message problem = parseLine(text, line);
        if (!problem.isEmpty()) {
            result.errors << lineError(line.lineNo, problem);
            continue;
        }
        // Within the file and against the table: an ID once, a card for one person only.
        const qint32 cardOwner = idOfCard.value(line.card, 0);
        if (idLine.contains(line.id) || cardLine.contains(line.card) || (cardOwner != 0 && cardOwner != line.id)) {
            result.errors << lineError(line.lineNo, duplicate);
            continue;
        }
        idLine.insert(line.id, line.lineNo);
        cardLine.insert(line.card, line.lineNo);
        lines << line;
    }
    if (!result.errors.isEmpty())
        return result;

    Transaction transaction(m_db);
    QString error;
    QList<QVariantList> newRows;
    QStringList sets;
    for (const QString& c : columns().mid(1))
        sets << Database::quoted(c) + u" = ?"_s;
    const QString update
        = u"UPDATE \"Users\" SET "_s + sets.join(u", "_s) + u" WHERE "_s + Database::quoted(u"ID"_s) + u" = ?"_s;
    for (const Line& line : std::as_const(lines)) {
        if (!cardOfId.contains(line.id)) {
            newRows << values(line);
            continue;
        }
        QVariantList params = values(line).mid(1);
        params << line.id;
        if (!m_db.exec(update, params, &error)) {
            result.errors << lineError(line.lineNo, Message().value(error));
            return result;
        }
        ++result.updated;
    }
    if (!newRows.isEmpty() && !m_db.insertRows(u"Users"_s, columns(), newRows, &error)) {
        result.errors << Message().value(error);
        result.updated = 0;
        return result;
    }
    if (!transaction.commit(&error)) {
        result.errors << Message().value(error);
        result.updated = 0;
        return result;
    }
    result.added = static_cast<int>(newRows.size());
    result.ok = true;
    return result;
}
