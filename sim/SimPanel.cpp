#include "SimPanel.h"

#include "SimAccessDecider.h"
#include "SimCommandContext.h"
#include "SimCommandProcessor.h"
#include "SimFrames.h"
#include "SimRecordCommands.h"
#include "SimText.h"

#include <QHostAddress>
#include <QMutexLocker>

namespace {
constexpr int kRecordSize = 30;
constexpr quint16 kLiveDatagramPort = 11001;

bool isLoopback(const QString& host)
{
    return QHostAddress(host).isLoopback();
}
} // namespace

SimPanel::SimPanel(int number, int serial, quint16 port, const QString& pushHost, quint16 pushPort, QObject* parent)
    : QObject(parent)
    , m_number(number)
    , m_serial(serial)
    , m_port(port)
    , m_pushHost(pushHost)
    , m_pushPort(pushPort)
    , m_random(quint32(number * 65536 + serial))
{
    m_state.applySettings(SimPanelSettings::defaults(port, pushHost, pushPort, number));
}

int SimPanel::number() const
{
    QMutexLocker lock(&m_mutex);
    return m_number;
}

int SimPanel::serial() const
{
    return m_serial;
}

quint16 SimPanel::port() const
{
    return m_port;
}

QString SimPanel::pushHost() const
{
    QMutexLocker lock(&m_mutex);
    return m_pushHost;
}

quint16 SimPanel::pushPort() const
{
    QMutexLocker lock(&m_mutex);
    return m_pushPort;
}

void SimPanel::setPushTarget(const QString& host, quint16 port)
{
    QMutexLocker lock(&m_mutex);
    m_pushHost = host;
    m_pushPort = port;
}

std::optional<SimFault> SimPanel::consumeFault(const QByteArray& code)
{
    if (!m_fault.appliesTo(code))
        return std::nullopt;
    // A panel that works for a while first: a link cut half-way through a long send.
    if (m_fault.skip > 0) {
        --m_fault.skip;
        return std::nullopt;
    }
    const SimFault applied = m_fault;
    if (m_fault.remaining > 0 && --m_fault.remaining == 0)
        m_fault = SimFault();
    return applied;
}

SimPanel::Reply SimPanel::handleRequest(const QByteArray& frame)
{
    Reply reply;
    Push push;
    {
        QMutexLocker lock(&m_mutex);
        const auto head = SimCommandProcessor::parseHead(frame);
        if (!head || !SimCommandProcessor::addressed(*head, m_serial, m_number))
            return reply;
        ++m_totalRequests;
        ++m_requestCounts[head->code];
        m_recentRequests.append(frame);
        if (m_recentRequests.size() > RecentRequestsKept)
            m_recentRequests.removeFirst();
        const std::optional<SimFault> fault = consumeFault(head->code);
        const SimFault::Mode mode = fault ? fault->mode : SimFault::Mode::None;
        // A hung, refusing or babbling panel does not carry the request out.
        if (mode == SimFault::Mode::Silent)
            return reply;
        if (mode == SimFault::Mode::Drop) {
            reply.drop = true;
            return reply;
        }
        if (mode == SimFault::Mode::Refuse) {
            reply.chunks.append(
                SimFrames::refusal(head->code, m_serial, m_number, SimCommandContext::answerLength(head->code)));
            return reply;
        }
        if (mode == SimFault::Mode::Garbage) {
            reply.chunks.append(noise(13, 64, true));
            return reply;
        }

        const int number = head->code == "DS" ? head->number : m_number;
        SimCommandContext context(m_state, m_serial, number, head->code, head->fields);
        SimCommandProcessor::process(context);
        if (context.settingsChanged) {
            m_number = context.number;
            takeSettings(m_state.settings);
        }
        reply.chunks = context.answers;
        push.status = context.statusChanged;
        if (fault)
            shapeReply(reply, *fault, head->code);
        // A slow panel is slow before the fault's own delay, never instead of it.
        if (!reply.chunks.isEmpty() && reply.delayMs == 0 && (m_answerDelayMs > 0 || m_answerJitterMs > 0))
            reply.delayMs
                = m_answerDelayMs + (m_answerJitterMs > 0 ? int(m_random.bounded(quint32(m_answerJitterMs) + 1)) : 0);
    }
    send(push);
    return reply;
}

void SimPanel::shapeReply(Reply& reply, const SimFault& fault, const QByteArray& code)
{
    switch (fault.mode) {
    case SimFault::Mode::Slow:
    case SimFault::Mode::Late:
        reply.delayMs = fault.delayMs;
        break;
    case SimFault::Mode::Trickle:
        reply.trickleMs = std::max(1, fault.delayMs);
        break;
    case SimFault::Mode::Noise:
        reply.chunks.prepend(noise(1, 24, false));
        break;
    case SimFault::Mode::WrongPanel:
        for (QByteArray& chunk : reply.chunks) {
            if (chunk.startsWith('$') && chunk.size() >= 10 && code != "DD")
                chunk.replace(7, 3, SimText::number((m_number % 999) + 1, 3));
        }
        break;
    case SimFault::Mode::CutStream:
        if (code == "DD") {
            // Keep the records before the cut and half of the next one; the end marker never comes.
            QByteArray stream = reply.chunks.size() > 1 ? reply.chunks.first() : QByteArray();
            const qsizetype records = stream.size() / kRecordSize;
            const qsizetype keep = std::min<qsizetype>(fault.cutAfter, std::max<qsizetype>(records - 1, 0));
            stream = stream.isEmpty() ? QByteArray("$DD0") : stream.left(keep * kRecordSize + kRecordSize / 2);
            reply.chunks = { stream };
        }
        break;
    default:
        break;
    }
}

QByteArray SimPanel::noise(int minLength, int maxLength, bool anyByte)
{
    const int length = int(m_random.bounded(minLength, maxLength + 1));
    QByteArray text(length, ' ');
    for (char& c : text) {
        if (anyByte) {
            c = char(m_random.bounded(256));
        } else {
            // Printable noise without the characters that start or end a frame.
            do {
                c = char(m_random.bounded(32, 127));
            } while (c == '$' || c == '%' || c == '*');
        }
    }
    return text;
}

void SimPanel::takeSettings(const SimPanelSettings& settings)
{
    // Only loopback push targets are taken from a settings write: the simulator never sends to the LAN.
    if (!settings.remoteHost.isEmpty() && settings.remotePort > 0 && isLoopback(settings.remoteHost)) {
        m_pushHost = settings.remoteHost;
        m_pushPort = quint16(settings.remotePort);
    }
}

QByteArray SimPanel::handleDatagram(const QByteArray& frame)
{
    Push push;
    QByteArray answer;
    {
        QMutexLocker lock(&m_mutex);
        const QByteArray code = frame.startsWith("%GMS") ? QByteArray("GMS")
            : frame.startsWith("%US")                    ? QByteArray("US")
            : frame.startsWith("%AS")                    ? QByteArray("AS")
            : frame.startsWith("%DS")                    ? QByteArray("DS")
                                                         : QByteArray();
        if (code.isEmpty())
            return answer;
        ++m_totalRequests;
        ++m_requestCounts[code];
        const std::optional<SimFault> fault = consumeFault(code);
        const SimFault::Mode mode = fault ? fault->mode : SimFault::Mode::None;
        if (mode == SimFault::Mode::Silent || mode == SimFault::Mode::Drop)
            return answer;
        if (mode == SimFault::Mode::Garbage)
            return noise(13, 64, true);
        if (frame == "%GMS**") {
            answer = SimFrames::statusAnswer(m_state, m_serial, m_number);
        } else if (frame == "%US1975**") {
            answer = SimFrames::searchAnswer(m_state, m_serial, m_number);
        } else if (frame == "%AS0000000**") {
            m_state.alarm = false;
            m_state.fire = false;
            push.status = true;
        } else if (code == "DS") {
            const auto head = SimCommandProcessor::parseHead(frame);
            if (head && SimCommandProcessor::addressed(*head, m_serial, m_number)) {
                SimCommandContext context(m_state, m_serial, head->number, head->code, head->fields);
                SimCommandProcessor::process(context);
                if (context.settingsChanged) {
                    m_number = context.number;
                    takeSettings(m_state.settings);
                }
                answer = context.answers.value(0);
            }
        }
    }
    send(push);
    return answer;
}

SimRecord SimPanel::storePassage(const SimRecord& record, Push& push)
{
    SimAccessDecider::commit(m_state, record);
    m_state.records.append(record);
    if (record.code == PassageCode::Granted && record.door >= 1 && record.door <= 4) {
        m_state.doorStates[record.door - 1] = std::max(m_state.doorStates[record.door - 1], 1);
        if (!m_state.programmedOpen[record.door - 1])
            m_state.doorPulseUntil[record.door - 1] = record.time.addSecs(SimRecordCommands::kTriggerSeconds);
    }
    push.passages.append(record);
    push.status = true;
    return record;
}

SimRecord SimPanel::presentCard(int door, qint64 card, std::optional<Direction> direction, std::optional<QDateTime> at)
{
    Push push;
    SimRecord record;
    {
        QMutexLocker lock(&m_mutex);
        const QDateTime moment = at ? QDateTime(at->date(), at->time(), Qt::UTC) : m_state.now();
        SimAccessDecider::nightClearing(m_state, moment);
        record = storePassage(SimAccessDecider::decide(m_state, door, card, moment, direction), push);
    }
    send(push);
    return record;
}

SimRecord SimPanel::presentRandomCard()
{
    qint64 card = 0;
    int door = 1;
    {
        QMutexLocker lock(&m_mutex);
        door = int(m_random.bounded(1, 5));
        // Nine in ten cards belong to someone, any card holder as likely as any other; the rest
        // are strangers' cards.
        const int holders = m_state.userSlots.size();
        if (holders > 0 && m_random.bounded(10) != 0) {
            const int id = m_state.userSlots.at(int(m_random.bounded(quint32(holders))));
            card = m_state.users.value(id).card;
        }
        if (card == 0)
            card = qint64(m_random.bounded(1000000000u)) + 1;
    }
    return presentCard(door, card);
}

void SimPanel::pressExitButton(int door)
{
    if (door < 1 || door > 4)
        return;
    Push push;
    {
        QMutexLocker lock(&m_mutex);
        SimRecord record;
        record.door = door;
        record.localZone = m_state.settings.doors[door - 1].localZone;
        record.direction = Direction::Exit;
        record.code = PassageCode::ButtonTrigger;
        record.userId = SimRecordCommands::kDoorSourceBase + door;
        record.time = m_state.now();
        m_state.records.append(record);
        m_state.doorStates[door - 1] = std::max(m_state.doorStates[door - 1], 1);
        m_state.doorPulseUntil[door - 1] = record.time.addSecs(SimRecordCommands::kTriggerSeconds);
        push.passages.append(record);
        push.status = true;
    }
    send(push);
}

void SimPanel::setAlarm(bool alarm, bool fire)
{
    Push push;
    {
        QMutexLocker lock(&m_mutex);
        m_state.alarm = alarm;
        m_state.fire = fire;
        push.status = true;
    }
    send(push);
}

void SimPanel::tick()
{
    Push push;
    {
        QMutexLocker lock(&m_mutex);
        const QDateTime now = m_state.now();
        SimAccessDecider::nightClearing(m_state, now);
        const int weekday = now.date().dayOfWeek();
        for (int i = 0; i < 4; ++i) {
            if (m_state.doorPulseUntil[i].isValid() && now >= m_state.doorPulseUntil[i]) {
                m_state.doorPulseUntil[i] = QDateTime();
                if (m_state.doorStates[i] == 1) {
                    m_state.doorStates[i] = 0;
                    push.status = true;
                }
            }
            bool doorWanted = false;
            bool relayWanted = false;
            for (const SimProgrammedSlot& slot : std::as_const(m_state.programmedSlots)) {
                if (slot.covers(weekday, now.time())) {
                    doorWanted = doorWanted || slot.doors[i];
                    relayWanted = relayWanted || slot.relays[i];
                }
            }
            if (doorWanted != m_state.programmedOpen[i]) {
                m_state.programmedOpen[i] = doorWanted;
                m_state.doorStates[i] = doorWanted ? 2 : 0;
                m_state.storeOperation(doorWanted ? PassageCode::ProgrammedOpen : PassageCode::ProgrammedClose, i + 1,
                                       SimRecordCommands::kDoorSourceBase + i + 1, now);
                push.status = true;
            }
            if (relayWanted != m_state.programmedRelay[i]) {
                m_state.programmedRelay[i] = relayWanted;
                m_state.storeOperation(relayWanted ? PassageCode::ProgrammedOpen : PassageCode::ProgrammedClose, i + 1,
                                       SimRecordCommands::kRelaySourceBase + i + 1, now);
            }
        }
        push.status = push.status || m_state.settings.statusEverySecond;
    }
    send(push);
}

void SimPanel::send(const Push& push)
{
    if (push.passages.isEmpty() && !push.status)
        return;
    QList<QByteArray> frames;
    QString host;
    quint16 port = 0;
    bool datagram = false;
    {
        QMutexLocker lock(&m_mutex);
        if (m_pushHost.isEmpty() || m_pushPort == 0)
            return;
        const int update = m_state.settings.statusUpdate;
        const bool events = update == SimPanelSettings::UpdateAll || update == SimPanelSettings::UpdateEventsOnly;
        const bool status = update == SimPanelSettings::UpdateAll || update == SimPanelSettings::UpdateStatusOnly;
        if (events) {
            for (const SimRecord& record : push.passages) {
                // Door operations are not live events; the live frame carries one-digit codes only.
                if (namesPerson(record.code) || record.code == PassageCode::ButtonTrigger)
                    frames.append(SimFrames::livePassage(record, m_number));
            }
        }
        if (status && push.status)
            frames.append(SimFrames::liveStatus(m_state, m_number));
        host = m_pushHost;
        datagram = m_state.settings.statusByDatagram;
        // Datagrams go to the station's status port on the push host, never to a broadcast address.
        port = datagram ? kLiveDatagramPort : m_pushPort;
    }
    for (const QByteArray& frame : std::as_const(frames))
        Q_EMIT pushFrame(frame, host, port, datagram);
}

void SimPanel::putUser(const SimUser& user)
{
    QMutexLocker lock(&m_mutex);
    m_state.putUser(user);
}

std::optional<SimUser> SimPanel::user(int id) const
{
    QMutexLocker lock(&m_mutex);
    const auto it = m_state.users.constFind(id);
    if (it == m_state.users.constEnd())
        return std::nullopt;
    return it.value();
}

void SimPanel::addRecord(const SimRecord& record)
{
    QMutexLocker lock(&m_mutex);
    m_state.records.append(record);
}

void SimPanel::seedRecords(int count, const QDateTime& first)
{
    QMutexLocker lock(&m_mutex);
    QDateTime moment = first.isValid() ? QDateTime(first.date(), first.time(), Qt::UTC) : m_state.now().addDays(-1);
    for (int i = 0; i < count; ++i) {
        SimRecord record;
        record.door = i % 4 + 1;
        record.localZone = m_state.settings.doors[i % 4].localZone;
        record.direction = i % 2 == 0 ? Direction::Entry : Direction::Exit;
        record.code = PassageCode::Granted;
        record.userId = i % SimPanelState::kUserSlots + 1;
        record.time = moment;
        moment = moment.addSecs(1);
        m_state.records.append(record);
    }
}

int SimPanel::recordCount() const
{
    QMutexLocker lock(&m_mutex);
    return m_state.records.count();
}

QList<SimRecord> SimPanel::records() const
{
    QMutexLocker lock(&m_mutex);
    QList<SimRecord> list;
    list.reserve(m_state.records.count());
    for (int i = 0; i < m_state.records.count(); ++i)
        list.append(m_state.records.at(i));
    return list;
}

void SimPanel::modify(const std::function<void(SimPanelState&)>& change)
{
    QMutexLocker lock(&m_mutex);
    change(m_state);
}

void SimPanel::inspect(const std::function<void(const SimPanelState&)>& look) const
{
    QMutexLocker lock(&m_mutex);
    look(m_state);
}

void SimPanel::setFault(const SimFault& fault)
{
    QMutexLocker lock(&m_mutex);
    m_fault = fault;
}

void SimPanel::setAnswerDelay(int delayMs, int jitterMs)
{
    QMutexLocker lock(&m_mutex);
    m_answerDelayMs = std::max(0, delayMs);
    m_answerJitterMs = std::max(0, jitterMs);
}

QPair<int, int> SimPanel::answerDelay() const
{
    QMutexLocker lock(&m_mutex);
    return { m_answerDelayMs, m_answerJitterMs };
}

SimFault SimPanel::fault() const
{
    QMutexLocker lock(&m_mutex);
    return m_fault;
}

int SimPanel::requestCount(const QByteArray& code) const
{
    QMutexLocker lock(&m_mutex);
    return m_requestCounts.value(code);
}

int SimPanel::totalRequests() const
{
    QMutexLocker lock(&m_mutex);
    return m_totalRequests;
}

QList<QByteArray> SimPanel::recentRequests() const
{
    QMutexLocker lock(&m_mutex);
    return m_recentRequests;
}

void SimPanel::resetRequestCounts()
{
    QMutexLocker lock(&m_mutex);
    m_requestCounts.clear();
    m_totalRequests = 0;
    m_recentRequests.clear();
}

void SimPanel::dropConnections()
{
    Q_EMIT dropRequested();
}
