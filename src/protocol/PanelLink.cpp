#include "protocol/PanelLink.h"

#include "protocol/PanelTransport.h"
#include "protocol/TcpPanelTransport.h"

#include <QThread>
#include <utility>

PanelLink::PanelLink(std::unique_ptr<PanelTransport> transport)
    : m_transport(transport ? std::move(transport) : std::make_unique<TcpPanelTransport>())
{ }

PanelLink::~PanelLink()
{
    DisconnectPanel();
}

void PanelLink::setSettings(const Settings& settings)
{
    m_settings = settings;
}

bool PanelLink::ConnectPanel(const QString& ip, quint16 port)
{
    const QString host = ip.trimmed();
    // Reuse needs the port as well as the host: simulated panels share one address.
    if (m_transport->isOpen() && host == m_host && port == m_port)
        return true;
    if (m_transport->isOpen() || !m_host.isEmpty()) {
        DisconnectPanel();
        pause(m_settings.reconnectPauseMs);
    }
    m_buffer.clear();
    m_unansweredInRow = 0;
    m_host = host;
    m_port = port;
    if (host.isEmpty() || port == 0)
        return false;
    return m_transport->open(host, port, m_settings.connectTimeoutMs);
}

void PanelLink::DisconnectPanel()
{
    m_transport->close();
    m_buffer.clear();
    m_host.clear();
    m_port = 0;
}

bool PanelLink::isConnected() const
{
    return m_transport->isOpen();
}

ExchangeResult PanelLink::exchange(const QByteArray& frame, int timeoutMs, int minLength, int attempts)
{
    if (gaveUp())
        return {};
    ExchangeResult result = exchangeOnce(frame, timeoutMs, minLength, attempts);
    m_unansweredInRow = result.answered ? 0 : m_unansweredInRow + 1;
    return result;
}

ExchangeResult PanelLink::exchangeOnce(const QByteArray& frame, int timeoutMs, int minLength, int attempts)
{
    ExchangeResult result;
    const bool pauseFirst = !std::exchange(m_skipNextPause, false);
    for (int attempt = 0; attempt < qMax(1, attempts); ++attempt) {
        if (attempt > 0 || pauseFirst)
            pause(m_settings.pacingMs);
        if (!m_transport->isOpen() || !m_transport->send(frame))
            return result;
        ++result.sends;
        QDeadlineTimer deadline(timeoutMs);
        // Wait for the awaited length; past it, also for the "**" that closes an answer, so an
        // answer split across two arrivals is read whole (late answers already hold one).
        while (m_buffer.size() < minLength || !m_buffer.contains("**")) {
            const QByteArray arrived = m_transport->receive(deadline);
            if (arrived.isEmpty()) {
                if (deadline.hasExpired() || !m_transport->isOpen())
                    break;
                continue;
            }
            m_buffer += arrived;
        }
        if (m_buffer.size() >= minLength) {
            m_buffer += m_transport->receive(QDeadlineTimer(0));
            result.answered = true;
            result.text = std::exchange(m_buffer, {});
            return result;
        }
        if (!m_transport->isOpen())
            return result;
    }
    return result;
}

ExchangeResult PanelLink::exchange(const QByteArray& frame, const CommandInfo& command)
{
    return exchange(frame, command.timeoutMs, command.minAnswerLength, command.attempts);
}

bool PanelLink::sendRequest(const QByteArray& frame)
{
    if (!std::exchange(m_skipNextPause, false))
        pause(m_settings.pacingMs);
    return m_transport->isOpen() && m_transport->send(frame);
}

QByteArray PanelLink::receiveArrival(QDeadlineTimer deadline)
{
    if (!m_buffer.isEmpty())
        return std::exchange(m_buffer, {});
    return m_transport->receive(deadline);
}

void PanelLink::pause(int ms) const
{
    if (ms > 0)
        QThread::msleep(static_cast<unsigned long>(ms));
}
