#include "ui/configuration/TimeGroupPicker.h"

#include "ui/common/NumberedNamePicker.h"

#include <QDebug>

using namespace Qt::StringLiterals;

std::optional<TimeGroupRepository::Entry> pickTimeGroup(QWidget* parent, const Database& db, int current)
{
    QString error;
    QList<NumberedName> rows;
    for (const TimeGroupRepository::Entry& entry : TimeGroupRepository(db).entries(&error))
        rows << NumberedName{ entry.number, entry.name };
    if (!error.isEmpty())
        qWarning().noquote() << "time group list:" << error;
    const auto chosen
        = pickNumberedName(parent, u"Zaman Grup Arama"_s, u"Zaman Grup No"_s, u"Zaman Grup Adi"_s, rows, current);
    if (!chosen)
        return std::nullopt;
    return TimeGroupRepository::Entry{ chosen->number, chosen->name };
}
