#include "reports/ZoneDoors.h"

#include "store/Database.h"

#include <QSqlQuery>

using namespace Qt::StringLiterals;

ZoneDoors ZoneDoors::load(const Database& db, int zone, const QList<int>* onlyPanels, QString* error)
{
    ZoneDoors result;
    QStringList columns = { u"Panel ID"_s, u"Panel Global Bolge1"_s, u"Panel Global Bolge2"_s };
    for (int d = 1; d <= 4; ++d)
        columns << u"Kapi"_s + QString::number(d) + u" Lokal Bolge"_s;
    const QString sql
        = u"SELECT "_s + Database::quotedList(columns) + u" FROM \"PanelSettings\" ORDER BY \"Sira No\""_s;
    for (const QVariantList& row : db.rows(sql, {}, error)) {
        const int panel = row.value(0).toInt();
        if (onlyPanels && !onlyPanels->contains(panel))
            continue;
        const int global1 = row.value(1).toInt();
        const int global2 = row.value(2).toInt();
        for (int d = 1; d <= 4; ++d) {
            const int local = row.value(2 + d).toInt();
            const int global = local == 2 ? global2 : global1;
            if (global == zone && !result.m_doors[panel].contains(d))
                result.m_doors[panel] << d;
        }
        if (result.m_doors.contains(panel) && result.m_doors[panel].isEmpty())
            result.m_doors.remove(panel);
    }
    return result;
}

QString ZoneDoors::zoneName(const Database& db, int zone)
{
    return db.scalar(u"SELECT \"Global Bolge Adi\" FROM \"GlobalZones\" WHERE \"Global Bolge No\" = ?"_s, { zone })
        .toString();
}
