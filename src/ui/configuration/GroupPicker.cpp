#include "ui/configuration/GroupPicker.h"

#include "ui/common/NumberedNamePicker.h"

#include <QDebug>

using namespace Qt::StringLiterals;

std::optional<GroupRepository::Row> pickGroup(QWidget* parent, const Database& db, int current)
{
    QString error;
    QList<NumberedName> rows;
    for (const GroupRepository::Row& group : GroupRepository(db).list(&error))
        rows << NumberedName{ group.number, group.name };
    if (!error.isEmpty())
        qWarning().noquote() << "group list:" << error;
    const auto chosen = pickNumberedName(parent, u"Grup Arama"_s, u"Grup No"_s, u"Grup Adi"_s, rows, current);
    if (!chosen)
        return std::nullopt;
    return GroupRepository::Row{ chosen->number, chosen->name };
}
