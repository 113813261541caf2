#include "operations/panels/PanelSettingsOperations.h"

#include "operations/panels/OperationContext.h"
#include "operations/panels/PanelRoster.h"
#include "operations/panels/PanelSettingsRepository.h"
#include "operations/panels/PanelVisit.h"
#include "operations/panels/PanelWalk.h"
#include "protocol/PanelSettingsFrame.h"
#include "store/Database.h"
#include "store/Operator.h"
#include "store/RightsCheck.h"
#include "store/Transaction.h"

#include <QHostAddress>
#include <QUdpSocket>

using namespace Qt::StringLiterals;

namespace {

const QString kNotFound = u"Panel veritabanında bulunamadı."_s;
const QString kNotStored = u"Ayarlar kaydedilemedi!"_s;
const QString kSent = u"Ayarlar gönderildi."_s;

WalkResult ended(WalkResult::Outcome outcome)
{
    WalkResult result;
    result.outcome = outcome;
    return result;
}

} // namespace

Message PanelSettingsOperations::sendFailed(bool timedOut)
{
    return Message(u"Ayarlar gönderilemedi."_s)
        .value(u" ("_s)
        .add(timedOut ? u"Zaman aşımı"_s : u"Hata oluştu"_s)
        .value(u")"_s);
}

PanelSettingsOperations::PanelSettingsOperations(OperationContext& context)
    : m_context(context)
{ }

bool PanelSettingsOperations::selectSlot(PanelRoster& roster, qint32 order)
{
    for (const PanelEntry& entry : roster.entries()) {
        if (entry.order == order)
            return roster.select(entry.position);
    }
    return false;
}

WalkResult::Outcome PanelSettingsOperations::storeSlot(const PanelSlot& slot, bool carrySerial)
{
    Operator& op = m_context.op;
    PanelSettingsRepository repository(m_context.db);
    QString error;
    bool missing = false;
    {
        Transaction transaction(m_context.db);
        const bool stored = transaction.isActive() && repository.store(slot, &error, &missing)
            && (!carrySerial || repository.carrySerial(slot.panelNumber, slot.serial, &error))
            && transaction.commit(&error);
        if (!stored) {
            if (!error.isEmpty())
                qWarning().noquote() << "panel settings not stored:" << error << transaction.error();
            op.tell(Message(missing ? kNotFound : kNotStored), Operator::Kind::Error);
            return WalkResult::Outcome::Refused;
        }
    }
    PanelRoster& roster = m_context.roster;
    roster.load(m_context.db);
    selectSlot(roster, slot.order);
    roster.notifyDoorStatusChanged();
    return WalkResult::Outcome::Completed;
}

WalkResult PanelSettingsOperations::save(qint32 order, const PanelSettingsInput& input, PanelSlot* stored)
{
    Operator& op = m_context.op;
    if (!checkAdministratorRights(m_context.session, op))
        return ended(WalkResult::Outcome::NoRights);
    if (!op.ask(Message(u"Değişiklikleri Kaydetmek İstiyor musunuz?"_s)))
        return ended(WalkResult::Outcome::Declined);
    PanelSlot slot;
    const Message refusal = input.check(&slot);
    if (!refusal.isEmpty()) {
        op.tell(refusal, Operator::Kind::Warning);
        return ended(WalkResult::Outcome::Refused);
    }
    slot.order = order;

    // Two rows with one panel number would make two panels of one; the database refuses it too.
    bool taken = false;
    QString error;
    if (!PanelSettingsRepository(m_context.db).numberTakenElsewhere(slot.panelNumber, order, &taken, &error)) {
        qWarning().noquote() << "panel settings:" << error;
        op.tell(Message(kNotStored), Operator::Kind::Error);
        return ended(WalkResult::Outcome::Refused);
    }
    if (taken) {
        op.tell(Message().value(slot.panelNumber).add(u" nolu panel sistemde zaten tanımlı."_s),
                Operator::Kind::Warning);
        return ended(WalkResult::Outcome::Refused);
    }
    const WalkResult::Outcome outcome = storeSlot(slot, true);
    if (outcome == WalkResult::Outcome::Completed && stored)
        *stored = slot;
    return ended(outcome);
}

WalkResult PanelSettingsOperations::send(qint32 order, const PanelSettingsInput& input, bool byBroadcast)
{
    Operator& op = m_context.op;
    const WalkResult saved = save(order, input);
    if (saved.outcome != WalkResult::Outcome::Completed && saved.outcome != WalkResult::Outcome::Declined)
        return saved;

    const std::optional<PanelSlot> slot = PanelSettingsRepository(m_context.db).slot(order);
    if (!slot) {
        op.tell(Message(kNotFound), Operator::Kind::Error);
        return ended(WalkResult::Outcome::Refused);
    }
    if (slot->panelNumber < 1 || slot->panelNumber > 64) {
        op.tell(Message(u"Lütfen Panel No'sunu giriniz (1-64 arası)"_s), Operator::Kind::Warning);
        return ended(WalkResult::Outcome::Refused);
    }
    const Message question(u"Panele yeni ayarları göndermek istiyor musunuz?"_s);
    if (byBroadcast) {
        if (!op.ask(question))
            return ended(WalkResult::Outcome::Declined);
        if (!checkAdministratorRights(m_context.session, op))
            return ended(WalkResult::Outcome::NoRights);
        return broadcast(*slot);
    }

    // The walk goes to the selected panel: it must be this slot's.
    if (!selectSlot(m_context.roster, order)) {
        op.tell(Message(kNotFound), Operator::Kind::Error);
        return ended(WalkResult::Outcome::Refused);
    }
    PanelWalk::Plan plan;
    plan.confirmation = question;
    plan.selectedSucceeded = Message(kSent);
    const PanelSlot toSend = *slot;
    return PanelWalk(m_context, plan).run([&](PanelVisit& visit) {
        const CommandResult<> result = SendPanelSettings(visit.link(), toSend.address(), toSend.settings);
        if (result.isAccepted())
            return PanelWalk::PanelOutcome::Succeeded;
        op.tell(sendFailed(result.outcome() == CommandOutcome::NoAnswer), Operator::Kind::Error);
        return PanelWalk::PanelOutcome::FailedHandled;
    });
}

WalkResult PanelSettingsOperations::broadcast(const PanelSlot& slot)
{
    const UdpSettings& udp = m_context.udp;
    bool sent = false;
    {
        QUdpSocket socket;
        // The search port pair: the panels listen for settings where they listen for the search.
        if (socket.bind(QHostAddress(QHostAddress::AnyIPv4), udp.searchLocalPort,
                        QUdpSocket::ShareAddress | QUdpSocket::ReuseAddressHint)) {
            const QByteArray frame = PanelSettingsFrame::buildFrame(slot.address(), slot.settings);
            sent = socket.writeDatagram(frame, QHostAddress(udp.broadcastAddress), udp.searchPanelPort) == frame.size();
        }
    }
    WalkResult result;
    result.panelsVisited = 1;
    if (sent) {
        m_context.op.tell(Message(kSent));
    } else {
        result.panelsFailed = 1;
        m_context.op.tell(sendFailed(false), Operator::Kind::Error);
    }
    return result;
}

WalkResult PanelSettingsOperations::remove(qint32 order, PanelSlot* stored)
{
    Operator& op = m_context.op;
    std::optional<PanelSlot> slot = PanelSettingsRepository(m_context.db).slot(order);
    if (!slot) {
        op.tell(Message(kNotFound), Operator::Kind::Error);
        return ended(WalkResult::Outcome::Refused);
    }
    const QString number = slot->panelNumber > 0 ? QString::number(slot->panelNumber) : QString();
    if (!op.ask(Message().value(number).add(u" nolu paneli sistemden kaldırmak istiyor musunuz?"_s)))
        return ended(WalkResult::Outcome::Declined);
    if (!checkAdministratorRights(m_context.session, op))
        return ended(WalkResult::Outcome::NoRights);
    slot->reset();
    const WalkResult::Outcome outcome = storeSlot(*slot, false);
    if (outcome == WalkResult::Outcome::Completed && stored)
        *stored = *slot;
    return ended(outcome);
}

qint32 PanelSettingsOperations::newSlot()
{
    QString error;
    const qint32 order = PanelSettingsRepository(m_context.db).freeSlot(&error);
    if (order < 0) {
        qWarning().noquote() << "panel settings:" << error;
        m_context.op.tell(Message(kNotStored), Operator::Kind::Error);
        return 0;
    }
    if (order == 0) {
        m_context.op.tell(Message(u"Boş panel yeri kalmadı (en fazla 64 panel)."_s), Operator::Kind::Warning);
        return 0;
    }
    m_context.roster.load(m_context.db);
    return order;
}
