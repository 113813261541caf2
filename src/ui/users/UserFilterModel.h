#pragma once

#include <QSortFilterProxyModel>

// Narrows the users grid to the rows whose ID, card number, name or surname contain the searched
// text (letter case ignored); other columns (PIN, group...) would match almost any number.
class UserFilterModel : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit UserFilterModel(QObject* parent = nullptr);

    void setSearchText(const QString& text);

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;

private:
    QString m_text;
};
