#pragma once

#include "reports/ReportColumn.h"

#include <QAbstractTableModel>
#include <memory>

class ReportRowSource;

// The rows of a report for a grid, read from the source as the grid needs them: the first
// screen at once, more when the person scrolls towards the end. Column captions are shown in
// the current language.
class ReportGridModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit ReportGridModel(QObject* parent = nullptr);
    ~ReportGridModel() override;

    // Shows the rows of an opened source (the model keeps it); null shows nothing.
    void setSource(std::unique_ptr<ReportRowSource> source);
    void clear();
    // Reads every remaining row (before printing the grid's contents or in tests).
    void fetchAll();
    // Headers again in the current language.
    void retranslate();

    const QList<ReportColumn>& columns() const { return m_columns; }
    // Every row read so far, as the grid shows them.
    const QList<QVariantList>& rows() const { return m_rows; }
    // The stored value (QDateTime, number, text) of a cell.
    QVariant value(int row, int column) const;
    // A reading error met while fetching, if any.
    QString error() const;

    // How many rows the first screen and each later step read.
    static int firstScreen() { return 200; }
    static int step() { return 500; }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;

private:
    void append(int maxRows);

    std::unique_ptr<ReportRowSource> m_source;
    QList<ReportColumn> m_columns;
    QList<QVariantList> m_rows;
    bool m_appending = false;
};
