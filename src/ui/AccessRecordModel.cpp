#include "ui/AccessRecordModel.h"

#include "store/Database.h"
#include "ui/PassageColumns.h"
#include "ui/PassageNames.h"

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace {
template <typename T> std::optional<T> optionalOf(const QVariant& value)
{
    if (value.isNull() || !value.isValid())
        return std::nullopt;
    return value.value<T>();
}
} // namespace

AccessRecordModel::AccessRecordModel(const Database& db, PassageNames& names, QObject* parent)
    : QAbstractTableModel(parent)
    , m_db(db)
    , m_names(names)
{ }

void AccessRecordModel::setPageSize(int rows)
{
    m_pageSize = qMax(1, rows);
}

QList<PassageRow> AccessRecordModel::readPage(qint64 before, QString* error)
{
    // The people's and visitors' names come with the rows; a door operation record carries an
    // operation code where a person's number would be, so it is not matched with Users.
    QString sql = u"SELECT a.\"Kayit No\", a.\"Panel ID\", a.\"Lokal Bolge No\", a.\"Global Bolge No\", "
                  u"a.\"Kapi ID\", a.\"ID\", a.\"Kart ID\", a.\"Tarih\", a.\"Gecis Tipi\", a.\"Kod\", "
                  u"a.\"Kullanici Tipi\", a.\"Visitor No\", u.\"Adi\", u.\"Soyadi\", v.\"Adi\", v.\"Soyadi\" "
                  u"FROM \"AccessDatas\" a "
                  u"LEFT JOIN \"Users\" u ON u.\"ID\" = a.\"ID\" AND a.\"Kod\" < 5 "
                  u"LEFT JOIN \"Visitors\" v ON v.\"Kayit No\" = a.\"Visitor No\" AND a.\"Kod\" < 5 "_s;
    QVariantList params;
    if (before > 0) {
        sql += u"WHERE a.\"Kayit No\" < ? "_s;
        params << before;
    }
    sql += u"ORDER BY a.\"Kayit No\" DESC LIMIT ?"_s;
    params << m_pageSize;

    QList<PassageRow> page;
    QSqlQuery q = m_db.query(sql, params, error);
    if (!q.isActive())
        return page;
    while (q.next()) {
        PassageRow p;
        RecordRow& r = p.record;
        r.recordNo = q.value(0).toLongLong();
        r.panelId = q.value(1).toInt();
        r.localZone = q.value(2).toInt();
        r.globalZone = q.value(3).toInt();
        r.door = q.value(4).toInt();
        r.userId = q.value(5).toInt();
        r.cardId = q.value(6).toLongLong();
        r.time = Database::dateTime(q.value(7));
        r.direction = directionOf(q.value(8).toInt());
        r.code = passageCodeOf(q.value(9).toInt());
        if (const auto type = optionalOf<qint32>(q.value(10)))
            r.userType = userTypeOf(*type);
        r.visitorNo = optionalOf<qint64>(q.value(11));
        const bool visitorFound = !q.value(14).isNull() || !q.value(15).isNull();
        p.name = visitorFound ? PassageNames::fullName(q.value(14).toString(), q.value(15).toString())
                              : PassageNames::fullName(q.value(12).toString(), q.value(13).toString());
        page << p;
    }
    // Only now: PostgreSQL takes no other statement on the connection while rows are streaming.
    q.finish();
    for (PassageRow& p : page)
        p.eventText = m_names.eventText(p.record.code);
    return page;
}

bool AccessRecordModel::reload(QString* error)
{
    QString reason;
    QList<PassageRow> page = readPage(0, &reason);
    beginResetModel();
    m_rows = std::move(page);
    m_atEnd = m_rows.size() < m_pageSize;
    endResetModel();
    m_lastError = reason;
    if (error)
        *error = reason;
    return reason.isEmpty();
}

void AccessRecordModel::addNewer(const QList<PassageRow>& rows)
{
    const qint64 newest = newestRecordNo();
    QList<PassageRow> fresh;
    for (const PassageRow& row : rows) {
        if (row.record.recordNo > newest)
            fresh << row;
    }
    if (fresh.isEmpty())
        return;
    std::sort(fresh.begin(), fresh.end(),
              [](const PassageRow& a, const PassageRow& b) { return a.record.recordNo > b.record.recordNo; });
    beginInsertRows(QModelIndex(), 0, int(fresh.size()) - 1);
    m_rows = fresh + m_rows;
    endInsertRows();
}

qint64 AccessRecordModel::newestRecordNo() const
{
    return m_rows.isEmpty() ? 0 : m_rows.constFirst().record.recordNo;
}

const PassageRow& AccessRecordModel::passage(int row) const
{
    return m_rows.at(row);
}

int AccessRecordModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int AccessRecordModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : PassageColumns::Count;
}

QVariant AccessRecordModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return QVariant();
    return PassageColumns::data(m_rows.at(index.row()), index.column(), role);
}

QVariant AccessRecordModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole)
        return PassageColumns::header(section);
    return QAbstractTableModel::headerData(section, orientation, role);
}

bool AccessRecordModel::canFetchMore(const QModelIndex& parent) const
{
    return !parent.isValid() && !m_atEnd;
}

void AccessRecordModel::fetchMore(const QModelIndex& parent)
{
    if (parent.isValid() || m_atEnd || m_rows.isEmpty())
        return;
    QString reason;
    const QList<PassageRow> page = readPage(m_rows.constLast().record.recordNo, &reason);
    m_lastError = reason;
    // A failed read stops the paging; the refresh starts it again.
    m_atEnd = page.size() < m_pageSize;
    if (page.isEmpty())
        return;
    const int first = int(m_rows.size());
    beginInsertRows(QModelIndex(), first, first + int(page.size()) - 1);
    m_rows += page;
    endInsertRows();
}

void AccessRecordModel::retranslate()
{
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, PassageColumns::Count - 1);
    if (!m_rows.isEmpty())
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, PassageColumns::Count - 1));
}
