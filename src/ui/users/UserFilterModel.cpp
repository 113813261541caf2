#include "ui/users/UserFilterModel.h"

#include "store/SearchText.h"
#include "ui/users/UserTableModel.h"

UserFilterModel::UserFilterModel(QObject* parent)
    : QSortFilterProxyModel(parent)
{ }

void UserFilterModel::setSearchText(const QString& text)
{
    const QString trimmed = text.trimmed();
    if (trimmed == m_text)
        return;
    m_text = trimmed;
    invalidateFilter();
}

bool UserFilterModel::filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const
{
    if (m_text.isEmpty())
        return true;
    for (int column : { UserTableModel::Id, UserTableModel::Card, UserTableModel::Name, UserTableModel::Surname }) {
        const QModelIndex at = sourceModel()->index(sourceRow, column, sourceParent);
        if (SearchText::contains(at.data(Qt::EditRole).toString(), m_text))
            return true;
    }
    return false;
}
