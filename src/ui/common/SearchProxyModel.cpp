#include "ui/common/SearchProxyModel.h"

#include "store/Translate.h"

SearchProxyModel::SearchProxyModel(QObject* parent)
    : QSortFilterProxyModel(parent)
{ }

void SearchProxyModel::setCriterion(int column, const SearchFilter::Criterion& criterion)
{
    m_column = column;
    m_criterion = criterion;
    invalidateRowsFilter();
}

void SearchProxyModel::clearCriterion()
{
    m_criterion.reset();
    invalidateRowsFilter();
}

bool SearchProxyModel::filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const
{
    if (!m_criterion || m_column < 0)
        return true;
    return m_criterion->matches(sourceModel()->index(sourceRow, m_column, sourceParent).data(Qt::EditRole));
}

QVariant SearchProxyModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    const QVariant data = QSortFilterProxyModel::headerData(section, orientation, role);
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole)
        return Translate(data.toString());
    return data;
}
