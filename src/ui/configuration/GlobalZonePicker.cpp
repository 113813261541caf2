#include "ui/configuration/GlobalZonePicker.h"

#include "ui/common/NumberedNamePicker.h"

#include <QDebug>

using namespace Qt::StringLiterals;

std::optional<ZoneRepository::Row> pickGlobalZone(QWidget* parent, const Database& db, int current)
{
    QString error;
    QList<NumberedName> rows;
    for (const ZoneRepository::Row& zone : ZoneRepository(db).list(&error))
        rows << NumberedName{ zone.number, zone.name };
    if (!error.isEmpty())
        qWarning().noquote() << "zone list:" << error;
    const auto chosen = pickNumberedName(parent, u"Global Bölge Seçimi"_s, u"Global Bolge No"_s, u"Global Bolge Adi"_s,
                                         rows, current);
    if (!chosen)
        return std::nullopt;
    return ZoneRepository::Row{ chosen->number, chosen->name };
}
