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
#include <optional>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

// The members (users) served over all panels, added up from every lane. The person hears of it
// at most kSteps times in a walk, however many members and panels, and never of a count lower
// than one already told.
class MemberProgress
{
public:
    MemberProgress(Operator& target, QMutex& mutex, int perPanel, int panels)
        : m_target(target)
        , m_mutex(mutex)
        , m_perPanel(perPanel)
        , m_total(qint64(perPanel) * panels)
    { }

    int perPanel() const { return m_perPanel; }

    void add(int members)
    {
        if (members <= 0 || m_total <= 0)
            return;
        const qint64 done = m_done += members;
        if (done * kSteps / m_total <= m_shownStep.load())
            return;
        QMutexLocker lock(&m_mutex);
        const qint64 now = m_done.load();
        const int step = static_cast<int>(now * kSteps / m_total);
        if (step <= m_shownStep.load())
            return;
        m_shownStep = step;
        m_target.progress(static_cast<int>(now), static_cast<int>(m_total));
    }

private:
    static constexpr qint64 kSteps = 1000;

    Operator& m_target;
    QMutex& m_mutex;
    const int m_perPanel;
    const qint64 m_total;
    std::atomic<qint64> m_done{ 0 };
    std::atomic<int> m_shownStep{ 0 };
};

// One lane's view of the person's operator: calls from several lanes reach it one at a time,
// nothing is asked (the unattended walk goes on), and the last thing said about the panel in
// hand is kept as the reason should it fail.
class LaneOperator : public Operator
{
public:
    LaneOperator(Operator& target, QMutex& mutex, MemberProgress* members)
        : m_target(target)
        , m_mutex(mutex)
        , m_members(members)
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
    // The panel's members as they are served, when the walk counts members; the walk's count of
    // panels otherwise.
    void progress(int value, int) override
    {
        if (!m_members)
            return;
        const int served = std::clamp(value, 0, m_members->perPanel());
        if (served > m_served) {
            m_members->add(served - m_served);
            m_served = served;
        }
    }
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

    void beginPanel()
    {
        m_lastNote = Message();
        m_served = 0;
    }
    // A panel left early still counts its share, so that the count ends at its total.
    void endPanel()
    {
        if (m_members)
            progress(m_members->perPanel(), 0);
    }
    const Message& lastNote() const { return m_lastNote; }

private:
    Operator& m_target;
    QMutex& m_mutex;
    MemberProgress* m_members;
    Message m_lastNote;
    int m_served = 0;
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
    std::optional<MemberProgress> members;
    if (m_options.membersPerPanel > 0)
        members.emplace(m_context.op, m_tellMutex, m_options.membersPerPanel, total);

    const auto lane = [&](int laneNumber) {
        QString error;
        Database db = m_context.db.cloneForThread(u"walk"_s + QString::number(laneNumber), &error);
        PanelLink link;
        link.setSettings(linkSettings);
        link.setGiveUpAfter(m_options.giveUpAfter);
        LaneOperator op(m_context.op, m_tellMutex, members ? &*members : nullptr);
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
            if (members) {
                op.endPanel();
                continue;
            }
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
