#include "ui/records/PassageColumns.h"

#include "store/Translate.h"
#include "ui/records/PassageRow.h"

#include <QBrush>
#include <QColor>
#include <QStyle>
#include <QTableView>

using namespace Qt::StringLiterals;

QString PassageColumns::header(int column)
{
    switch (column) {
    case RecordNo:
        return Translate(u"Kayit No"_s);
    case Time:
        return Translate(u"Tarih"_s);
    case Panel:
        return Translate(u"Panel"_s);
    case Door:
        return Translate(u"Kapı"_s);
    case UserId:
        return Translate(u"ID"_s);
    case Card:
        return Translate(u"Kart ID"_s);
    case Name:
        return Translate(u"Adı Soyadı"_s);
    case Direction:
        return Translate(u"Yön"_s);
    case Event:
        return Translate(u"Olay"_s);
    default:
        return QString();
    }
}

QVariant PassageColumns::data(const PassageRow& row, int column, int role)
{
    const RecordRow& r = row.record;
    if (role == Qt::ForegroundRole)
        return isRefusal(r.code) ? QVariant(QBrush(QColor(0xC6, 0x28, 0x28))) : QVariant();
    if (role == Qt::TextAlignmentRole) {
        const bool number
            = column == RecordNo || column == Panel || column == Door || column == UserId || column == Card;
        return number ? QVariant(int(Qt::AlignRight | Qt::AlignVCenter)) : QVariant();
    }
    if (role == Qt::UserRole)
        return r.recordNo;
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return QVariant();
    switch (column) {
    case RecordNo:
        return r.recordNo;
    case Time:
        return r.time.toString(u"dd/MM/yyyy HH:mm:ss"_s);
    case Panel:
        return r.panelId;
    case Door:
        return r.door;
    case UserId:
        return r.userId;
    case Card:
        return r.cardId;
    case Name:
        return row.name;
    case Direction:
        return r.direction == ::Direction::Entry ? Translate(u"İçeri"_s) : Translate(u"Dışarı"_s);
    case Event:
        return row.eventText.isEmpty() ? QString::number(storedNumber(r.code)) : Translate(row.eventText);
    default:
        return QVariant();
    }
}

void PassageColumns::fitMoment(QTableView* view, int column)
{
    view->setWordWrap(false);
    view->setColumnWidth(column,
                         view->fontMetrics().horizontalAdvance(u"88/88/8888 88:88:88"_s)
                             + 4 * view->style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, view));
}
