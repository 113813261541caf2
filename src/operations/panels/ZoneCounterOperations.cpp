#include "operations/panels/ZoneCounterOperations.h"

#include "operations/panels/OperationContext.h"
#include "operations/panels/PanelVisit.h"
#include "operations/panels/PanelWalk.h"
#include "protocol/ZoneDoorCommands.h"
#include "store/Operator.h"
#include "store/RightsCheck.h"

#include <optional>

using namespace Qt::StringLiterals;

namespace {

WalkResult ended(WalkResult::Outcome outcome)
{
    WalkResult result;
    result.outcome = outcome;
    return result;
}

bool validZone(qint32 zone)
{
    return zone == 1 || zone == 2;
}

std::optional<qint32> wholeNumber(const QString& text)
{
    bool ok = false;
    const qint32 value = text.trimmed().toInt(&ok);
    return ok ? std::optional<qint32>(value) : std::nullopt;
}

// The selected panel, no question of the walk's own, no success message: the count is shown.
PanelWalk::Plan quietPlan()
{
    PanelWalk::Plan plan;
    plan.checkRights = false;
    plan.selectedSucceeded = Message();
    return plan;
}

} // namespace

ZoneCounterOperations::ZoneCounterOperations(OperationContext& context)
    : m_context(context)
{ }

WalkResult ZoneCounterOperations::read(qint32 zone, QString* count)
{
    if (!validZone(zone)) {
        m_context.op.tell(Message(u"Bir Lokal Bölge seçiniz"_s), Operator::Kind::Warning);
        return ended(WalkResult::Outcome::Refused);
    }
    return PanelWalk(m_context, quietPlan()).run([&](PanelVisit& visit) {
        const CommandResult<QByteArray> answer = ReadZoneCounter(visit.link(), visit.address(), zone);
        if (!answer.isAccepted())
            return PanelWalk::PanelOutcome::Failed;
        const QString text = QString::fromLatin1(answer.data());
        const auto number = wholeNumber(text);
        if (count)
            *count = number ? QString::number(*number) : text;
        return PanelWalk::PanelOutcome::Succeeded;
    });
}

WalkResult ZoneCounterOperations::write(qint32 zone, const QString& value, const QString& capacity)
{
    Operator& op = m_context.op;
    if (!validZone(zone)) {
        op.tell(Message(u"Bir Lokal Bölge seçiniz"_s), Operator::Kind::Warning);
        return ended(WalkResult::Outcome::Refused);
    }
    if (!checkAdministratorRights(m_context.session, op))
        return ended(WalkResult::Outcome::NoRights);
    if (!op.ask(Message(u"Mevcut araç/kullanıcı sayısını düzeltmek istiyor musunuz?"_s)))
        return ended(WalkResult::Outcome::Declined);
    const auto count = wholeNumber(value);
    const auto limit = wholeNumber(capacity);
    if (!count || !limit || *count < 0 || *count >= *limit) {
        op.tell(Message(u"Lütfen geçerli ve Araç Kapasitesi'nden daha küçük bir sayı giriniz"_s),
                Operator::Kind::Warning);
        return ended(WalkResult::Outcome::Refused);
    }
    return writeCount(zone, *count);
}

WalkResult ZoneCounterOperations::clear(qint32 zone)
{
    Operator& op = m_context.op;
    if (!validZone(zone)) {
        op.tell(Message(u"Bir Lokal Bölge seçiniz"_s), Operator::Kind::Warning);
        return ended(WalkResult::Outcome::Refused);
    }
    if (!checkAdministratorRights(m_context.session, op))
        return ended(WalkResult::Outcome::NoRights);
    if (!op.ask(Message(u"Mevcut araç/kullanıcı sayısını silmek istiyor musunuz?"_s)))
        return ended(WalkResult::Outcome::Declined);
    return writeCount(zone, 0);
}

WalkResult ZoneCounterOperations::writeCount(qint32 zone, qint32 count)
{
    return PanelWalk(m_context, quietPlan()).run([&](PanelVisit& visit) {
        return WriteZoneCounter(visit.link(), visit.address(), zone, count).isAccepted()
            ? PanelWalk::PanelOutcome::Succeeded
            : PanelWalk::PanelOutcome::Failed;
    });
}
