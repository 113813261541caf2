#include "ui/configuration/GroupDetailGrid.h"

#include "operations/configuration/TimeGroupRepository.h"
#include "operations/configuration/ZoneRepository.h"
#include "store/Translate.h"
#include "ui/configuration/GlobalZonePicker.h"
#include "ui/configuration/TimeGroupPicker.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QStandardItemModel>

using namespace Qt::StringLiterals;

GroupDetailGrid::GroupDetailGrid(const Database& db, QWidget* parent)
    : QTableView(parent)
    , m_db(db)
{
    setObjectName(u"datGroupsDetail"_s);
    m_model = new QStandardItemModel(0, ColumnCount, this);
    setModel(m_model);
    setSelectionBehavior(QAbstractItemView::SelectItems);
    setSelectionMode(QAbstractItemView::SingleSelection);
    // Door boxes are ticked in place; time groups and zones go through their pickers.
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    verticalHeader()->setVisible(false);
    connect(this, &QAbstractItemView::activated, this, &GroupDetailGrid::pick);
    connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this, &GroupDetailGrid::currentDetailChanged);
    connect(m_model, &QStandardItemModel::itemChanged, this, [this](QStandardItem* item) {
        const int door = item->column() - FirstDoor;
        if (m_filling || door < 0 || door > 3 || item->row() >= m_rows.size())
            return;
        m_rows[item->row()].doors[door] = item->checkState() == Qt::Checked;
    });
    retranslate();
}

void GroupDetailGrid::readNames()
{
    m_timeGroupNames.clear();
    for (const TimeGroupRepository::Entry& entry : TimeGroupRepository(m_db).entries())
        m_timeGroupNames.insert(entry.number, entry.name.trimmed());
    m_zoneNames.clear();
    for (const ZoneRepository::Row& zone : ZoneRepository(m_db).list())
        m_zoneNames.insert(zone.number, zone.name.trimmed());
}

QString GroupDetailGrid::doorName(const GroupDetailRow& row, int door)
{
    const QString name = row.doorNames[door].trimmed();
    return name.isEmpty() ? Translate(u"Kapı"_s) + u' ' + QString::number(door + 1) : name;
}

QString GroupDetailGrid::timeGroupText(int number) const
{
    if (number == 0)
        return u"-"_s;
    const QString name = m_timeGroupNames.value(number);
    return name.isEmpty() ? QString::number(number) : name;
}

QString GroupDetailGrid::zoneText(int number) const
{
    const QString name = m_zoneNames.value(number);
    return name.isEmpty() ? QString::number(number) : name;
}

void GroupDetailGrid::setRows(const QList<GroupDetailRow>& rows)
{
    readNames();
    m_filling = true;
    m_rows = rows;
    m_model->removeRows(0, m_model->rowCount());
    for (int row = 0; row < m_rows.size(); ++row) {
        QList<QStandardItem*> items;
        for (int column = 0; column < ColumnCount; ++column) {
            auto* item = new QStandardItem;
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
            items << item;
        }
        m_model->appendRow(items);
        showRow(row);
    }
    m_filling = false;
    resizeColumnsToContents();
    if (!m_rows.isEmpty())
        setCurrentIndex(m_model->index(0, FirstDoor));
    Q_EMIT currentDetailChanged();
}

void GroupDetailGrid::showRow(int row)
{
    const bool filling = std::exchange(m_filling, true);
    const GroupDetailRow& r = m_rows.at(row);
    m_model->item(row, PanelNo)->setData(r.panelNo, Qt::DisplayRole);
    m_model->item(row, PanelName)->setText(r.panelName.trimmed());
    for (int d = 0; d < 4; ++d) {
        QStandardItem* door = m_model->item(row, FirstDoor + d);
        door->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        door->setCheckState(r.doors[d] ? Qt::Checked : Qt::Unchecked);
        door->setText(doorName(r, d));
        QStandardItem* timeGroup = m_model->item(row, FirstTimeGroup + d);
        timeGroup->setText(timeGroupText(r.doorTimeGroups[d]));
        timeGroup->setData(r.doorTimeGroups[d], Qt::UserRole);
        timeGroup->setToolTip(QString::number(r.doorTimeGroups[d]));
        QStandardItem* zone = m_model->item(row, FirstZone + d);
        zone->setText(zoneText(r.doorZones[d]));
        zone->setData(r.doorZones[d], Qt::UserRole);
        zone->setToolTip(QString::number(r.doorZones[d]));
    }
    m_filling = filling;
}

QList<GroupDetailRow> GroupDetailGrid::rows() const
{
    return m_rows;
}

const GroupDetailRow* GroupDetailGrid::currentDetail() const
{
    const int row = currentIndex().row();
    return row >= 0 && row < m_rows.size() ? &m_rows.at(row) : nullptr;
}

void GroupDetailGrid::setTimeGroup(int row, int door, int number)
{
    m_rows[row].doorTimeGroups[door] = number;
    showRow(row);
}

void GroupDetailGrid::setZone(int row, int door, int number)
{
    m_rows[row].doorZones[door] = number;
    showRow(row);
}

void GroupDetailGrid::pick(const QModelIndex& index)
{
    const int row = index.row();
    if (row < 0 || row >= m_rows.size())
        return;
    const int column = index.column();
    if (column >= FirstTimeGroup && column < FirstZone) {
        const int door = column - FirstTimeGroup;
        if (const auto chosen = pickTimeGroup(this, m_db, m_rows.at(row).doorTimeGroups[door]))
            setTimeGroup(row, door, chosen->number);
    } else if (column >= FirstZone && column < ColumnCount) {
        const int door = column - FirstZone;
        if (const auto chosen = pickGlobalZone(this, m_db, m_rows.at(row).doorZones[door]))
            setZone(row, door, chosen->number);
    }
}

void GroupDetailGrid::keyPressEvent(QKeyEvent* event)
{
    const QModelIndex at = currentIndex();
    if ((event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace) && at.isValid()
        && at.column() >= FirstTimeGroup && at.column() < FirstZone && at.row() < m_rows.size()) {
        setTimeGroup(at.row(), at.column() - FirstTimeGroup, 0);
        return;
    }
    QTableView::keyPressEvent(event);
}

void GroupDetailGrid::retranslate()
{
    QStringList headers{ Translate(u"Panel No"_s), Translate(u"Panel Adı"_s) };
    for (const QString& kind : { u"Kapı"_s, u"Zaman Grubu"_s, u"Global Bölge"_s }) {
        for (int d = 1; d <= 4; ++d)
            headers << Translate(kind) + u' ' + QString::number(d);
    }
    m_model->setHorizontalHeaderLabels(headers);
    for (int row = 0; row < m_rows.size(); ++row)
        showRow(row);
    resizeColumnsToContents();
}
