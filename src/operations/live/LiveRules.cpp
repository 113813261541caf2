#include "operations/live/LiveRules.h"

#include "store/Database.h"

using namespace Qt::StringLiterals;

LiveRules LiveRules::read(const Database& db, QString* error)
{
    LiveRules rules;
    QSqlQuery q = db.query(
        u"SELECT \"LiveAPBInvalid\", \"LiveDeniedInvalid\", \"LiveUnknownInvalid\" FROM \"ProgInit\""_s, {}, error);
    if (q.isActive() && q.next()) {
        rules.dropAntiPassback = q.value(0).toInt() != 0;
        rules.dropDenied = q.value(1).toInt() != 0;
        rules.dropUnknown = q.value(2).toInt() != 0;
    }
    return rules;
}

bool LiveRules::write(const Database& db, QString* error) const
{
    const QStringList columns{ u"LiveAPBInvalid"_s, u"LiveDeniedInvalid"_s, u"LiveUnknownInvalid"_s };
    const QVariantList values{ dropAntiPassback ? 1 : 0, dropDenied ? 1 : 0, dropUnknown ? 1 : 0 };
    if (db.scalar(u"SELECT count(*) FROM \"ProgInit\""_s, {}, error).toInt() == 0)
        return db.insert(u"ProgInit"_s, columns, values, error);
    return db.exec(u"UPDATE \"ProgInit\" SET \"LiveAPBInvalid\" = ?, \"LiveDeniedInvalid\" = ?, "
                   u"\"LiveUnknownInvalid\" = ?"_s,
                   values, error);
}

bool LiveRules::keeps(PassageCode code) const
{
    switch (code) {
    case PassageCode::Denied:
        return !dropDenied;
    case PassageCode::AntiPassback:
        return !dropAntiPassback;
    case PassageCode::UnknownCard:
        return !dropUnknown;
    default:
        return true;
    }
}
