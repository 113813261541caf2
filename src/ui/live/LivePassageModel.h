#pragma once

#include "ui/records/PassageRow.h"

#include <QAbstractTableModel>
#include <deque>

// The monitoring grid's rows: live passages appended as they are stored, never read back from
// the database. Only the newest `capacity` rows are kept; older ones leave from the top.
class LivePassageModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    static constexpr int DefaultCapacity = 5000;

    explicit LivePassageModel(int capacity = DefaultCapacity, QObject* parent = nullptr);

    int capacity() const { return m_capacity; }
    // Appends in the order given; rows beyond the capacity are dropped oldest first.
    void append(const QList<PassageRow>& rows);
    void clear();
    const PassageRow& passage(int row) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    // Headers and translated cells are shown again in the current language.
    void retranslate();

private:
    int m_capacity;
    std::deque<PassageRow> m_rows;
};
