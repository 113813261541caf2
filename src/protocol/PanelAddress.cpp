#include "protocol/PanelAddress.h"

#include "protocol/Formatters.h"

PanelAddress::PanelAddress(qint16 panelNumber, quint16 serial)
    : m_panelNumber(panelNumber)
    , m_serial(serial)
{ }

QByteArray PanelAddress::serialText() const
{
    return FormatHex2(static_cast<qint16>(m_serial >> 8)) + FormatHex2(static_cast<qint16>(m_serial & 0xFF));
}

QByteArray PanelAddress::head(QByteArrayView code) const
{
    return '%' + code.toByteArray() + serialText() + FormatDec3(m_panelNumber);
}

QByteArray PanelAddress::answerCode(QByteArrayView code) const
{
    return head(code).sliced(1);
}

QByteArray PanelAddress::request(QByteArrayView code, const QByteArray& fields) const
{
    return head(code) + fields + "**\r";
}
