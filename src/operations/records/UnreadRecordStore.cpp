#include "operations/records/UnreadRecordStore.h"

#include "operations/records/RecordErasures.h"
#include "store/Database.h"
#include "store/Transaction.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace {

QString printable(const QByteArray& text)
{
    // Control and non-ASCII bytes as \xNN, so that any byte sequence can be stored and shown.
    QString out;
    out.reserve(text.size());
    for (const char c : text) {
        const auto b = static_cast<unsigned char>(c);
        if (b >= 0x20 && b < 0x7F && b != '\\')
            out += QLatin1Char(static_cast<char>(b));
        else
            out += u"\\x"_s + QString::number(b, 16).rightJustified(2, u'0').toUpper();
    }
    return out;
}

} // namespace

UnreadRecordStore::UnreadRecordStore(Database& db)
    : m_db(db)
{ }

QString UnreadRecordStore::reasonText(RecordDownloadCollector::UnreadReason reason)
{
    using R = RecordDownloadCollector::UnreadReason;
    switch (reason) {
    case R::CutRecord:
        return u"Kesik kayıt"_s;
    case R::MalformedRecord:
        return u"Hatalı uzunlukta kayıt"_s;
    case R::UnreadableRecord:
        return u"Okunamayan kayıt"_s;
    case R::NoUser:
        return u"Kullanıcısız kayıt"_s;
    case R::StrayText:
        return u"Kayıt dışı metin"_s;
    case R::ForeignAnswer:
        return u"Başka panelin cevabı"_s;
    }
    return {};
}

int UnreadRecordStore::keep(qint32 panel, const QList<RecordDownloadCollector::UnreadPiece>& pieces,
                            const QDateTime& at, QString* error)
{
    if (pieces.isEmpty())
        return 0;
    Transaction transaction(m_db);
    if (!transaction.isActive()) {
        if (error)
            *error = transaction.error();
        return -1;
    }
    // Counted, like passages: the n-th equal piece of a download is new while fewer are kept
    // since the panel's memory was last erased.
    RecordErasures::Mark mark;
    if (!RecordErasures(m_db).load(panel, &mark, error))
        return -1;
    QHash<QString, int> kept;
    {
        QSqlQuery q = m_db.query(u"SELECT \"Metin\", \"Neden\" FROM \"UnreadRecords\" "
                                 u"WHERE \"Panel ID\" = ? AND \"Kayit No\" > ?"_s,
                                 { panel, mark.lastUnread }, error);
        if (!q.isActive())
            return -1;
        while (q.next())
            ++kept[q.value(1).toString() + u'\n' + q.value(0).toString()];
    }
    QList<QVariantList> rows;
    for (const auto& piece : pieces) {
        const QString text = printable(piece.text);
        const QString reason = reasonText(piece.reason);
        int& already = kept[reason + u'\n' + text];
        if (already > 0) {
            --already;
            continue;
        }
        rows.append({ panel, m_db.toSql(at), text, reason });
    }
    if (!rows.isEmpty()
        && !m_db.insertRows(u"UnreadRecords"_s, { u"Panel ID"_s, u"Tarih"_s, u"Metin"_s, u"Neden"_s }, rows, error))
        return -1;
    if (!transaction.commit(error))
        return -1;
    return static_cast<int>(rows.size());
}

QList<UnreadRecordStore::Row> UnreadRecordStore::rows(qint32 panel, QString* error) const
{
    QList<Row> out;
    QString sql = u"SELECT \"Kayit No\", \"Panel ID\", \"Tarih\", \"Metin\", \"Neden\" FROM \"UnreadRecords\""_s;
    QVariantList params;
    if (panel > 0) {
        sql += u" WHERE \"Panel ID\" = ?"_s;
        params << panel;
    }
    sql += u" ORDER BY \"Kayit No\" DESC"_s;
    QSqlQuery q = m_db.query(sql, params, error);
    while (q.next())
        out.append({ q.value(0).toLongLong(), q.value(1).toInt(), Database::dateTime(q.value(2)), q.value(3).toString(),
                     q.value(4).toString() });
    return out;
}
