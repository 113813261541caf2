#include "operations/panels/PanelVisit.h"

#include "operations/panels/OperationContext.h"
#include "store/Operator.h"

PanelVisit::PanelVisit(OperationContext& context, const PanelEntry& entry, bool allPanels)
    : m_context(context)
    , m_entry(entry)
    , m_allPanels(allPanels)
{ }

PanelLink& PanelVisit::link() const
{
    return m_context.link;
}

QDateTime PanelVisit::now() const
{
    return m_context.now();
}

bool PanelVisit::askToContinue(const Message& question) const
{
    return m_context.op.ask(question);
}

void PanelVisit::progress(int value, int maximum) const
{
    m_context.op.panelProgress(m_entry.panelNumber, value, maximum);
}
