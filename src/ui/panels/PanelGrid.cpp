#include "ui/panels/PanelGrid.h"

#include "operations/panels/PanelRoster.h"
#include "store/Translate.h"

#include <QHeaderView>

using namespace Qt::StringLiterals;

PanelGrid::PanelGrid(const QString& name, PanelRoster& roster, QWidget* parent)
    : QTableWidget(parent)
    , m_roster(roster)
{
    setObjectName(name);
    setColumnCount(6);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    verticalHeader()->setVisible(false);
    horizontalHeader()->setStretchLastSection(true);
    retranslate();

    connect(&m_roster, &PanelRoster::reloaded, this, &PanelGrid::fill);
    connect(&m_roster, &PanelRoster::selectionChanged, this, &PanelGrid::showSelection);
    connect(this, &QTableWidget::currentCellChanged, this, [this](int row) {
        if (!m_filling && row >= 0 && row + 1 != m_roster.selectedPosition())
            m_roster.select(row + 1);
    });
    connect(this, &QTableWidget::cellDoubleClicked, this, [this](int row) {
        if (row >= 0)
            Q_EMIT panelActivated(row + 1);
    });
    fill();
}

void PanelGrid::retranslate()
{
    setHorizontalHeaderLabels({ Translate(u"Seri No"_s), Translate(u"Panel No"_s), Translate(u"Panel Adı"_s),
                                Translate(u"IP Adresi"_s), Translate(u"Saat Farkı (sn)"_s),
                                Translate(u"Veri Durumu"_s) });
    // Headers of another language have other widths.
    resizeColumnsToContents();
}

void PanelGrid::fill()
{
    m_filling = true;
    const QList<PanelEntry> entries = m_roster.entries();
    clearContents();
    setRowCount(int(entries.size()));
    for (int row = 0; row < entries.size(); ++row) {
        const PanelEntry& entry = entries.at(row);
        auto* serial = new QTableWidgetItem(entry.serialText());
        serial->setTextAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
        auto* number = new QTableWidgetItem(QString::number(entry.panelNumber));
        number->setTextAlignment(Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter);
        auto* name = new QTableWidgetItem(entry.name.trimmed());
        name->setTextAlignment(Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter);
        auto* ip = new QTableWidgetItem(entry.ip.trimmed());
        // How far the panel's clock was from the station's when it was last read.
        const std::optional<qint32> drift = entry.clockOffset;
        auto* offset
            = new QTableWidgetItem(drift ? (*drift > 0 ? u"+"_s : QString()) + QString::number(*drift) : QString());
        offset->setTextAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
        // Data changed in the database since it was last sent to the panel.
        auto* step = new QTableWidgetItem(entry.outOfStep ? Translate(u"Güncel Değil"_s) : QString());
        const bool reachable = m_roster.isReachable(entry.position);
        for (QTableWidgetItem* item : { serial, number, name, ip, offset, step }) {
            // A client station shows the panels it may not reach greyed out.
            if (!reachable)
                item->setForeground(palette().brush(QPalette::Disabled, QPalette::Text));
        }
        setItem(row, 0, serial);
        setItem(row, 1, number);
        setItem(row, 2, name);
        setItem(row, 3, ip);
        setItem(row, 4, offset);
        setItem(row, 5, step);
    }
    resizeColumnsToContents();
    m_filling = false;
    showSelection(m_roster.selectedPosition());
}

int PanelGrid::currentPosition() const
{
    return currentRow() >= 0 ? currentRow() + 1 : 0;
}

void PanelGrid::showSelection(int position)
{
    if (position < 1 || position > rowCount() || currentRow() == position - 1)
        return;
    m_filling = true;
    setCurrentCell(position - 1, 0);
    m_filling = false;
}
