#include "operations/records/RecordRetrieval.h"

#include "operations/panels/OperationContext.h"
#include "operations/panels/PanelRoster.h"
#include "operations/panels/PanelVisit.h"
#include "operations/panels/PanelWalk.h"
#include "operations/panels/ParallelWalk.h"
#include "operations/records/RecordErasures.h"
#include "operations/records/RecordFetch.h"
#include "protocol/UserCommands.h"
#include "protocol/ZoneDoorCommands.h"
#include "store/Operator.h"
#include "store/RightsCheck.h"

#include <QMutex>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

Message withPanel(const QString& text, qint32 panelNumber)
{
    return Message(text).add(u" Panel:"_s).value(panelNumber);
}

Message notReadMessage(qint32 panelNumber)
{
    return withPanel(u"Offline Kayıtlar Alınamadı..."_s, panelNumber);
}

Message succeededKeepingRecords()
{
    return Message(u"İşlem başarı ile tamamlandı!"_s).newLine().add(u"Offline Kayıtları Silmeyi Unutmayın!"_s);
}

Message notErased()
{
    return Message(u"İşlem başarı ile tamamlandı!"_s).newLine().add(u"Fakat Offline Kayıtlar Silinemedi!"_s);
}

Message erased(qint32 panelNumber)
{
    return Message(u"İşlem Tamamlandı, Offline Kayıtlar Silindi... Panel:"_s).value(panelNumber);
}

// The ending of a panel, with the count of pieces kept apart when there were any.
Message withKeptBack(Message message, const RecordFetch::Result& fetched)
{
    if (fetched.download.unreadCount > 0)
        message.newLine().append(RecordFetch::keptBackLine(fetched.download));
    return message;
}

// "Alınan kayıt: 40, eklenen: 38, zaten kayıtlı: 2, ayrı tutulan: 0", from the counts since `from`.
Message countsLine(const RecordRetrieval::Result& now, const RecordRetrieval::Result& from = {})
{
    const auto n = [](int value) -> QString { return u' ' + QString::number(value); };
    return Message(u"Alınan kayıt:"_s)
        .value(n(now.downloaded - from.downloaded) + u", "_s)
        .add(u"eklenen:"_s)
        .value(n(now.added - from.added) + u", "_s)
        .add(u"zaten kayıtlı:"_s)
        .value(n(now.duplicates - from.duplicates) + u", "_s)
        .add(u"ayrı tutulan:"_s)
        .value(n(now.keptBack - from.keptBack));
}

} // namespace

RecordRetrieval::Result RecordRetrieval::run(OperationContext& context, const Options& options)
{
    Result result;
    Operator& op = context.op;
    const bool all = options.target == PanelTarget::All;

    if (!options.scheduled) {
        // Rights come before the question here, unlike most operations.
        if (!checkAdministratorRights(context.session, op)) {
            result.walk.outcome = WalkResult::Outcome::NoRights;
            return result;
        }
        const Message question(all ? u"Tüm Panellerden Offline Kayıtları Almak İstiyor musunuz?"_s
                                   : u"Panelden Offline Kayıtları Almak İstiyor musunuz?"_s);
        if (!op.ask(question)) {
            result.walk.outcome = WalkResult::Outcome::Declined;
            return result;
        }
        if (!all) {
            const auto selected = context.roster.selectedEntry();
            if (selected && (selected->panelNumber < 1 || selected->panelNumber > 255)) {
                op.tell(Message(u"Mevcut Panel ID hatalı, 1-255 arası bir sayı giriniz!"_s), Operator::Kind::Warning);
                result.walk.outcome = WalkResult::Outcome::Refused;
                return result;
            }
        }
    }

    PanelWalk::Plan plan;
    plan.confirmation = Message();
    plan.checkRights = false;
    plan.target = options.target;
    plan.selectedSucceeded = Message(); // each panel's own ending is told by the work below
    plan.allDone = Message(u"Tüm işlemler tamamlandı!"_s);
    if (!options.eraseAfter)
        plan.allDone.newLine().add(u"Offline Kayıtları Silmeyi Unutmayın!"_s);
    plan.summary = [&result] { return countsLine(result); };
    plan.failureQuestion = [](const PanelEntry& entry) {
        return notReadMessage(entry.panelNumber).newLine().add(u"Devam Etmek İstiyor musunuz?"_s);
    };

    // The counts when this panel's work began, for the panel's own ending.
    Result panelStart;
    // A panel's ending: a message for the selected panel (with what it brought), the status line
    // in a walk over all (whose final message counts everything).
    const auto finish = [&](const PanelVisit& visit, const Message& message, Operator::Kind kind) {
        if (visit.allPanels())
            visit.context().op.status(message);
        else if (result.downloaded == panelStart.downloaded)
            visit.context().op.tell(message, kind);
        else
            visit.context().op.tell(Message(message).newLine().append(countsLine(result, panelStart)), kind);
    };
    // Nobody is asked during the walk: the daily run, and the walk over several panels at once.
    const bool parallel = all && options.parallel.has_value();
    const bool unattended = options.scheduled || parallel;
    // The lanes of a parallel walk add to the same counts.
    QMutex tallyMutex;
    const auto tally = [&](int Result::*field, int amount) {
        QMutexLocker lock(&tallyMutex);
        result.*field += amount;
    };

    const PanelWalk::Work work = [&](PanelVisit& visit) {
        OperationContext& lane = visit.context();
        Operator& laneOp = lane.op;
        // Only the selected panel tells its own counts; a walk over all has one lane at a time there.
        if (!visit.allPanels())
            panelStart = result;
        const qint32 panel = visit.panelNumber();
        if (unattended && laneOp.cancelRequested())
            return PanelWalk::PanelOutcome::Stop;
        const auto failed = [&]() {
            if (visit.allPanels() && !unattended)
                return PanelWalk::PanelOutcome::Failed; // the walk asks whether to go on
            finish(visit, notReadMessage(panel), Operator::Kind::Error);
            return PanelWalk::PanelOutcome::FailedHandled;
        };

        const CommandResult<qint32> count = ReadRecordCount(visit.link(), visit.address());
        if (!count.isAccepted())
            return failed();
        qint32 held = count.data();
        if (held == 0) {
            finish(visit, withPanel(u"Kayıt Bulunamadı..."_s, panel), Operator::Kind::Information);
            return PanelWalk::PanelOutcome::Succeeded;
        }

        // Fetches and stores what the panel holds; false after a failure already handled.
        RecordFetch::Result fetched;
        std::optional<PanelWalk::PanelOutcome> failure;
        const auto fetch = [&]() {
            fetched = RecordFetch::run(visit.link(), lane.db, lane.clock, panel, visit.address(),
                                       [&](const Message& line) { laneOp.status(line); });
            tally(&Result::downloaded, fetched.import.records);
            tally(&Result::added, fetched.import.added);
            tally(&Result::duplicates, fetched.import.duplicates);
            tally(&Result::keptBack, fetched.download.unreadCount);
            if (fetched.stored)
                return true;
            Message why = notReadMessage(panel);
            if (!fetched.error.isEmpty())
                why.newLine().value(fetched.error);
            if (visit.allPanels() && !unattended) {
                laneOp.tell(why, Operator::Kind::Error);
                failure = visit.askToContinue(Message(u"Devam Etmek İstiyor musunuz?"_s))
                    ? PanelWalk::PanelOutcome::FailedHandled
                    : PanelWalk::PanelOutcome::Stop;
            } else {
                finish(visit, why, Operator::Kind::Error);
                failure = PanelWalk::PanelOutcome::FailedHandled;
            }
            return false;
        };
        if (!fetch())
            return *failure;
        // What came before a broken stream is stored; the panel keeps everything for next time.
        if (fetched.download.outcome != RecordDownloadCollector::Complete)
            return failed();

        if (!options.eraseAfter) {
            finish(visit, withKeptBack(succeededKeepingRecords(), fetched), Operator::Kind::Information);
            return PanelWalk::PanelOutcome::Succeeded;
        }
        // Erased only when every record the panel holds is committed: the stream was whole and
        // readable, at least as many records came as the panel announced, and its count has not
        // moved since. Passages made meanwhile are fetched again, a bounded number of times.
        laneOp.status(RecordFetch::waitLine(u"Offline Kayıtlar Siliniyor..."_s, panel));
        Message why;
        for (int round = 1;; ++round) {
            if (!fetched.mayErasePanel()) {
                why = fetched.download.unreadable > 0 ? Message() : Message(u"Panelin kayıtları tam alınamadı."_s);
                break;
            }
            if (fetched.download.received < held) {
                why = Message(u"Panelin bildirdiğinden az kayıt alındı."_s);
                break;
            }
            // Nothing but the count between the mark and the erase.
            QString noteError;
            const auto mark = RecordErasures(lane.db).current(&noteError);
            if (!mark) {
                why = Message().value(noteError);
                break;
            }
            const CommandResult<qint32> now = ReadRecordCount(visit.link(), visit.address());
            if (now.isAccepted() && now.data() == fetched.download.received) {
                const CommandResult<> erasure = RecordFetch::eraseAtOnce(visit.link(), lane.db, panel, visit.address(),
                                                                         visit.now(), *mark, now.data(), &noteError);
                if (erasure.isAccepted()) {
                    tally(&Result::panelsErased, 1);
                    finish(visit, withKeptBack(erased(panel), fetched), Operator::Kind::Information);
                    return PanelWalk::PanelOutcome::Succeeded;
                }
                break;
            }
            if (!now.isAccepted())
                break; // no count, no erase
            if (now.data() < fetched.download.received || round >= MaxFetchRounds) {
                why = Message(u"Panelin kayıt sayısı değişti, kayıtlar silinmedi."_s);
                break;
            }
            held = now.data();
            if (!fetch())
                return *failure;
        }
        tally(&Result::panelsNotErased, 1);
        Message told = notErased();
        if (!why.isEmpty())
            told.newLine().append(why);
        finish(visit, withKeptBack(told, fetched), Operator::Kind::Warning);
        return PanelWalk::PanelOutcome::Succeeded;
    };

    if (parallel) {
        const ParallelWalk::Result walked = ParallelWalk(context, *options.parallel).run(work);
        result.walk = walked.walk;
        result.failures = walked.failures;
        if (!walked.failures.isEmpty())
            op.tell(ParallelWalk::failureReport(walked.failures), Operator::Kind::Error);
        else if (walked.walk.completed() && !plan.allDone.isEmpty())
            op.tell(Message(plan.allDone).newLine().append(countsLine(result)));
        return result;
    }
    result.walk = PanelWalk(context, plan).run(work);
    return result;
}
