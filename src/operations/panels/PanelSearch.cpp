#include "operations/panels/PanelSearch.h"

#include "operations/panels/OperationContext.h"
#include "operations/panels/PanelRoster.h"
#include "protocol/BroadcastFrames.h"
#include "protocol/PanelSettingsFrame.h"
#include "store/Database.h"
#include "store/Operator.h"
#include "store/RightsCheck.h"
#include "store/StationSettings.h"
#include "store/Transaction.h"

#include <QDeadlineTimer>
#include <QNetworkDatagram>
#include <QSet>
#include <QUdpSocket>

using namespace Qt::StringLiterals;

namespace {

QString n(int i)
{
    return QString::number(i);
}

// One PanelSettings row for a panel found, as columns and values side by side.
void panelRow(int position, const SearchAnswer& a, QStringList& columns, QVariantList& values)
{
    const PanelSettingsRecord& s = a.settings;
    auto put = [&](const QString& column, const QVariant& value) {
        columns << column;
        values << value;
    };
    put(u"Sira No"_s, position);
    put(u"Panel ID"_s, a.panelNumber);
    put(u"Seri No"_s, a.serial);
    put(u"Panel Adi"_s, s.name.trimmed());
    put(u"Panel Model"_s, s.model);
    put(u"Kontrol Modu"_s, s.controlMode);
    put(u"Kart Sayisi"_s, s.cardCount);
    for (int i = 0; i < 4; ++i) {
        put(u"Panel IP"_s + n(i + 1), s.ip[i]);
        put(u"Panel Subnet"_s + n(i + 1), s.subnet[i]);
        put(u"Panel GW"_s + n(i + 1), s.gateway[i]);
        put(u"Panel Remote IP"_s + n(i + 1), s.remoteIp[i]);
        put(u"Panel M"_s + n(i + 1) + u" Role"_s, s.masterRelayTimes[i]);
    }
    put(u"Panel TCP Port"_s, s.tcpPort);
    put(u"Panel Remote TCP Port"_s, s.remoteTcpPort);
    put(u"SingleUart"_s, s.singleUart);
    put(u"Lokal APB"_s, s.localApb);
    put(u"Lokal APB2"_s, s.localApb2);
    put(u"Global APB"_s, s.globalApb);
    put(u"Global APB Grup"_s, s.globalApbGroup);
    put(u"Global Access Count Control"_s, s.globalAccessCountControl);
    put(u"Global MaxIn Count Control"_s, s.globalMaxInCountControl);
    put(u"Global Capacity Control"_s, s.globalCapacityControl);
    put(u"Panel Local Capacity"_s, s.localCapacity);
    put(u"Panel Local Capacity Value"_s, s.localCapacityValue);
    put(u"Panel Local Capacity Clear"_s, s.localCapacityClear);
    put(u"Panel Same Tag Block"_s, s.sameTagBlock);
    put(u"Panel Same Tag Block Type"_s, s.sameTagBlockType);
    put(u"Panel Same Tag Block MinSec"_s, s.sameTagBlockMinSec);
    put(u"Status Data Update"_s, s.statusDataUpdate);
    put(u"Status Data Update Type"_s, s.statusDataUpdateType);
    put(u"Status Data Update Time"_s, s.statusDataUpdateTime);
    put(u"Buton Aktif"_s, s.buttonActive);
    put(u"Button Loop"_s, s.buttonLoop);
    put(u"Loop Trigger Time"_s, s.loopTriggerTime);
    put(u"Panel Global Bolge1"_s, s.globalZone1);
    put(u"Panel Global Bolge2"_s, s.globalZone2);
    put(u"Gecici Grup Aktif"_s, s.temporaryGroupActive);
    put(u"Yangin Aktif"_s, s.fireActive);
    put(u"Yangin Yayin Aktif"_s, s.fireBroadcastActive);
    put(u"Gece Kapasiteyi Sil"_s, s.clearCapacityAtNight);
    for (int d = 0; d < 4; ++d) {
        const PanelSettingsRecord::Door& door = s.doors[d];
        const QString k = u"Kapi"_s + n(d + 1);
        put(k + u" Aktif"_s, door.active);
        put(k + u" Adi"_s, QString());
        put(k + u" Role"_s, door.relayTime);
        put(k + u" Calisma Modu"_s, door.workingMode);
        put(k + u" Kapi Tipi"_s, door.doorType);
        put(k + u" Gecis Modu"_s, door.accessMode);
        put(k + u" Modeli"_s, door.readerModel);
        put(k + u" Role Secimi"_s, door.relayChoice);
        put(k + u" Role No"_s, door.relayNo);
        put(k + u" Button Loop"_s, door.buttonLoop);
        put(k + u" Lokal Bolge"_s, door.localZone);
    }
}

// Takes the answers of one datagram; a panel that answers twice is kept once.
void collect(const QByteArray& datagram, QList<SearchAnswer>& found, QSet<qint32>& numbers)
{
    for (const QByteArray& piece : BroadcastFrames::splitDatagram(datagram)) {
        if (found.size() >= BroadcastFrames::MaxSearchAnswers)
            return;
        SearchAnswer answer;
        if (PanelSettingsFrame::parseSearchAnswer(piece, answer) != ParseStatus::Valid)
            continue;
        if (numbers.contains(answer.panelNumber))
            continue;
        numbers.insert(answer.panelNumber);
        found << answer;
    }
}

// "Panel 3 (127.0.0.1:4001) Giriş Kapısı", one line per panel found.
Message foundList(const QList<SearchAnswer>& answers)
{
    Message list;
    for (const SearchAnswer& a : answers) {
        const PanelSettingsRecord& s = a.settings;
        const QString address = n(s.ip[0]) + u'.' + n(s.ip[1]) + u'.' + n(s.ip[2]) + u'.' + n(s.ip[3]);
        list.newLine()
            .add(u"Panel"_s)
            .value(u' ' + n(a.panelNumber) + u" (" + address + u':' + n(s.tcpPort) + u") " + s.name.trimmed());
    }
    return list;
}

} // namespace

PanelSearch::PanelSearch(OperationContext& context)
    : PanelSearch(context, Timing())
{ }

PanelSearch::PanelSearch(OperationContext& context, Timing timing)
    : m_context(context)
    , m_timing(timing)
{ }

WalkResult PanelSearch::run(QList<SearchAnswer>* found)
{
    Operator& op = m_context.op;
    WalkResult result;
    if (!m_context.settings.isServer()) {
        op.tell(Message(u"Bu işlem ancak server üzerinde yapılabilir"_s), Operator::Kind::Warning);
        result.outcome = WalkResult::Outcome::Refused;
        return result;
    }
    if (!checkAdministratorRights(m_context.session, op)) {
        result.outcome = WalkResult::Outcome::NoRights;
        return result;
    }
    if (!op.ask(Message(u"Sistemdeki paneller bulunarak mevcut panel listesi değiştirilecek. Onaylıyor musunuz?"_s))) {
        result.outcome = WalkResult::Outcome::Declined;
        return result;
    }

    QList<SearchAnswer> answers;
    QSet<qint32> numbers;
    {
        QUdpSocket socket;
        if (!socket.bind(QHostAddress(QHostAddress::AnyIPv4), m_context.udp.searchLocalPort,
                         QUdpSocket::ShareAddress | QUdpSocket::ReuseAddressHint)) {
            op.tell(Message().value(socket.errorString()), Operator::Kind::Error);
            result.outcome = WalkResult::Outcome::LinkFailed;
            return result;
        }
        socket.writeDatagram(BroadcastFrames::searchRequest(), QHostAddress(m_context.udp.broadcastAddress),
                             m_context.udp.searchPanelPort);
        const int ticks = qMax(1, m_timing.ticks);
        op.progress(0, ticks);
        for (int countdown = ticks; countdown > 0;) {
            // Answers are awaited on the monotonic timer, like every socket wait.
            QDeadlineTimer tick(m_timing.tickMs);
            while (!tick.hasExpired()) {
                if (!socket.hasPendingDatagrams() && !socket.waitForReadyRead(static_cast<int>(tick.remainingTime())))
                    continue;
                while (socket.hasPendingDatagrams())
                    collect(socket.receiveDatagram().data(), answers, numbers);
            }
            --countdown;
            op.progress(ticks - countdown, ticks);
            op.status(Message(u"Searching... "_s).value(countdown));
        }
        while (socket.hasPendingDatagrams())
            collect(socket.receiveDatagram().data(), answers, numbers);
    }
    op.status(Message());

    // Nobody answered: the list stays as it was, and the person is told so.
    if (answers.isEmpty()) {
        op.progress(0, 0);
        op.tell(Message(u"Hiçbir panel cevap vermedi. Panel listesi değiştirilmedi."_s));
        return result;
    }
    // The panels' own names and settings overwrite what was typed here: show what came, ask again.
    Message question;
    question.value(answers.size())
        .add(u" panel bulundu:"_s)
        .append(foundList(answers))
        .newLine()
        .add(u"Panel listesi ve panel adları bulunan panellerle değiştirilsin mi?"_s);
    if (!op.ask(question)) {
        op.progress(0, 0);
        result.outcome = WalkResult::Outcome::Declined;
        return result;
    }
    {
        QString error;
        if (!storeAnswers(m_context, answers, &error)) {
            op.progress(0, 0);
            op.tell(Message().value(error), Operator::Kind::Error);
            result.outcome = WalkResult::Outcome::Refused;
            return result;
        }
        m_context.roster.load(m_context.db);
        m_context.roster.select(1);
        m_context.roster.notifyDoorStatusChanged();
    }
    op.progress(0, 0);
    result.panelsVisited = static_cast<int>(answers.size());
    if (found)
        *found = answers;
    return result;
}

bool PanelSearch::storeAnswers(OperationContext& context, const QList<SearchAnswer>& answers, QString* error)
{
    Database& db = context.db;
    Transaction transaction(db);
    if (!transaction.isActive()) {
        if (error)
            *error = transaction.error();
        return false;
    }
    if (!db.exec(u"DELETE FROM \"PanelSettings\""_s, {}, error))
        return false;
    for (int i = 0; i < answers.size(); ++i) {
        QStringList columns;
        QVariantList values;
        panelRow(i + 1, answers.at(i), columns, values);
        if (!db.insert(u"PanelSettings"_s, columns, values, error))
            return false;
    }
    return transaction.commit(error);
}
