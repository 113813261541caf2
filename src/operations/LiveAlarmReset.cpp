#include "operations/LiveAlarmReset.h"

#include "operations/OperationContext.h"
#include "protocol/BroadcastFrames.h"
#include "store/Operator.h"
#include "store/RightsCheck.h"

#include <QHostAddress>
#include <QUdpSocket>

using namespace Qt::StringLiterals;

WalkResult LiveAlarmReset::run(OperationContext& context)
{
    WalkResult result;
    const Message question(u"Sistemdeki panellerin alarm-yangın durumları iptal edilecek. Onaylıyor musunuz?"_s);
    if (!context.op.ask(question)) {
        result.outcome = WalkResult::Outcome::Declined;
        return result;
    }
    if (!checkAdministratorRights(context.session, context.op)) {
        result.outcome = WalkResult::Outcome::NoRights;
        return result;
    }
    if (!send(context.udp))
        result.panelsFailed = 1;
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
