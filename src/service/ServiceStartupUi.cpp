#include "ServiceStartupUi.h"

#include "ServiceLog.h"

using namespace Qt::StringLiterals;

bool ServiceStartupUi::askInitialSettings(StationSettings&)
{
    return false;
}

bool ServiceStartupUi::chooseAdminPassword(const Message&, QString*, QString*)
{
    ServiceLog::line(u"the database has no administrator password yet: set the folder up with kx410ctl setup"_s);
    return false;
}

void ServiceStartupUi::showMessage(const Message& message)
{
    ServiceLog::line(message.turkish().simplified());
}
