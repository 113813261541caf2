#include "ui/records/AccessRecordModel.h"

#include "operations/records/PassageHistory.h"
#include "ui/records/PassageColumns.h"
#include "ui/records/PassageNames.h"

#include <algorithm>

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
    QList<PassageRow> page;
    for (const PassageHistory::Entry& entry : PassageHistory(m_db).page(before, m_pageSize, error))
        page << PassageRow{ entry.record, entry.name, m_names.eventText(entry.record.code) };
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
