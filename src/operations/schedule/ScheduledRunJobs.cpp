#include "operations/schedule/ScheduledRunJobs.h"

#include "operations/configuration/DailyPermissionTransfer.h"
#include "operations/panels/OperationContext.h"
#include "operations/schedule/ApprovalResetRepository.h"
#include "operations/schedule/BackupPlan.h"
#include "operations/schedule/BackupPlanRepository.h"
#include "operations/schedule/DailySendRepository.h"
#include "store/Operator.h"

#include <QDebug>

using namespace Qt::StringLiterals;

WalkResult ScheduledRunJobs::dailySend(OperationContext& context, const UserTransfer::MessageSink& sink,
                                       const UserTransfer::Unattended& options)
{
    UserTransfer::Unattended chosen = options;
    // The choice kept with the schedule settings, read at each run: a change made in the window
    // reaches whichever program runs the schedule.
    if (!chosen.changedOnly)
        chosen.changedOnly = DailySendRepository(context.db).changedOnly();
    return UserTransfer(context).scheduledSend(sink, chosen);
}

RecordRetrieval::Result ScheduledRunJobs::dailyRetrieval(OperationContext& context, bool eraseAfter,
                                                         const ParallelWalk::Options& walk)
{
    RecordRetrieval::Options options;
    options.target = PanelTarget::All;
    options.eraseAfter = eraseAfter;
    options.scheduled = true;
    options.parallel = walk;
    return RecordRetrieval::run(context, options);
}

PassageBackup::Result ScheduledRunJobs::periodicBackup(OperationContext& context, const QString& backupFolder,
                                                       const QDateTime& moment)
{
    context.op.status(Message(u"Veritabanı yedekleniyor..."_s));
    PassageBackup::Result result
        = PassageBackup(context.db, backupFolder).backupAndRemove(BackupPlan::removalCutoff(moment.date()), moment);
    if (result.ok) {
        QString error;
        if (!BackupPlanRepository(context.db).saveLastBackup(moment.date(), &error))
            qWarning().noquote() << "last backup date:" << error;
    }
    if (!result.detail.isEmpty())
        qWarning().noquote() << "periodic backup:" << result.detail;
    context.op.status(result.ok ? result.message : Message());
    return result;
}

WalkResult ScheduledRunJobs::approvalReset(OperationContext& context)
{
    ApprovalResetPlan plan;
    QString error;
    if (!ApprovalResetRepository(context.db).load(&plan, &error))
        qWarning().noquote() << "approval reset:" << error;
    return DailyPermissionTransfer(context).reset(plan.toPanels);
}
