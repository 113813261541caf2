#include "operations/users/CalendarChoices.h"

#include "store/Database.h"

using namespace Qt::StringLiterals;

QMap<int, QString> CalendarChoices::read(const Database& db, QString* error)
{
    QMap<int, QString> names;
    for (int number = 1; number <= kHighest; ++number)
        names.insert(number, QString::number(number));
    const QList<QVariantList> rows
        = db.rows(u"SELECT \"Grup Takvimi No\", \"Grup Takvimi Adi\" FROM \"TimeZoneCalendar\""
                  u" WHERE \"Grup Takvimi No\" >= ? AND \"Grup Takvimi No\" <= ?"_s,
                  { 1, kHighest }, error);
    for (const QVariantList& row : rows) {
        const QString name = row.value(1).toString().trimmed();
        if (!name.isEmpty())
            names.insert(row.value(0).toInt(), QString::number(row.value(0).toInt()) + u" - "_s + name);
    }
    return names;
}
