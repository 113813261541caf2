#include "SimPanelConfig.h"

#include <QStringList>

using namespace Qt::Literals::StringLiterals;

std::optional<SimPanelConfig> SimPanelConfig::parse(const QString& text, QString* error)
{
    const QStringList parts = text.trimmed().split(u':');
    const auto fail = [&](const QString& why) -> std::optional<SimPanelConfig> {
        if (error)
            *error = why + u": "_s + text;
        return std::nullopt;
    };
    if (parts.size() != 3 && parts.size() != 5)
        return fail(u"expected number:serial:port[:pushhost:pushport]"_s);
    SimPanelConfig config;
    bool ok = false;
    config.number = parts[0].toInt(&ok);
    if (!ok || config.number < 1 || config.number > 255)
        return fail(u"panel number must be 1..255"_s);
    config.serial = parts[1].toInt(&ok, 16);
    if (!ok || parts[1].size() > 4 || config.serial < 1 || config.serial > 0xFFFF)
        return fail(u"serial must be 1 to 4 hex digits, not 0"_s);
    const int port = parts[2].toInt(&ok);
    if (!ok || port < 0 || port > 65535)
        return fail(u"bad TCP port"_s);
    config.port = quint16(port);
    if (parts.size() == 5) {
        const int pushPort = parts[4].toInt(&ok);
        if (!ok || pushPort < 1 || pushPort > 65535 || parts[3].isEmpty())
            return fail(u"bad push address"_s);
        config.pushHost = parts[3];
        config.pushPort = quint16(pushPort);
    }
    return config;
}
