#include "ui/users/UserTableModel.h"

#include "operations/users/UserRepository.h"
#include "store/Translate.h"
#include "ui/common/ColumnHeading.h"

#include <QFont>
#include <QGuiApplication>

using namespace Qt::StringLiterals;

UserTableModel::UserTableModel(QObject* parent)
    : QAbstractTableModel(parent)
{ }

QString UserTableModel::columnName(int column)
{
    return UserRepository::columns().value(column);
}

QString UserTableModel::columnCaption(int column)
{
    return columnHeading(columnName(column));
}

void UserTableModel::setRows(const QList<UserRow>& rows)
{
    beginResetModel();
    m_rows = rows;
    m_pending.clear();
    endResetModel();
}

void UserTableModel::setChoices(int column, const QMap<int, QString>& choices)
{
    m_choices.insert(column, choices);
    if (!m_rows.isEmpty())
        Q_EMIT dataChanged(index(0, column), index(rowCount() - 1, column));
}

int UserTableModel::appendRow(const UserRow& row)
{
    const int at = rowCount();
    beginInsertRows(QModelIndex(), at, at);
    m_rows.append(row);
    m_pending.insert(at, true);
    endInsertRows();
    return at;
}

void UserTableModel::removeRowAt(int at)
{
    if (at < 0 || at >= rowCount())
        return;
    beginRemoveRows(QModelIndex(), at, at);
    m_rows.removeAt(at);
    QHash<int, bool> pending;
    for (auto it = m_pending.cbegin(); it != m_pending.cend(); ++it) {
        if (it.key() != at)
            pending.insert(it.key() > at ? it.key() - 1 : it.key(), it.value());
    }
    m_pending = pending;
    endRemoveRows();
}

QList<int> UserTableModel::pendingRows() const
{
    QList<int> rows;
    for (auto it = m_pending.cbegin(); it != m_pending.cend(); ++it) {
        if (it.value())
            rows.append(it.key());
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

void UserTableModel::markSaved(int at, const UserRow& stored)
{
    m_rows[at] = stored;
    m_pending.remove(at);
    Q_EMIT dataChanged(index(at, 0), index(at, ColumnCount - 1));
}

void UserTableModel::replaceRow(int at, const UserRow& row)
{
    m_rows[at] = row;
    m_pending.insert(at, true);
    Q_EMIT dataChanged(index(at, 0), index(at, ColumnCount - 1));
}

int UserTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int UserTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

bool UserTableModel::isChoiceColumn(int column)
{
    return column == UserType || column == PassageMode || column == Group || column == CalendarNo || column == Company
        || column == Department || column == Block;
}

bool UserTableModel::isFlagColumn(int column)
{
    return column == CalendarActive || column == TemporaryActive;
}

QVariant UserTableModel::editValue(const UserRow& row, int column) const
{
    switch (column) {
    case Id:
        return row.id;
    case Card:
        return row.cardId;
    case Name:
        return row.name;
    case Surname:
        return row.surname;
    case UserType:
        return storedNumber(row.userType);
    case Pin:
        return row.pin;
    case PassageMode:
        return row.passageMode;
    case Group:
        return row.groupNo;
    case CalendarActive:
        return row.calendarActive;
    case CalendarNo:
        return row.calendarNo;
    case TemporaryActive:
        return row.temporaryGroupActive;
    case TemporaryGroup:
        return row.temporaryGroupNo;
    case TemporaryDate:
        return row.temporaryGroupDate;
    case TemporaryTime:
        return row.temporaryGroupTime;
    case Company:
        return row.companyNo;
    case Department:
        return row.departmentNo;
    case Block:
        return row.blockNo;
    case Flat:
        return row.flat;
    case Plate:
        return row.plate;
    case IdentityNo:
        return row.identityNo;
    case Address:
        return row.address;
    case Picture:
        return row.picture;
    default:
        return {};
    }
}

bool UserTableModel::setEditValue(UserRow& row, int column, const QVariant& value)
{
    bool ok = true;
    const auto number = [&] { return value.toString().trimmed().toLongLong(&ok); };
    switch (column) {
    case Id:
        row.id = qint32(number());
        break;
    case Card:
        row.cardId = number();
        break;
    case Name:
        row.name = value.toString();
        break;
    case Surname:
        row.surname = value.toString();
        break;
    case UserType:
        row.userType = userTypeOf(qint32(number()));
        break;
    case Pin:
        row.pin = qint32(number());
        break;
    case PassageMode:
        row.passageMode = qint32(number());
        break;
    case Group:
        row.groupNo = qint32(number());
        break;
    case CalendarActive:
        row.calendarActive = value.toBool();
        break;
    case CalendarNo:
        row.calendarNo = qint32(number());
        break;
    case TemporaryActive:
        row.temporaryGroupActive = value.toBool();
        break;
    case TemporaryGroup:
        row.temporaryGroupNo = qint32(number());
        break;
    case TemporaryDate:
        row.temporaryGroupDate = value.toDate();
        break;
    case TemporaryTime:
        row.temporaryGroupTime = value.toTime();
        break;
    case Company:
        row.companyNo = qint32(number());
        break;
    case Department:
        row.departmentNo = qint32(number());
        break;
    case Block:
        row.blockNo = qint32(number());
        break;
    case Flat:
        row.flat = qint32(number());
        break;
    case Plate:
        row.plate = value.toString();
        break;
    case IdentityNo:
        row.identityNo = value.toString();
        break;
    case Address:
        row.address = value.toString();
        break;
    case Picture:
        row.picture = value.toString().trimmed();
        break;
    default:
        return false;
    }
    return ok;
}

QString UserTableModel::isolated(const QString& name)
{
    // Right to left, "2 - Bayram" would read "Bayram - 2": a name takes the direction of its
    // own first letter.
    if (QGuiApplication::layoutDirection() != Qt::RightToLeft || name.isEmpty())
        return name;
    return QChar(0x2068) + name + QChar(0x2069);
}

QVariant UserTableModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const UserRow& row = m_rows.at(index.row());
    const int column = index.column();
    if (role == Qt::EditRole)
        return editValue(row, column);
    if (role == ChoicesRole) {
        QVariantList choices;
        const QMap<int, QString> names = m_choices.value(column);
        // Each pair goes in as one element: appending a list would splice its items in instead.
        for (auto it = names.cbegin(); it != names.cend(); ++it)
            choices.append(QVariant(QVariantList{ it.key(), it.value() }));
        return choices;
    }
    if (role == Qt::CheckStateRole && isFlagColumn(column))
        return editValue(row, column).toBool() ? Qt::Checked : Qt::Unchecked;
    if (role == Qt::FontRole && isPending(index.row())) {
        QFont font;
        font.setItalic(true);
        return font;
    }
    if (role != Qt::DisplayRole || isFlagColumn(column))
        return {};
    const QVariant value = editValue(row, column);
    if (isChoiceColumn(column)) {
        const auto names = m_choices.constFind(column);
        if (names != m_choices.cend() && names->contains(value.toInt()))
            return isolated(names->value(value.toInt()));
        return value;
    }
    if (column == TemporaryDate)
        return row.temporaryGroupDate.isValid() ? row.temporaryGroupDate.toString(u"dd/MM/yyyy"_s) : QString();
    if (column == TemporaryTime)
        return row.temporaryGroupTime.isValid() ? row.temporaryGroupTime.toString(u"HH:mm"_s) : QString();
    return value;
}

bool UserTableModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid() || index.row() >= rowCount())
        return false;
    UserRow changed = m_rows.at(index.row());
    QVariant taken = value;
    if (role == Qt::CheckStateRole && isFlagColumn(index.column()))
        taken = value.toInt() == Qt::Checked;
    else if (role != Qt::EditRole)
        return false;
    if (!setEditValue(changed, index.column(), taken))
        return false;
    if (changed == m_rows.at(index.row()))
        return true;
    m_rows[index.row()] = changed;
    m_pending.insert(index.row(), true);
    Q_EMIT dataChanged(this->index(index.row(), 0), this->index(index.row(), ColumnCount - 1));
    return true;
}

Qt::ItemFlags UserTableModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (isFlagColumn(index.column()))
        return f | Qt::ItemIsUserCheckable;
    return f | Qt::ItemIsEditable;
}

QVariant UserTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    return Translate(columnCaption(section));
}

void UserTableModel::retranslate()
{
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, ColumnCount - 1);
}
