#include "operations/panels/PanelClockOperations.h"

#include "operations/panels/OperationContext.h"
#include "operations/panels/PanelRoster.h"
#include "operations/panels/PanelSettingsRepository.h"
#include "operations/panels/PanelVisit.h"
#include "operations/panels/PanelWalk.h"
#include "protocol/UserCommands.h"
#include "store/Operator.h"

using namespace Qt::StringLiterals;

PanelClockOperations::PanelClockOperations(OperationContext& context)
    : m_context(context)
{ }

void PanelClockOperations::storeOffset(qint32 order, qint32 seconds)
{
    QString error;
    if (PanelSettingsRepository(m_context.db).storeClockOffset(order, seconds, m_context.now(), &error))
        m_changed = true;
    else
        qWarning().noquote() << "clock offset not stored:" << error;
}

WalkResult PanelClockOperations::read(PanelTarget target, QList<Reading>* readings)
{
    m_changed = false;
    PanelWalk::Plan plan;
    plan.checkRights = false;
    plan.target = target;
    plan.selectedSucceeded = Message();
    const WalkResult result = PanelWalk(m_context, plan).run([&](PanelVisit& visit) {
        const CommandResult<PanelClock> answer = ReadPanelClock(visit.link(), visit.address());
        if (!answer.isAccepted())
            return PanelWalk::PanelOutcome::Failed;
        Reading reading{ visit.panelNumber(), answer.data(), std::nullopt };
        if (answer.data().time.isValid()) {
            reading.offset = static_cast<qint32>(visit.now().secsTo(answer.data().time));
            storeOffset(visit.entry().order, *reading.offset);
        }
        if (readings)
            readings->append(reading);
        return PanelWalk::PanelOutcome::Succeeded;
    });
    // Once, after the walk: the lists follow the roster.
    if (m_changed)
        m_context.roster.load(m_context.db);
    return result;
}

WalkResult PanelClockOperations::set(PanelTarget target)
{
    m_changed = false;
    PanelWalk::Plan plan;
    plan.confirmation = Message(u"PC saatini panele göndermek istediğinizden emin misiniz?"_s);
    plan.checkRights = false;
    plan.target = target;
    const WalkResult result = PanelWalk(m_context, plan).run([&](PanelVisit& visit) {
        if (!SetPanelClock(visit.link(), visit.address(), visit.now()).isAccepted())
            return PanelWalk::PanelOutcome::Failed;
        storeOffset(visit.entry().order, 0);
        return PanelWalk::PanelOutcome::Succeeded;
    });
    if (m_changed)
        m_context.roster.load(m_context.db);
    return result;
}
