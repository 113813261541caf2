#pragma once

#include "ui/records/PassageRow.h"

#include <QAbstractTableModel>
#include <QList>

class Database;
class PassageNames;

// The access-record grid's rows, newest first, read from AccessDatas a page at a time as the
// view scrolls down (the view asks through canFetchMore/fetchMore). Newer rows can be put on
// top without reading the table again.
class AccessRecordModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    static constexpr int DefaultPageSize = 200;

    AccessRecordModel(const Database& db, PassageNames& names, QObject* parent = nullptr);

    void setPageSize(int rows);
    int pageSize() const { return m_pageSize; }

    // Reads the newest page again (the grid is reset).
    bool reload(QString* error = nullptr);
    // Puts on top the rows newer than the newest shown, newest first; older ones are left out
    // (they are shown already or will come with the pages further down).
    void addNewer(const QList<PassageRow>& rows);
    // "Kayit No" of the newest row shown, 0 when there is none.
    qint64 newestRecordNo() const;
    const PassageRow& passage(int row) const;
    QString lastError() const { return m_lastError; }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;

    void retranslate();

private:
    // One page of the rows older than `before`; the newest page when before is 0.
    QList<PassageRow> readPage(qint64 before, QString* error);

    const Database& m_db;
    PassageNames& m_names;
    QList<PassageRow> m_rows;
    int m_pageSize = DefaultPageSize;
    bool m_atEnd = true;
    QString m_lastError;
};
