#include "operations/doors/DoorOperations.h"

#include "operations/panels/OperationContext.h"
#include "operations/panels/PanelVisit.h"
#include "operations/panels/PanelWalk.h"
#include "operations/records/PassageStore.h"
#include "operations/users/CardRefusal.h"
#include "operations/users/UserRepository.h"
#include "operations/users/VisitorRepository.h"
#include "protocol/CardField.h"
#include "protocol/ZoneDoorCommands.h"
#include "store/Database.h"

#include <QSqlQuery>

using namespace Qt::StringLiterals;

namespace {

using Outcome = PanelWalk::PanelOutcome;

const QString kConfirm = u"Kapı işlemini gerçekleştirmek istiyor musunuz?"_s;
// Which way a door leads, from PanelSettings: 1 for an exit door, else an entry.
Direction doorDirection(const Database& db, qint32 panelNumber, int door)
{
    const QString column = u"Kapi"_s + QString::number(door) + u" Kapi Tipi"_s;
    const QVariant type = db.scalar(u"SELECT "_s + Database::quoted(column) + u" FROM \"PanelSettings\" WHERE "_s
                                        + Database::quoted(u"Panel ID"_s) + u" = ?"_s,
                                    { panelNumber });
    return type.toInt() == 1 ? Direction::Exit : Direction::Entry;
}

// The person let through: a user, or a visitor with the card handed out.
struct Passer
{
    qint32 id = 0;
    qint64 card = 0;
    UserType userType = UserType::Personnel;
    qint64 visitNo = 0;
};

} // namespace

DoorOperations::DoorOperations(OperationContext& context)
    : m_context(context)
{ }

WalkResult DoorOperations::doorProcess(PanelTarget target, const DoorRequest& request)
{
    PanelWalk::Plan plan;
    plan.confirmation = Message(kConfirm);
    plan.target = target;
    plan.linkFailure = PanelWalk::LinkFailure::ReportAndContinue;
    plan.reportEachPanel = true;
    plan.beforeConfirmation = [&] {
        if (request.action < 0 || request.action > 2)
            return Message(u"Lütfen bir kapı işlemi seçiniz!"_s);
        if (!request.anyChosen())
            return Message(u"Lütfen bir röle seçiniz"_s);
        return Message();
    };
    DoorCommandText command;
    command.doors = request.doors;
    command.masterRelays = request.relays;
    command.withDoorMasterRelay = request.masterRelay;
    command.signalReader = request.reader;
    const QByteArray text = BuildDoorText(command);
    return PanelWalk(m_context, plan).run([&](PanelVisit& v) {
        return DoorCommand(v.link(), v.address(), request.action, text).isAccepted() ? Outcome::Succeeded
                                                                                     : Outcome::Failed;
    });
}

WalkResult DoorOperations::manualAccess(const ManualAccessRequest& request)
{
    Passer passer;
    PanelWalk::Plan plan;
    plan.confirmation = Message(kConfirm);
    plan.checkRights = false;
    plan.target = PanelTarget::Selected;
    plan.linkFailure = PanelWalk::LinkFailure::ReportAndContinue;
    plan.reportEachPanel = true;
    plan.beforeConfirmation = [&] {
        return request.door < 1 || request.door > 4 ? Message(u"Lütfen bir kapı işlemi seçiniz!"_s) : Message();
    };
    plan.beforeRights = [&] {
        if (request.visitNo > 0) {
            const auto visit = VisitorRepository(m_context.db).byVisitNo(request.visitNo);
            if (!visit)
                return Message(u"Kullanıcı listesi boş!"_s);
            if (visit->date != m_context.now().date())
                return Message(u"Bu ziyaretçi bugün geçiş yapamaz. Lütfen tarihi düzeltiniz."_s);
            passer = Passer{ visit->cardUserId, visit->cardId, UserType::VisitorCard, visit->visitNo };
            return Message();
        }
        const auto user
            = request.userRecordNo > 0 ? UserRepository(m_context.db).byRecordNo(request.userRecordNo) : std::nullopt;
        if (!user)
            return Message(u"Kullanıcı listesi boş!"_s);
        passer = Passer{ user->id, user->cardId, user->userType, 0 };
        return Message();
    };
    plan.afterRights = [&] {
        // The door command carries the card to the panel: one that does not fit is refused.
        return fitsCardField(passer.card) ? Message() : cardRefusal(passer.id);
    };
    return PanelWalk(m_context, plan).run([&](PanelVisit& v) {
        DoorCommandText command;
        command.doors[request.door - 1] = true;
        command.masterRelays = request.relays;
        command.withDoorMasterRelay = request.withRelay;
        command.userId = passer.id;
        command.cardId = static_cast<qint32>(passer.card);
        if (!DoorCommand(v.link(), v.address(), 0, BuildDoorText(command)).isAccepted())
            return Outcome::Failed;
        QDateTime at = v.now();
        at.setTime(QTime(at.time().hour(), at.time().minute(), at.time().second()));
        PassageStore::Passage passage;
        passage.panel = v.panelNumber();
        passage.door = request.door;
        passage.userId = passer.id;
        passage.cardId = passer.card;
        passage.time = at;
        passage.direction = doorDirection(m_context.db, v.panelNumber(), request.door);
        // Granted: the record names the person, as a panel's own would.
        passage.code = PassageCode::Granted;
        passage.person = PassageStore::Person{ passer.userType,
                                               passer.visitNo > 0 ? std::optional<qint64>(passer.visitNo)
                                                                  : std::optional<qint64>() };
        PassageStore::Options options;
        options.skipStored = false; // the operator's own passage is always a new one
        const bool stored = PassageStore(m_context.db).store({ passage }, options, nullptr);
        return stored ? Outcome::Succeeded : Outcome::Failed;
    });
}
