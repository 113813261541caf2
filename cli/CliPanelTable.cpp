#include "CliPanelTable.h"

#include "store/Database.h"

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
    const QString table = u"PanelSettings"_s;
    const QVariant existing = m_db.scalar(u"SELECT COUNT(*) FROM "_s + Database::quoted(table) + u" WHERE "_s
                                              + Database::quoted(u"Panel ID"_s) + u" = ?"_s,
                                          { panel.number }, error);
    if (!existing.isValid())
        return false;
    if (existing.toInt() > 0) {
        *error = u"panel "_s + QString::number(panel.number) + u" is in the list already"_s;
        return false;
    }
    int order = panel.order;
    if (order <= 0) {
        const QVariant last
            = m_db.scalar(u"SELECT MAX("_s + Database::quoted(u"Sira No"_s) + u") FROM "_s + Database::quoted(table));
        order = last.toInt() + 1;
    }

    const quint32 ip = address.toIPv4Address();
    QStringList columns = { u"Sira No"_s, u"Panel ID"_s, u"Seri No"_s, u"Panel Adi"_s, u"Panel TCP Port"_s };
    QVariantList values = { order, panel.number, panel.serial, panel.name, panel.port };
    for (int i = 0; i < 4; ++i) {
        columns << u"Panel IP"_s + QString::number(i + 1);
        values << static_cast<int>((ip >> (24 - 8 * i)) & 0xFF);
    }
    return m_db.insert(table, columns, values, error);
}

bool CliPanelTable::remove(int number, QString* error)
{
    const int removed = m_db.execCount(u"DELETE FROM "_s + Database::quoted(u"PanelSettings"_s) + u" WHERE "_s
                                           + Database::quoted(u"Panel ID"_s) + u" = ?"_s,
                                       { number }, error);
    if (removed == 0)
        *error = u"panel "_s + QString::number(number) + u" is not in the list"_s;
    return removed > 0;
}
