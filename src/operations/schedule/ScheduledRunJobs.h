#pragma once

#include "operations/backup/PassageBackup.h"
#include "operations/records/RecordRetrieval.h"
#include "operations/users/UserTransfer.h"

#include <QString>

struct OperationContext;

// What each scheduled run does on the panel worker, the same whoever owns the worker (the main
// window, the service without windows, a test).
class ScheduledRunJobs
{
public:
    // Every user to every panel (or only what changed since each panel's last send, when the
    // options or the stored schedule settings say so), several panels at once; failures go to the
    // sink and the walk goes on.
    static WalkResult dailySend(OperationContext& context, const UserTransfer::MessageSink& sink,
                                const UserTransfer::Unattended& options = {});
    // Every panel's stored records, erased after their rows are stored when eraseAfter is set,
    // several panels at once.
    static RecordRetrieval::Result dailyRetrieval(OperationContext& context, bool eraseAfter,
                                                  const ParallelWalk::Options& walk = {});
    // A checked backup into backupFolder, the removal of the records up to the first day of the
    // month of `moment`, 23:59:59, and that day noted as the last backup. The outcome is for the
    // caller to tell: the job only shows its progress in the status line.
    static PassageBackup::Result periodicBackup(OperationContext& context, const QString& backupFolder,
                                                const QDateTime& moment);
    // Every daily approval back to no, and the panels told when the settings say so.
    static WalkResult approvalReset(OperationContext& context);
};
