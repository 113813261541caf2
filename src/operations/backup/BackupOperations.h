#pragma once

#include "operations/backup/PassageBackup.h"

#include <QDate>
#include <QString>

struct OperationContext;

// Backups and the removal of old passage records asked for by a person (the backup window,
// kx410ctl): only on the server station; the removal asks first and needs administrator rights,
// and always goes through a checked backup. Every outcome is told through the context's operator.
class BackupOperations
{
public:
    enum class Outcome
    {
        Done,
        Refused, // a client station
        Declined, // the question was answered No
        NoRights,
        Failed // the backup, its check or the removal failed; nothing was removed
    };

    struct Result
    {
        Outcome outcome = Outcome::Failed;
        PassageBackup::Result backup;
    };

    BackupOperations(OperationContext& context, const QString& backupFolder);

    Result backupNow();
    // Removes the passages dated before the start of `before`, after a checked backup.
    Result removeBefore(const QDate& before);

    // The question asked before a removal.
    static Message removalQuestion(const QDate& before);
    static Message serverOnlyMessage();

private:
    Result finish(const PassageBackup::Result& backup);

    OperationContext& m_context;
    QString m_folder;
};
