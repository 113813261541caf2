#include "ui/configuration/TimeGroupPicker.h"

#include "ui/common/frmParameter.h"

#include <QDebug>
#include <QStandardItemModel>

using namespace Qt::StringLiterals;

namespace {
const QString kNumber = u"Zaman Grup No"_s;
const QString kName = u"Zaman Grup Adi"_s;
} // namespace

std::optional<TimeGroupRepository::Entry> pickTimeGroup(QWidget* parent, const Database& db, int current)
{
    QString error;
    const QList<TimeGroupRepository::Entry> entries = TimeGroupRepository(db).entries(&error);
    if (!error.isEmpty())
        qWarning().noquote() << "time group list:" << error;
    // The search dialog translates the headers; they stay the Turkish column names here.
    QStandardItemModel list(0, 2);
    list.setHorizontalHeaderLabels({ kNumber, kName });
    for (const TimeGroupRepository::Entry& entry : entries) {
        auto* number = new QStandardItem;
        number->setData(entry.number, Qt::DisplayRole);
        list.appendRow({ number, new QStandardItem(entry.name) });
    }
    frmParameter dialog(&list, u"Zaman Grup Arama"_s, parent);
    if (current > 0)
        dialog.selectValue(kNumber, current);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    const QVariant chosen = dialog.selectedValue(kNumber);
    if (!chosen.isValid())
        return std::nullopt;
    return TimeGroupRepository::Entry{ chosen.toInt(), dialog.selectedValue(kName).toString() };
}
