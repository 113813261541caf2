#include "protocol/ProcessTimeZone.h"

#include <QFileInfo>
#include <QtGlobal>
#include <ctime>

bool ProcessTimeZone::settle()
{
#if defined(Q_OS_LINUX)
    static const char kSystemZone[] = "/etc/localtime";
    if (qEnvironmentVariableIsSet("TZ") || !QFileInfo::exists(QString::fromLatin1(kSystemZone)))
        return false;
    // The leading colon names a zone file; Qt's own zone look-up reads this value as "the system
    // zone" too.
    qputenv("TZ", QByteArray(":") + kSystemZone);
    tzset();
    return true;
#else
    return false;
#endif
}
