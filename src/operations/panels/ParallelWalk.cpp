#include "operations/panels/ParallelWalk.h"

#include "operations/panels/OperationContext.h"
#include "operations/panels/PanelRoster.h"
#include "operations/panels/PanelVisit.h"
#include "protocol/PanelLink.h"
#include "store/Database.h"
#include "store/Operator.h"

#include <QMutex>
#include <QThread>
#include <algorithm>
#include <atomic>
#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

// One lane's view of the person's operator: calls from several lanes reach it one at a time,
// nothing is asked (the unattended walk goes on), and the last thing said about the panel in
// hand is kept as the reason should it fail.
class LaneOperator : public Operator
{
public:
    LaneOperator(Operator& target, QMutex& mutex)
        : m_target(target)
        , m_mutex(mutex)
    { }

    bool ask(const Message& question) override
    {
        m_lastNote = question;
        return true;
    }
    void tell(const Message& message, Kind kind) override
    {
        m_lastNote = message;
        if (kind == Kind::Information)
            status(message);
    }
    // Each lane counts its members; only the walk's count of panels reaches the person.
    void progress(int, int) override { }
    void status(const Message& line) override
    {
        m_lastNote = line;
        QMutexLocker lock(&m_mutex);
        m_target.status(line);
    }
    void requestLogin() override { }
    bool cancelRequested() const override
    {
        QMutexLocker lock(&m_mutex);
        return m_target.cancelRequested();
    }

    void beginPanel() { m_lastNote = Message(); }
    const Message& lastNote() const { return m_lastNote; }

private:
    Operator& m_target;
    QMutex& m_mutex;
    Message m_lastNote;
};

// What one panel came to, in roster order once the lanes are done.
struct PanelEnding
{
    bool visited = false;
    bool failed = false;
    ParallelWalk::PanelFailure failure;
};

Message unreachableLine(qint32 panelNumber)
{
    return Message().value(panelNumber).add(u" nolu panel cevap vermiyor, bir sonraki çalışmaya bırakıldı."_s);
}

Message failedLine(qint32 panelNumber)
{
    return Message(u"Panel "_s).value(panelNumber).value(u" : "_s).add(u"Hata, İşlem tamamlanamadı!"_s);
}

} // namespace

ParallelWalk::ParallelWalk(OperationContext& context, Options options)
    : m_context(context)
    , m_options(options)
{ }

ParallelWalk::Result ParallelWalk::run(const PanelWalk::Work& work)
{
    Result result;
    QList<PanelEntry> targets;
    for (const PanelEntry& e : m_context.roster.entries()) {
        // A client station only walks the panels it watches.
        if (e.isEligible() && m_context.roster.isReachable(e.position))
            targets << e;
    }
    if (targets.isEmpty())
        return result;

    const int total = static_cast<int>(targets.size());
    std::vector<PanelEnding> endings(static_cast<size_t>(total));
    std::atomic<int> next{ 0 };
    std::atomic<int> done{ 0 };
    std::atomic<bool> stopped{ false };
    const PanelLink::Settings linkSettings = m_context.link.settings();

    const auto lane = [&](int laneNumber) {
        QString error;
        Database db = m_context.db.cloneForThread(u"walk"_s + QString::number(laneNumber), &error);
        PanelLink link;
        link.setSettings(linkSettings);
        link.setGiveUpAfter(m_options.giveUpAfter);
        LaneOperator op(m_context.op, m_tellMutex);
        OperationContext context{
            db, link, op, m_context.session, m_context.settings, m_context.roster, m_context.clock, m_context.udp
        };
        for (int i = next++; i < total && !stopped; i = next++) {
            const PanelEntry& entry = targets.at(i);
            PanelEnding& ending = endings[static_cast<size_t>(i)];
            ending.failure.panelNumber = entry.panelNumber;
            op.beginPanel();
            PanelWalk::PanelOutcome outcome = PanelWalk::PanelOutcome::Failed;
            if (!db.isOpen()) {
                ending.failure.reason = Message().value(error);
            } else if (!link.ConnectPanel(entry.ip, entry.port)) {
                ending.failure.unreachable = true;
            } else {
                PanelVisit visit(context, entry, true);
                outcome = work(visit);
                ending.visited = true;
                ending.failure.unreachable = link.gaveUp();
            }
            link.DisconnectPanel();
            if (outcome == PanelWalk::PanelOutcome::Stop) {
                stopped = true;
                ending.visited = false;
                continue;
            }
            ending.failed = outcome != PanelWalk::PanelOutcome::Succeeded || ending.failure.unreachable;
            if (ending.failure.unreachable)
                ending.failure.reason = unreachableLine(entry.panelNumber);
            else if (ending.failed && ending.failure.reason.isEmpty())
                ending.failure.reason = op.lastNote().isEmpty() ? failedLine(entry.panelNumber) : op.lastNote();
            const int finished = ++done;
            QMutexLocker lock(&m_tellMutex);
            m_context.op.progress(finished, total);
        }
    };

    const int lanes = std::clamp(m_options.parallel, 1, total);
    std::vector<std::unique_ptr<QThread>> threads;
    for (int l = 0; l < lanes; ++l) {
        threads.emplace_back(QThread::create(lane, l + 1));
        threads.back()->setObjectName(u"PanelWalkLane"_s);
        threads.back()->start();
    }
    for (auto& thread : threads)
        thread->wait();
    m_context.op.progress(0, 0);

    for (const PanelEnding& ending : endings) {
        if (ending.visited)
            ++result.walk.panelsVisited;
        if (ending.failed) {
            ++result.walk.panelsFailed;
            result.failures << ending.failure;
        }
    }
    if (stopped)
        result.walk.outcome = WalkResult::Outcome::Stopped;
    return result;
}

Message ParallelWalk::failureReport(const QList<PanelFailure>& failures)
{
    Message report;
    for (const PanelFailure& failure : failures) {
        if (!report.isEmpty())
            report.newLine();
        report.append(failure.reason);
    }
    return report;
}
