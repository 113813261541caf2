#pragma once

#include "operations/panels/PanelEntry.h"

#include <QDateTime>

struct OperationContext;
class Message;
class PanelLink;

// What a walk hands its member for one panel: the panel, the open link and the context.
class PanelVisit
{
public:
    PanelVisit(OperationContext& context, const PanelEntry& entry, bool allPanels);

    const PanelEntry& entry() const { return m_entry; }
    PanelAddress address() const { return m_entry.address(); }
    qint32 panelNumber() const { return m_entry.panelNumber; }
    // True in the walk over all panels, false for the selected panel only.
    bool allPanels() const { return m_allPanels; }
    OperationContext& context() const { return m_context; }
    PanelLink& link() const;
    QDateTime now() const;

    // Asks a Yes/No question; true means go on.
    bool askToContinue(const Message& question) const;
    // Progress counted by the member (users), when the walk was told so.
    void progress(int value, int maximum) const;

private:
    OperationContext& m_context;
    PanelEntry m_entry;
    bool m_allPanels;
};
