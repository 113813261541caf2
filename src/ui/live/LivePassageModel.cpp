#include "ui/live/LivePassageModel.h"

#include "ui/records/PassageColumns.h"

LivePassageModel::LivePassageModel(int capacity, QObject* parent)
    : QAbstractTableModel(parent)
    , m_capacity(qMax(1, capacity))
{ }

void LivePassageModel::append(const QList<PassageRow>& rows)
{
    if (rows.isEmpty())
        return;
    // A batch larger than the whole window only leaves its newest rows.
    const qsizetype skip = qMax<qsizetype>(0, rows.size() - m_capacity);
    const int incoming = int(rows.size() - skip);
    const int overflow = int(m_rows.size()) + incoming - m_capacity;
    if (overflow > 0) {
        beginRemoveRows(QModelIndex(), 0, overflow - 1);
        m_rows.erase(m_rows.begin(), m_rows.begin() + overflow);
        endRemoveRows();
    }
    const int first = int(m_rows.size());
    beginInsertRows(QModelIndex(), first, first + incoming - 1);
    m_rows.insert(m_rows.end(), rows.cbegin() + skip, rows.cend());
    endInsertRows();
}

void LivePassageModel::clear()
{
    if (m_rows.empty())
        return;
    beginRemoveRows(QModelIndex(), 0, int(m_rows.size()) - 1);
    m_rows.clear();
    endRemoveRows();
}

const PassageRow& LivePassageModel::passage(int row) const
{
    return m_rows.at(size_t(row));
}

int LivePassageModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int LivePassageModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : PassageColumns::Count;
}

QVariant LivePassageModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return QVariant();
    return PassageColumns::data(m_rows.at(size_t(index.row())), index.column(), role);
}

QVariant LivePassageModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole)
        return PassageColumns::header(section);
    return QAbstractTableModel::headerData(section, orientation, role);
}

void LivePassageModel::retranslate()
{
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, PassageColumns::Count - 1);
    if (!m_rows.empty())
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, PassageColumns::Count - 1));
}
