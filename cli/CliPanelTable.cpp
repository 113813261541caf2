#include "CliPanelTable.h"

#include "operations/panels/PanelRepository.h"

#include <QHostAddress>
#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

CliPanelTable::CliPanelTable(Database& db)
    : m_db(db)
{ }

bool CliPanelTable::add(const NewPanel& panel, QString* error)
{
    if (panel.number < 1 || panel.number > 64) {
        *error = u"the panel number must be 1..64"_s;
        return false;
    }
    if (panel.serial < 1 || panel.serial > 0xFFFF) {
        *error = u"the serial must be 1..FFFF (four hex digits)"_s;
        return false;
    }
    // Four dotted numbers exactly: the address parser would also take short forms like "127.1".
    static const QRegularExpression dotted(u"^\\d{1,3}(\\.\\d{1,3}){3}$"_s);
    const QHostAddress address(panel.ip);
    if (!dotted.match(panel.ip).hasMatch() || address.protocol() != QHostAddress::IPv4Protocol) {
        *error = u"the address must be IPv4 (a.b.c.d), not "_s + panel.ip;
        return false;
    }
    if (panel.port < 1 || panel.port > 65535) {
        *error = u"the TCP port must be 1..65535"_s;
        return false;
    }
    PanelRepository::NewPanel row;
    row.number = panel.number;
    row.serial = panel.serial;
    row.ipv4 = address.toIPv4Address();
    row.port = panel.port;
    row.name = panel.name;
    row.order = panel.order;
    bool taken = false;
    if (PanelRepository(m_db).add(row, error, &taken))
        return true;
    if (taken)
        *error = u"panel "_s + QString::number(panel.number) + u" is in the list already"_s;
    return false;
}
