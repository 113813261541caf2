#include "store/SchemaTable.h"

const SchemaColumn* SchemaTable::column(const QString& columnName) const
{
    for (const SchemaColumn& c : columns) {
        if (c.name.compare(columnName, Qt::CaseInsensitive) == 0)
            return &c;
    }
    return nullptr;
}

QStringList SchemaTable::columnNames() const
{
    QStringList names;
    names.reserve(columns.size());
    for (const SchemaColumn& c : columns)
        names << c.name;
    return names;
}
