#include "operations/panels/PanelsPushPort.h"

#include "store/Database.h"

using namespace Qt::Literals::StringLiterals;

quint16 PanelsPushPort(const Database& db)
{
    const QVariant port = db.scalar(u"SELECT \"Panel Remote TCP Port\" FROM \"PanelSettings\" "
                                    u"WHERE \"Panel Remote TCP Port\" > 0 "
                                    u"GROUP BY \"Panel Remote TCP Port\" ORDER BY COUNT(*) DESC"_s);
    return static_cast<quint16>(port.toUInt());
}
