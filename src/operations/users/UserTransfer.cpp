#include "operations/users/UserTransfer.h"

#include "operations/panels/OperationContext.h"
#include "operations/panels/PanelRoster.h"
#include "operations/panels/PanelVisit.h"
#include "operations/panels/PanelWalk.h"
#include "operations/panels/ParallelWalk.h"
#include "operations/users/CardRefusal.h"
#include "operations/users/PanelHeldUsers.h"
#include "operations/users/SendableUsers.h"
#include "operations/users/UserChanges.h"
#include "operations/users/UserRepository.h"
#include "protocol/CardField.h"
#include "protocol/PanelLink.h"
#include "protocol/UserCommands.h"
#include "store/Database.h"
#include "store/Operator.h"
#include "store/RightsCheck.h"
#include "store/Transaction.h"

#include <QDebug>
#include <QMutex>
#include <QSqlQuery>

using namespace Qt::StringLiterals;

namespace {

const QString kListEmpty = u"Kullanıcı listesi boş!"_s;
const QString kCountNotSent = u"Ancak kullanıcı sayısı gönderilemedi"_s;

// One line per user left behind, for the person asked at the window or the command line.
Message cardRefusals(const QList<qint32>& userIds)
{
    Message m;
    for (qint32 id : userIds) {
        if (!m.isEmpty())
            m.newLine();
        m.append(cardRefusal(id));
    }
    return m;
}

Message countNotSent(qint32 panelNumber, bool question)
{
    Message m;
    m.value(panelNumber).add(u" nolu panele kullanıcı bilgileri gönderildi."_s).value(u" "_s);
    if (question)
        m.add(u"Ancak kullanıcı sayısı gönderilemedi. Devam etmek istiyor musunuz?"_s);
    else
        m.add(kCountNotSent);
    return m;
}

Message userNotSent(qint32 userId, qint32 panelNumber)
{
    return Message().value(userId).add(u" nolu kullanıcı "_s).value(panelNumber).add(u" nolu panele gönderilemedi"_s);
}

// How one panel receives the list; questions when interactive, the sink otherwise.
struct SendMode
{
    bool interactive = true;
    UserTransfer::MessageSink sink;
};

// What a panel acknowledged during one send, noted in the panel's held users every few hundred
// users and on every way out, so that a send cut off at any point leaves noted exactly what the
// panel took, and the next send of changed users picks up where it stopped. The rows are written
// as they come; the send log's fingerprint of what the panel holds only at the end.
class TakenUsers
{
public:
    // `held` is what the panel held before the send when the caller has read it; read here when
    // first needed otherwise.
    TakenUsers(PanelVisit& visit, PanelHeldUsers::Blocks* held)
        : m_visit(visit)
        , m_held(held)
    { }
    ~TakenUsers() { note(true); }
    TakenUsers(const TakenUsers&) = delete;
    TakenUsers& operator=(const TakenUsers&) = delete;

    void taken(const UserRecord& user)
    {
        // Users go in ID order: each lands at the end without a search.
        m_taken.insert(m_taken.cend(), user.id, SendableUsers::fingerprint(user));
        if (++m_sinceNote >= kNoteEvery)
            note(false);
    }
    void deleted(qint32 id)
    {
        m_deleted << id;
        if (++m_sinceNote >= kNoteEvery)
            note(false);
    }

private:
    // Often enough that little is sent twice after a cut, seldom enough that 64 panels' lanes
    // rarely wait for each other's turn to write.
    static constexpr int kNoteEvery = 500;

    void note(bool last)
    {
        m_sinceNote = 0;
        if (!m_noted && m_taken.isEmpty() && m_deleted.isEmpty())
            return;
        PanelHeldUsers held(m_visit.context().db);
        QString error;
        if (!m_held) {
            if (!held.load(m_visit.panelNumber(), &m_ownHeld, &error)) {
                warn(error);
                return;
            }
            m_held = &m_ownHeld;
        }
        const bool ok = last ? held.update(m_visit.panelNumber(), *m_held, m_taken, m_deleted, m_visit.now(), &error)
                             : held.noteRows(m_visit.panelNumber(), *m_held, m_taken, m_deleted, &error);
        // What could not be written stays to be tried again with the next batch.
        if (!ok) {
            warn(error);
            return;
        }
        m_noted = true;
        m_taken.clear();
        m_deleted.clear();
    }
    void warn(const QString& error) const
    {
        qWarning().noquote() << "panel" << m_visit.panelNumber() << "held users:" << error;
    }

    PanelVisit& m_visit;
    PanelHeldUsers::Blocks* m_held;
    PanelHeldUsers::Blocks m_ownHeld;
    PanelHeldUsers::Blocks m_taken;
    QList<qint32> m_deleted;
    int m_sinceNote = 0;
    bool m_noted = false;
};

// How many users each panel accepted, in the order the panels were served.
using SentCounts = QList<QPair<qint32, int>>;

// "Panel 3: 120 kullanıcı gönderildi", a line per panel served.
Message sentLines(const SentCounts& counts)
{
    Message lines;
    for (const auto& [panel, sent] : counts) {
        if (!lines.isEmpty())
            lines.newLine();
        lines.add(u"Panel"_s)
            .value(u' ' + QString::number(panel) + u": "_s + QString::number(sent))
            .add(u" kullanıcı gönderildi"_s);
    }
    return lines;
}

// Sends the users, deletes the removed IDs (the unattended send of changed users only), then
// the count.
PanelWalk::PanelOutcome sendList(PanelVisit& visit, const QList<UserRecord>& users, qint32 highestId,
                                 const SendMode& mode, const QList<qint32>& removed = {}, SentCounts* counts = nullptr,
                                 PanelHeldUsers::Blocks* held = nullptr)
{
    if (counts)
        counts->append({ visit.panelNumber(), 0 });
    // Counted as they go, so a walk stopped half-way still says what reached the panel.
    const auto countOne = [counts] {
        if (counts)
            ++counts->last().second;
    };
    OperationContext& ctx = visit.context();
    TakenUsers record(visit, held);
    bool anyFailed = false;
    const int total = static_cast<int>(users.size() + removed.size());
    visit.progress(0, total);
    for (int i = 0; i < users.size(); ++i) {
        const UserRecord& user = users.at(i);
        if (!mode.interactive && ctx.op.cancelRequested())
            return PanelWalk::PanelOutcome::Stop;
        bool sent = SendNewCard(visit.link(), visit.address(), user, visit.now()).isAccepted();
        if (!sent && !mode.interactive)
            sent = SendNewCard(visit.link(), visit.address(), user, visit.now()).isAccepted();
        if (sent) {
            record.taken(user);
            countOne();
        }
        if (!sent) {
            anyFailed = true;
            // A dead panel is left for the next run rather than tried for every user.
            if (visit.link().gaveUp())
                return PanelWalk::PanelOutcome::FailedHandled;
            if (!mode.interactive) {
                mode.sink(userNotSent(user.id, visit.panelNumber()));
            } else {
                const Message question = visit.allPanels()
                    ? Message()
                          .value(user.id)
                          .add(u" nolu kullanıcı "_s)
                          .value(visit.panelNumber())
                          .add(u" nolu panele gönderilemedi, Devam etmek istiyor musunuz?"_s)
                    : Message().value(user.id).add(
                        u" nolu kullanıcı bilgisi gönderilemedi, Devam etmek istiyor musunuz?"_s);
                if (!visit.askToContinue(question))
                    return PanelWalk::PanelOutcome::Stop;
            }
        }
        visit.progress(static_cast<int>(i + 1), total);
    }
    for (int i = 0; i < removed.size(); ++i) {
        const qint32 id = removed.at(i);
        if (!mode.interactive && ctx.op.cancelRequested())
            return PanelWalk::PanelOutcome::Stop;
        if (DeleteCard(visit.link(), visit.address(), id).isAccepted()) {
            record.deleted(id);
        } else {
            anyFailed = true;
            if (visit.link().gaveUp())
                return PanelWalk::PanelOutcome::FailedHandled;
            mode.sink(Message()
                          .value(id)
                          .add(u" nolu kullanıcı "_s)
                          .value(visit.panelNumber())
                          .add(u" nolu panelden silinemedi"_s));
        }
        visit.progress(static_cast<int>(users.size() + i + 1), total);
    }

    // One silent retry of the count before anyone is bothered.
    if (!SendUserCount(visit.link(), visit.address(), highestId).isAccepted()
        && !SendUserCount(visit.link(), visit.address(), highestId).isAccepted()) {
        if (!mode.interactive) {
            mode.sink(countNotSent(visit.panelNumber(), false));
        } else if (visit.allPanels()) {
            if (!visit.askToContinue(countNotSent(visit.panelNumber(), true)))
                return PanelWalk::PanelOutcome::Stop;
        } else {
            ctx.op.tell(Message(u"Kullanıcılar gönderildi, Ancak kullanıcı sayısı gönderilemedi. Tekrar deneyiniz!"_s),
                        Operator::Kind::Warning);
        }
        return PanelWalk::PanelOutcome::FailedHandled;
    }
    // Users the person chose to skip were each asked about; the panel itself was served.
    if (anyFailed && !mode.interactive)
        return PanelWalk::PanelOutcome::FailedHandled;
    return PanelWalk::PanelOutcome::Succeeded;
}

// Takes users off the panel's held users after it deleted them; all of them when ids is empty.
void forgetHeld(PanelVisit& visit, QList<qint32> ids)
{
    PanelHeldUsers held(visit.context().db);
    QString error;
    PanelHeldUsers::Blocks blocks;
    if (held.load(visit.panelNumber(), &blocks, &error)) {
        if (ids.isEmpty())
            ids = blocks.keys();
        if (!ids.isEmpty())
            held.update(visit.panelNumber(), blocks, {}, ids, visit.now(), &error);
    }
    if (!error.isEmpty())
        qWarning().noquote() << "panel" << visit.panelNumber() << "held users:" << error;
}

Message withNote(const QString& question, const QString& note)
{
    return Message(question).newLine().add(note);
}

} // namespace

UserTransfer::UserTransfer(OperationContext& context)
    : m_context(context)
{ }

WalkResult UserTransfer::sendUsers(PanelTarget target, const UserSelection& selection)
{
    SendableUsers users;
    PanelWalk::Plan plan;
    plan.confirmation = Message(u"Kullanıcı listesini göndermek istiyor musunuz?"_s);
    plan.target = target;
    plan.progress = PanelWalk::Progress::ByMember;
    plan.selectedSucceeded = Message(u"Kullanıcı bilgileri gönderme işlemi tamamlandı!"_s);
    SentCounts counts;
    plan.summary = [&counts] { return sentLines(counts); };
    plan.afterRights = [&] {
        if (!selection.allUsers && !selection.range.isValid())
            return UserIdRange::sendRefusal();
        users = SendableUsers::load(m_context.db, selection);
        if (users.isEmpty())
            return Message(kListEmpty);
        if (users.refused.isEmpty())
            return Message();
        // Told once before the first panel; one bad row does not keep the others from the panels.
        const Message refusal = cardRefusals(users.refused);
        if (users.sendable.isEmpty())
            return refusal;
        m_context.op.tell(refusal, Operator::Kind::Warning);
        return Message();
    };
    WalkResult result = PanelWalk(m_context, plan).run([&](PanelVisit& visit) {
        return sendList(visit, users.sendable, users.sendable.last().id, SendMode(), {}, &counts);
    });
    result.membersRefused = static_cast<int>(users.refused.size());
    return result;
}

WalkResult UserTransfer::sendSelectedUser(PanelTarget target, qint64 recordNo)
{
    UserRepository repository(m_context.db);
    QList<UserRecord> users;
    qint32 highestId = 0;
    PanelWalk::Plan plan;
    plan.confirmation = Message(u"Seçilen kullanıcı bilgisini göndermek istiyor musunuz?"_s);
    plan.target = target;
    plan.progress = PanelWalk::Progress::ByMember;
    plan.beforeRights = [&] {
        const auto row = recordNo > 0 ? repository.byRecordNo(recordNo) : std::nullopt;
        if (!row)
            return Message(kListEmpty);
        const auto record = row->toRecord();
        if (!record)
            return cardRefusal(row->id);
        users = { *record };
        return Message();
    };
    plan.afterRights = [&] {
        // The count a panel is told is the highest ID in the table, not the one user's.
        highestId = repository.highestId();
        return Message();
    };
    return PanelWalk(m_context, plan).run([&](PanelVisit& visit) {
        return sendList(visit, users, highestId, SendMode());
    });
}

WalkResult UserTransfer::eraseCardMemory(PanelTarget target)
{
    PanelWalk::Plan plan;
    plan.confirmation = withNote(u"Tüm kart hafızasını silmek istediğinizden emin misiniz?"_s,
                                 u"(Not: Bu işlem her bir panel için yaklaşık 30 saniye sürecektir!)"_s);
    plan.target = target;
    return PanelWalk(m_context, plan).run([](PanelVisit& visit) {
        if (!EraseAllCards(visit.link(), visit.address()).isAccepted())
            return PanelWalk::PanelOutcome::Failed;
        forgetHeld(visit, {});
        return PanelWalk::PanelOutcome::Succeeded;
    });
}

WalkResult UserTransfer::deleteSelectedUser(PanelTarget target, qint64 recordNo)
{
    UserRepository repository(m_context.db);
    qint32 userId = 0;
    PanelWalk::Plan plan;
    plan.confirmation = Message(u"Seçilen kullanıcı panelden veya panellerden silmek istiyor musunuz?"_s);
    plan.target = target;
    plan.beforeRights = [&] {
        const auto row = recordNo > 0 ? repository.byRecordNo(recordNo) : std::nullopt;
        if (!row)
            return Message(kListEmpty);
        userId = row->id;
        if (userId <= 0 || userId > UserIdRange::MaxId)
            return Message(u"Kullanıcı ID hatalı!"_s);
        return Message();
    };
    plan.failureQuestion = [&](const PanelEntry& entry) {
        return Message()
            .value(userId)
            .add(u" nolu kullanıcı "_s)
            .value(entry.panelNumber)
            .add(u" nolu panelden silinemedi, Devam etmek istiyor musunuz?"_s);
    };
    return PanelWalk(m_context, plan).run([&](PanelVisit& visit) {
        if (!DeleteCard(visit.link(), visit.address(), userId).isAccepted())
            return PanelWalk::PanelOutcome::Failed;
        forgetHeld(visit, { userId });
        return PanelWalk::PanelOutcome::Succeeded;
    });
}

namespace {

// Reads the IDs from the open link into Users inside one transaction, committed only when the
// whole range has been walked: a panel given up half-way leaves the table as it was.
PanelWalk::PanelOutcome receiveIds(PanelVisit& visit, const QList<qint32>& ids, int& failed)
{
    OperationContext& ctx = visit.context();
    UserRepository repository(ctx.db);
    Transaction transaction(ctx.db);
    if (!transaction.isActive())
        return PanelWalk::PanelOutcome::Failed;
    const int total = static_cast<int>(ids.size());
    visit.progress(0, total);
    for (int i = 0; i < total; ++i) {
        const qint32 id = ids.at(i);
        const CommandResult<UserRecord> read = ReadCard(visit.link(), visit.address(), id);
        // A refusal says the panel holds no card for that ID: nothing to store, nothing to ask.
        if (read.outcome() != CommandOutcome::Refused) {
            if (!read.isAccepted() || !repository.storeFromPanel(read.data())) {
                ++failed;
                const Message question = Message().value(id).add(
                    u" nolu kullanıcının bilgileri alınamadı, Devam etmek istiyoru musunuz?"_s);
                if (!visit.askToContinue(question))
                    return PanelWalk::PanelOutcome::Stop;
            }
        }
        visit.progress(i + 1, total);
    }
    if (!transaction.commit())
        return PanelWalk::PanelOutcome::Failed;
    return PanelWalk::PanelOutcome::Succeeded;
}

} // namespace

WalkResult UserTransfer::receiveUsers(const UserIdRange& range)
{
    WalkResult result;
    Operator& op = m_context.op;
    if (!op.ask(Message(u"Bu işlem sadece seçilen panel için yapılacak, Devam etmek istiyor musunuz?"_s))) {
        result.outcome = WalkResult::Outcome::Declined;
        return result;
    }
    if (!range.isValid()) {
        op.tell(UserIdRange::receiveRefusal(), Operator::Kind::Warning);
        result.outcome = WalkResult::Outcome::Refused;
        return result;
    }
    const Message question = Message()
                                 .value(range.first)
                                 .value(u" - "_s)
                                 .value(range.last)
                                 .add(u" arasındaki kullanıcıları almak istiyor musunuz?"_s)
                                 .newLine()
                                 .add(u"Önemli Not: Mevcut kullanıcı listesi güncellenecek!"_s);
    if (!op.ask(question)) {
        result.outcome = WalkResult::Outcome::Declined;
        return result;
    }
    QList<qint32> ids;
    for (qint32 id = range.first; id <= range.last; ++id)
        ids << id;
    PanelWalk::Plan plan;
    plan.target = PanelTarget::Selected;
    plan.progress = PanelWalk::Progress::ByMember;
    plan.selectedSucceeded = Message(u"Tüm işlemler tamamlandı!"_s);
    int failed = 0;
    result = PanelWalk(m_context, plan).run([&](PanelVisit& visit) { return receiveIds(visit, ids, failed); });
    result.membersFailed = failed;
    return result;
}

WalkResult UserTransfer::receiveSelectedUser(qint64 recordNo)
{
    UserRepository repository(m_context.db);
    qint32 userId = 0;
    PanelWalk::Plan plan;
    plan.target = PanelTarget::Selected;
    plan.progress = PanelWalk::Progress::None;
    plan.beforeRights = [&] {
        const auto row = recordNo > 0 ? repository.byRecordNo(recordNo) : std::nullopt;
        if (!row)
            return Message(kListEmpty);
        userId = row->id;
        return Message();
    };
    return PanelWalk(m_context, plan).run([&](PanelVisit& visit) {
        const CommandResult<UserRecord> read = ReadCard(visit.link(), visit.address(), userId);
        // A slot without a card has nothing to store: said as a plain failure.
        if (read.outcome() == CommandOutcome::Refused)
            return PanelWalk::PanelOutcome::Failed;
        if (read.isAccepted() && UserRepository(visit.context().db).storeFromPanel(read.data()))
            return PanelWalk::PanelOutcome::Succeeded;
        const Message question
            = Message().value(userId).add(u" nolu kullanıcının bilgileri alınamadı, Devam etmek istiyoru musunuz?"_s);
        return visit.askToContinue(question) ? PanelWalk::PanelOutcome::FailedHandled : PanelWalk::PanelOutcome::Stop;
    });
}

WalkResult UserTransfer::scheduledSend(const MessageSink& sink)
{
    return scheduledSend(sink, Unattended());
}

WalkResult UserTransfer::scheduledSend(const MessageSink& sink, const Unattended& options)
{
    return sendUnattended(options, sink).walk;
}

ParallelWalk::Result UserTransfer::sendAllPanels(const Unattended& options, const MessageSink& sink)
{
    ParallelWalk::Result result;
    if (!m_context.op.ask(Message(u"Kullanıcı listesini göndermek istiyor musunuz?"_s))) {
        result.walk.outcome = WalkResult::Outcome::Declined;
        return result;
    }
    if (!checkAdministratorRights(m_context.session, m_context.op)) {
        result.walk.outcome = WalkResult::Outcome::NoRights;
        return result;
    }
    return sendUnattended(options, sink);
}

ParallelWalk::Result UserTransfer::sendUnattended(const Unattended& options, const MessageSink& sink)
{
    ParallelWalk::Result result;
    SendableUsers users = SendableUsers::load(m_context.db, UserSelection::all());
    // Worked out once for all the panels compared with.
    if (options.changedOnly)
        users.addFingerprints();
    if (users.isEmpty()) {
        sink(Message(kListEmpty));
        result.walk.outcome = WalkResult::Outcome::Refused;
        return result;
    }
    for (qint32 id : users.refused)
        sink(cardRefusal(id));
    result.walk.membersRefused = static_cast<int>(users.refused.size());
    if (users.sendable.isEmpty()) {
        result.walk.outcome = WalkResult::Outcome::Refused;
        return result;
    }
    ParallelWalk::Options walkOptions = options.walk;
    // A full send counts users over all panels, so that seven minutes of it show movement; a
    // send of changes is over in seconds and counts panels.
    if (!options.changedOnly)
        walkOptions.membersPerPanel = static_cast<int>(users.sendable.size());
    ParallelWalk walk(m_context, walkOptions);
    // The lanes tell their failures one at a time, and never while another lane speaks.
    SendMode mode;
    mode.interactive = false;
    mode.sink = [&](const Message& message) {
        QMutexLocker lock(&walk.tellLock());
        sink(message);
    };
    const qint32 highestId = users.sendable.last().id;
    result = walk.run([&](PanelVisit& visit) {
        if (!options.changedOnly)
            return sendList(visit, users.sendable, highestId, mode);
        // Read once: compared here, then handed on to note what the panel took.
        PanelHeldUsers::Blocks held;
        QString error;
        if (!PanelHeldUsers(visit.context().db).load(visit.panelNumber(), &held, &error)) {
            mode.sink(Message().value(error));
            return PanelWalk::PanelOutcome::FailedHandled;
        }
        const UserChanges changes = UserChanges::between(users, held);
        return sendList(visit, changes.toSend(), highestId, mode, changes.removed, nullptr, &held);
    });
    result.walk.membersRefused = static_cast<int>(users.refused.size());
    if (!result.failures.isEmpty())
        sink(ParallelWalk::failureReport(result.failures));
    if (result.walk.completed())
        sink(Message(u"Tüm işlemler tamamlandı!"_s));
    return result;
}
