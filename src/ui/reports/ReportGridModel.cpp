#include "ui/reports/ReportGridModel.h"

#include "reports/ReportRowSource.h"
#include "reports/ReportValueText.h"
#include "store/Translate.h"

#include <QGuiApplication>

ReportGridModel::ReportGridModel(QObject* parent)
    : QAbstractTableModel(parent)
{ }

ReportGridModel::~ReportGridModel() = default;

void ReportGridModel::setSource(std::unique_ptr<ReportRowSource> source)
{
    // Views asking for rows while they hear of the reset get the first screen right after.
    m_appending = true;
    beginResetModel();
    m_rows.clear();
    m_source = std::move(source);
    m_columns = m_source ? m_source->columns() : QList<ReportColumn>();
    endResetModel();
    m_appending = false;
    append(firstScreen());
}

void ReportGridModel::clear()
{
    setSource(nullptr);
}

void ReportGridModel::fetchAll()
{
    while (canFetchMore(QModelIndex()) && !m_appending)
        append(step() * 10);
}

void ReportGridModel::retranslate()
{
    if (!m_columns.isEmpty())
        emit headerDataChanged(Qt::Horizontal, 0, int(m_columns.size()) - 1);
}

QVariant ReportGridModel::value(int row, int column) const
{
    if (row < 0 || row >= m_rows.size())
        return QVariant();
    return m_rows.at(row).value(column);
}

QString ReportGridModel::error() const
{
    return m_source ? m_source->error() : QString();
}

int ReportGridModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int ReportGridModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_columns.size());
}

QVariant ReportGridModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_rows.size() || index.column() >= m_columns.size())
        return QVariant();
    const ReportColumn& column = m_columns.at(index.column());
    switch (role) {
    case Qt::DisplayRole: {
        // As every output of the report shows it.
        QString text = ReportValueText::text(m_rows.at(index.row()).value(index.column()), column);
        // Held in Turkish, shown in the language of the moment.
        if (ReportRowSource::isStationText(column.type))
            text = Translate(text);
        if (text.isEmpty() || QGuiApplication::layoutDirection() != Qt::RightToLeft)
            return text;
        // In a right-to-left grid a date and its time would trade places and a plate "34 AB 1"
        // would read "AB 1 34": dates and times are one left-to-right run, other values take the
        // direction of their own first letter.
        const bool timeLike = column.type == ReportColumn::Type::DateTime || column.type == ReportColumn::Type::Date
            || column.type == ReportColumn::Type::Duration;
        return QString((timeLike ? QChar(0x2066) : QChar(0x2068)) + text + QChar(0x2069));
    }
    case Qt::TextAlignmentRole:
        if (column.type == ReportColumn::Type::Integer)
            return QVariant(Qt::AlignRight | Qt::AlignVCenter);
        return QVariant(Qt::AlignLeft | Qt::AlignVCenter);
    default:
        return QVariant();
    }
}

QVariant ReportGridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole)
        return QVariant();
    if (orientation == Qt::Vertical)
        return section + 1;
    if (section < 0 || section >= m_columns.size())
        return QVariant();
    return Translate(m_columns.at(section).caption);
}

bool ReportGridModel::canFetchMore(const QModelIndex& parent) const
{
    return !parent.isValid() && m_source && !m_source->atEnd();
}

void ReportGridModel::fetchMore(const QModelIndex& parent)
{
    if (!parent.isValid())
        append(step());
}

void ReportGridModel::append(int maxRows)
{
    // A view may ask for more while it hears of the rows just added; it asks again on scrolling.
    if (m_appending || !m_source || m_source->atEnd())
        return;
    m_appending = true;
    QList<QVariantList> rows = m_source->fetch(maxRows);
    if (!rows.isEmpty()) {
        const int first = int(m_rows.size());
        beginInsertRows(QModelIndex(), first, first + int(rows.size()) - 1);
        m_rows += std::move(rows);
        endInsertRows();
    }
    m_appending = false;
}
