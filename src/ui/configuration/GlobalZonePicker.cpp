#include "ui/configuration/GlobalZonePicker.h"

#include "ui/common/frmParameter.h"

#include <QDebug>
#include <QStandardItemModel>

using namespace Qt::StringLiterals;

namespace {
const QString kNumber = u"Global Bolge No"_s;
const QString kName = u"Global Bolge Adi"_s;
} // namespace

std::optional<ZoneRepository::Row> pickGlobalZone(QWidget* parent, const Database& db, int current)
{
    QString error;
    const QList<ZoneRepository::Row> zones = ZoneRepository(db).list(&error);
    if (!error.isEmpty())
        qWarning().noquote() << "zone list:" << error;
    // The search dialog translates the headers; they stay the Turkish column names here.
    QStandardItemModel list(0, 2);
    list.setHorizontalHeaderLabels({ kNumber, kName });
    for (const ZoneRepository::Row& zone : zones) {
        auto* number = new QStandardItem;
        number->setData(zone.number, Qt::DisplayRole);
        list.appendRow({ number, new QStandardItem(zone.name) });
    }
    frmParameter dialog(&list, u"Global Bölge Seçimi"_s, parent);
    if (current > 0)
        dialog.selectValue(kNumber, current);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    const QVariant chosen = dialog.selectedValue(kNumber);
    if (!chosen.isValid())
        return std::nullopt;
    return ZoneRepository::Row{ chosen.toInt(), dialog.selectedValue(kName).toString() };
}
