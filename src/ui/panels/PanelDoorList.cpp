#include "ui/panels/PanelDoorList.h"

#include "operations/panels/PanelRepository.h"
#include "operations/panels/PanelRoster.h"
#include "store/Translate.h"

#include <QHeaderView>

using namespace Qt::StringLiterals;

PanelDoorList::PanelDoorList(const Database& db, PanelRoster& roster, QWidget* parent)
    : QTableWidget(parent)
    , m_db(db)
{
    setObjectName(u"grdDoorList"_s);
    setColumnCount(4);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    verticalHeader()->setVisible(false);
    horizontalHeader()->setStretchLastSection(true);
    retranslate();
    connect(&roster, &PanelRoster::reloaded, this, &PanelDoorList::fill);
}

void PanelDoorList::retranslate()
{
    setHorizontalHeaderLabels(
        { Translate(u"Panel No"_s), Translate(u"Kapı No"_s), Translate(u"Kapı Adı"_s), Translate(u"Aktif"_s) });
    fill();
}

void PanelDoorList::fill()
{
    const QList<PanelRepository::Door> doors = PanelRepository(m_db).doors();
    clearContents();
    setRowCount(int(doors.size()));
    for (int row = 0; row < doors.size(); ++row) {
        const PanelRepository::Door& door = doors.at(row);
        const QStringList cells{ QString::number(door.panelNumber), QString::number(door.door), door.name,
                                 Translate(door.active ? u"Evet"_s : u"Hayır"_s) };
        for (int column = 0; column < cells.size(); ++column)
            setItem(row, column, new QTableWidgetItem(cells.at(column)));
    }
    resizeColumnsToContents();
}
