#include "operations/backup/BackupOperations.h"

#include "operations/panels/OperationContext.h"
#include "store/Operator.h"
#include "store/RightsCheck.h"
#include "store/StationSettings.h"

#include <QDebug>

using namespace Qt::StringLiterals;

BackupOperations::BackupOperations(OperationContext& context, const QString& backupFolder)
    : m_context(context)
    , m_folder(backupFolder)
{ }

BackupOperations::Result BackupOperations::backupNow()
{
    if (!m_context.settings.isServer()) {
        m_context.op.tell(serverOnlyMessage(), Operator::Kind::Warning);
        return { Outcome::Refused, {} };
    }
    m_context.op.status(Message(u"Veritabanı yedekleniyor..."_s));
    return finish(PassageBackup(m_context.db, m_folder).backup(m_context.now()));
}

BackupOperations::Result BackupOperations::removeBefore(const QDate& before)
{
    if (!m_context.settings.isServer()) {
        m_context.op.tell(serverOnlyMessage(), Operator::Kind::Warning);
        return { Outcome::Refused, {} };
    }
    if (!m_context.op.ask(removalQuestion(before)))
        return { Outcome::Declined, {} };
    if (!checkAdministratorRights(m_context.session, m_context.op))
        return { Outcome::NoRights, {} };
    m_context.op.status(Message(u"Veritabanı yedekleniyor..."_s));
    return finish(
        PassageBackup(m_context.db, m_folder).backupAndRemove(QDateTime(before, QTime(0, 0)), m_context.now()));
}

BackupOperations::Result BackupOperations::finish(const PassageBackup::Result& backup)
{
    m_context.op.status(Message());
    if (!backup.detail.isEmpty())
        qWarning().noquote() << "backup:" << backup.detail;
    m_context.op.tell(backup.message, backup.ok ? Operator::Kind::Information : Operator::Kind::Error);
    return { backup.ok ? Outcome::Done : Outcome::Failed, backup };
}

Message BackupOperations::removalQuestion(const QDate& before)
{
    return Message()
        .value(before.toString(u"dd/MM/yyyy"_s))
        .add(u" tarihinden önceki geçiş kayıtları yedek alındıktan sonra silinecek."_s)
        .value(u" "_s)
        .add(u"Devam etmek istiyor musunuz?"_s);
}

Message BackupOperations::serverOnlyMessage()
{
    return Message(u"Bu işlem ancak server üzerinde yapılabilir"_s);
}
