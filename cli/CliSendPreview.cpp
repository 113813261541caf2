#include "CliSendPreview.h"

#include "CliConsole.h"
#include "CliContext.h"
#include "CliExit.h"
#include "operations/panels/PanelRoster.h"
#include "operations/panels/PanelSendLog.h"
#include "operations/users/UserSendPreview.h"
#include "store/Database.h"

using namespace Qt::StringLiterals;

namespace {

// "3 added (1,2,5)": the IDs shown up to a limit, so a first send to a full panel stays readable.
QString idList(const QString& what, const QList<qint32>& ids)
{
    constexpr int kShown = 20;
    QStringList shown;
    for (qsizetype i = 0; i < ids.size() && i < kShown; ++i)
        shown << QString::number(ids.at(i));
    QString text = QString::number(ids.size()) + u' ' + what;
    if (!ids.isEmpty())
        text += u" ("_s + shown.join(u',') + (ids.size() > kShown ? u",..."_s : QString()) + u')';
    return text;
}

QList<qint32> idsOf(const QList<UserRecord>& users)
{
    QList<qint32> ids;
    for (const UserRecord& u : users)
        ids << u.id;
    return ids;
}

QString lastSentText(const QDateTime& at)
{
    return at.isValid() ? u"last sent "_s + at.toString(u"yyyy-MM-dd HH:mm:ss"_s) : u"never sent"_s;
}

} // namespace

int CliSendPreview::users(CliContext& context, bool changedOnly)
{
    QString error;
    const QList<UserSendPreview> previews
        = UserSendPreview::forPanels(context.db(), context.roster(), changedOnly, &error);
    if (!error.isEmpty()) {
        CliConsole::errLine(error);
        return CliExit::Failed;
    }
    for (const UserSendPreview& p : previews) {
        QString line = u"panel "_s + QString::number(p.panelNumber) + u": would send "_s + QString::number(p.toSend)
            + u" users"_s;
        if (changedOnly)
            line += u", delete "_s + QString::number(p.toDelete);
        line += u"; "_s + lastSentText(p.lastSent) + u"; since then: "_s + idList(u"added"_s, idsOf(p.changes.added))
            + u", "_s + idList(u"changed"_s, idsOf(p.changes.changed)) + u", "_s
            + idList(u"removed"_s, p.changes.removed);
        CliConsole::outLine(line);
    }
    return CliExit::Success;
}

int CliSendPreview::sentData(CliContext& context, SentData what)
{
    const PanelSendLog log(context.db());
    const PanelRoster& roster = context.roster();
    for (const PanelEntry& entry : roster.entries()) {
        if (!entry.isEligible() || !roster.isReachable(entry.position))
            continue;
        QString error;
        const auto last = log.last(entry.panelNumber, what, &error);
        const QByteArray now = log.currentFingerprint(entry.panelNumber, what, &error);
        if (!error.isEmpty()) {
            CliConsole::errLine(error);
            return CliExit::Failed;
        }
        QString state = u"differs from the last send"_s;
        if (!last)
            state = u"all would be new to the panel"_s;
        else if (last->fingerprint == now)
            state = u"same as the last send"_s;
        CliConsole::outLine(u"panel "_s + QString::number(entry.panelNumber) + u": "_s
                            + lastSentText(last ? last->at : QDateTime()) + u"; "_s + state);
    }
    return CliExit::Success;
}
