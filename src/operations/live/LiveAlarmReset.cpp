#include "operations/live/LiveAlarmReset.h"

#include "operations/panels/OperationContext.h"
#include "operations/panels/PanelRoster.h"
#include "operations/panels/PanelVisit.h"
#include "operations/panels/PanelWalk.h"
#include "protocol/BroadcastFrames.h"
#include "protocol/ZoneDoorCommands.h"
#include "store/Operator.h"
#include "store/RightsCheck.h"

#include <QDebug>
#include <QHostAddress>
#include <QUdpSocket>

using namespace Qt::StringLiterals;

WalkResult LiveAlarmReset::run(OperationContext& context)
{
    return run(context.op, context.session, context.udp);
}

WalkResult LiveAlarmReset::run(Operator& op, OperatorSession& session, const UdpSettings& udp)
{
    WalkResult result;
    const Message question(u"Sistemdeki panellerin alarm-yangın durumları iptal edilecek. Onaylıyor musunuz?"_s);
    if (!op.ask(question)) {
        result.outcome = WalkResult::Outcome::Declined;
        return result;
    }
    if (!checkAdministratorRights(session, op)) {
        result.outcome = WalkResult::Outcome::NoRights;
        return result;
    }
    QString error;
    if (!send(udp, &error)) {
        qWarning().noquote() << "alarm reset:" << error;
        op.tell(Message(u"Alarm iptal mesajı gönderilemedi!"_s), Operator::Kind::Error);
        result.panelsFailed = 1;
    }
    return result;
}

bool LiveAlarmReset::send(const UdpSettings& udp, QString* error)
{
    QUdpSocket socket;
    // From the status port when it is free; the panels do not answer, so any port will do.
    if (!socket.bind(QHostAddress::AnyIPv4, udp.statusLocalPort, QUdpSocket::ShareAddress))
        socket.bind(QHostAddress::AnyIPv4, 0);
    const QByteArray frame = BroadcastFrames::alarmReset();
    const qint64 sent = socket.writeDatagram(frame, QHostAddress(udp.broadcastAddress), udp.statusPanelPort);
    if (sent != frame.size()) {
        if (error)
            *error = socket.errorString();
        return false;
    }
    return true;
}

WalkResult LiveAlarmReset::clearPanel(OperationContext& context, int position)
{
    const int previous = context.roster.selectedPosition();
    context.roster.select(position);
    PanelWalk::Plan plan;
    plan.checkRights = false;
    plan.target = PanelTarget::Selected;
    const WalkResult result = PanelWalk(context, plan).run([](PanelVisit& visit) {
        return ClearAlarm(visit.link(), visit.address()).isAccepted() ? PanelWalk::PanelOutcome::Succeeded
                                                                      : PanelWalk::PanelOutcome::Failed;
    });
    if (previous > 0)
        context.roster.select(previous);
    return result;
}
