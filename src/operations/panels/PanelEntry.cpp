#include "operations/panels/PanelEntry.h"

bool PanelEntry::isEligible() const
{
    return panelNumber != 0 && port != 0 && serial != 0 && !ip.trimmed().isEmpty();
}

PanelAddress PanelEntry::address() const
{
    return PanelAddress(static_cast<qint16>(panelNumber), serial);
}

QString PanelEntry::serialText() const
{
    return QString::fromLatin1(address().serialText());
}
