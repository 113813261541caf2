#pragma once

#include "store/SearchFilter.h"

#include <QSortFilterProxyModel>
#include <optional>

// Shows the rows of a list that meet the search dialog's criterion on one column; the criterion
// is applied to the values in memory, never as SQL.
class SearchProxyModel : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit SearchProxyModel(QObject* parent = nullptr);

    void setCriterion(int column, const SearchFilter::Criterion& criterion);
    void clearCriterion();
    bool hasCriterion() const { return m_criterion.has_value(); }

    // Column titles in the current language (the list's own titles are the Turkish names).
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;

private:
    int m_column = -1;
    std::optional<SearchFilter::Criterion> m_criterion;
};
