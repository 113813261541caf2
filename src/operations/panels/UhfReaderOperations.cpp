#include "operations/panels/UhfReaderOperations.h"

#include "operations/panels/OperationContext.h"
#include "operations/panels/PanelRoster.h"
#include "operations/panels/PanelVisit.h"
#include "operations/panels/PanelWalk.h"
#include "protocol/ReaderCommands.h"
#include "store/Operator.h"
#include "store/RightsCheck.h"

using namespace Qt::StringLiterals;

namespace {

WalkResult ended(WalkResult::Outcome outcome)
{
    WalkResult result;
    result.outcome = outcome;
    return result;
}

PanelWalk::PanelOutcome byResult(bool accepted)
{
    return accepted ? PanelWalk::PanelOutcome::Succeeded : PanelWalk::PanelOutcome::Failed;
}

// Reading: no rights needed, and the value read is shown rather than told.
PanelWalk::Plan readingPlan()
{
    PanelWalk::Plan plan;
    plan.checkRights = false;
    plan.selectedSucceeded = Message();
    return plan;
}

// Writing: the administrator check and the question come first, told by the caller.
PanelWalk::Plan writingPlan()
{
    PanelWalk::Plan plan;
    plan.checkRights = false;
    return plan;
}

} // namespace

UhfReaderOperations::UhfReaderOperations(OperationContext& context)
    : m_context(context)
{ }

WalkResult UhfReaderOperations::readPower(qint32 reader, qint32* power)
{
    return PanelWalk(m_context, readingPlan()).run([&](PanelVisit& visit) {
        const CommandResult<qint32> answer = GetReaderPower(visit.link(), visit.address(), reader);
        if (answer.isAccepted() && power)
            *power = answer.data();
        return byResult(answer.isAccepted());
    });
}

WalkResult UhfReaderOperations::setPower(qint32 reader, const QString& power)
{
    Operator& op = m_context.op;
    if (!checkAdministratorRights(m_context.session, op))
        return ended(WalkResult::Outcome::NoRights);
    bool numeric = false;
    const qint32 dbm = power.trimmed().toInt(&numeric);
    if (!numeric || dbm < 15 || dbm > 30) {
        op.tell(Message(u"UHF Okuyucu çıkış gücü 15 dBm - 30 dBm arasında seçilebilir"_s), Operator::Kind::Warning);
        return ended(WalkResult::Outcome::Refused);
    }
    if (!op.ask(Message(u"Çıkış gücünün değiştirilmesini onaylıyor musunuz?"_s)))
        return ended(WalkResult::Outcome::Declined);
    return PanelWalk(m_context, writingPlan()).run([&](PanelVisit& visit) {
        return byResult(SetReaderPower(visit.link(), visit.address(), reader, dbm).isAccepted());
    });
}

WalkResult UhfReaderOperations::readBuzzerLed(qint32 reader, bool* buzzer, bool* led)
{
    return PanelWalk(m_context, readingPlan()).run([&](PanelVisit& visit) {
        const CommandResult<qint32> answer = GetBuzzerLed(visit.link(), visit.address(), reader);
        if (answer.isAccepted()) {
            if (buzzer)
                *buzzer = answer.data() / 10 != 0;
            if (led)
                *led = answer.data() % 10 != 0;
        }
        return byResult(answer.isAccepted());
    });
}

WalkResult UhfReaderOperations::setBuzzerLed(qint32 reader, bool buzzer, bool led)
{
    Operator& op = m_context.op;
    if (!checkAdministratorRights(m_context.session, op))
        return ended(WalkResult::Outcome::NoRights);
    const auto selected = m_context.roster.selectedEntry();
    const qint32 panelNumber = selected ? selected->panelNumber : 0;
    const Message question = Message()
                                 .value(panelNumber)
                                 .add(u" nolu panele bağlı "_s)
                                 .value(reader)
                                 .add(u" nolu UHF okuyucunun Buzzer ve Led ayarlarını değiştirmek istiyor musunuz?"_s);
    if (!op.ask(question))
        return ended(WalkResult::Outcome::Declined);
    return PanelWalk(m_context, writingPlan()).run([&](PanelVisit& visit) {
        return byResult(SetBuzzerLed(visit.link(), visit.address(), reader, buzzer ? 1 : 0, led ? 1 : 0).isAccepted());
    });
}
