#include "operations/users/PersonName.h"

QString PersonName::join(const QString& first, const QString& last)
{
    return QString(first.trimmed() + u' ' + last.trimmed()).trimmed();
}
