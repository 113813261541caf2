#include "ui/panels/PanelSettingsLauncher.h"

#include "operations/panels/PanelRoster.h"
#include "operations/panels/PanelSettingsOperations.h"
#include "ui/main/PanelWorkerBridge.h"
#include "ui/panels/frmPanelSettings.h"

#include <memory>

PanelSettingsLauncher::PanelSettingsLauncher(const PageServices& services, PanelWorkerBridge& bridge,
                                             PanelRoster& roster, QWidget* window, QObject* parent)
    : QObject(parent)
    , m_services(services)
    , m_bridge(bridge)
    , m_roster(roster)
    , m_window(window)
{ }

frmPanelSettings* PanelSettingsLauncher::openPosition(int position)
{
    const auto entry = m_roster.entry(position);
    return entry ? openSlot(entry->order) : nullptr;
}

void PanelSettingsLauncher::openNew()
{
    auto order = std::make_shared<qint32>(0);
    m_bridge.run([order](OperationContext& c) { *order = PanelSettingsOperations(c).newSlot(); },
                 [this, order] {
                     if (*order > 0)
                         openSlot(*order);
                 });
}

frmPanelSettings* PanelSettingsLauncher::openSlot(qint32 order)
{
    for (const QPointer<frmPanelSettings>& form : std::as_const(m_forms)) {
        if (form && form->order() == order) {
            form->reload();
            form->show();
            form->raise();
            form->activateWindow();
            return form;
        }
    }
    auto* form = new frmPanelSettings(m_services, m_bridge, m_roster, order, m_window);
    form->setAttribute(Qt::WA_DeleteOnClose);
    m_forms.append(form);
    form->show();
    return form;
}

QList<frmPanelSettings*> PanelSettingsLauncher::windows() const
{
    QList<frmPanelSettings*> open;
    for (const QPointer<frmPanelSettings>& form : m_forms) {
        if (form)
            open << form;
    }
    return open;
}
