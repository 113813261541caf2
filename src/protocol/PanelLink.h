#pragma once

#include "protocol/CommandInfo.h"
#include "protocol/ExchangeResult.h"
#include "protocol/PanelTransport.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QString>
#include <memory>

// The single command link to one panel at a time: one request, one answer, with deadlines.
// Synchronous on purpose: it is meant for a worker thread and blocks while it waits, so it must
// never be used on the window thread. Connect, use and destroy it on that one thread (the socket
// belongs to the thread that connected it). One receive buffer lives as long as the connection:
// an answer that arrives after its deadline stays and is read with the next command's answer.
// Its deadlines run on the monotonic timer, not the station's clock: they measure a socket, and
// setting the clock must neither cut nor stretch a wait.
class PanelLink
{
public:
    struct Settings
    {
        // Pause before every request, so a panel gets breathing room between frames (0 allowed).
        int pacingMs = 2;
        // Longest wait for a connection to be established.
        int connectTimeoutMs = 2000;
        // Pause between closing a link and opening one to another panel.
        int reconnectPauseMs = 10;
    };

    // Uses TCP unless a transport is given (tests pass their own).
    explicit PanelLink(std::unique_ptr<PanelTransport> transport = {});
    ~PanelLink();
    PanelLink(const PanelLink&) = delete;
    PanelLink& operator=(const PanelLink&) = delete;

    void setSettings(const Settings& settings);
    const Settings& settings() const { return m_settings; }

    // Opens the link to host:port. An open link to the same (trimmed) host and port is reused; a
    // link to another panel is closed first. Returns whether the link is open afterwards.
    bool ConnectPanel(const QString& ip, quint16 port);
    void DisconnectPanel();
    bool isConnected() const;
    QString host() const { return m_host; }
    quint16 port() const { return m_port; }

    // Sends frame and waits for an answer of at least minLength characters, up to attempts times
    // with a fresh timeout each. Everything received is returned once an answer is there.
    ExchangeResult exchange(const QByteArray& frame, int timeoutMs, int minLength, int attempts);
    // The same with the catalogue's numbers for the command.
    ExchangeResult exchange(const QByteArray& frame, const CommandInfo& command);

    // The next request goes without the pacing pause: for a request whose moment matters, such
    // as erasing a panel's records right after reading their count.
    void sendNextWithoutPause() { m_skipNextPause = true; }

    // Unattended walks give up on a dead panel: once this many requests in a row went
    // unanswered, further requests are not sent and report no answer at once, until the link is
    // opened to a panel again. 0 (the default) never gives up.
    void setGiveUpAfter(int requests) { m_giveUpAfter = requests; }
    // Requests in a row that got no answer since the last answer or connection.
    int unansweredInRow() const { return m_unansweredInRow; }
    bool gaveUp() const { return m_giveUpAfter > 0 && m_unansweredInRow >= m_giveUpAfter; }

    // For streamed answers: pause, then send without waiting for an answer.
    bool sendRequest(const QByteArray& frame);
    // The bytes left in the receive buffer, or the next arrival before the deadline; empty when
    // the deadline passed or the link closed.
    QByteArray receiveArrival(QDeadlineTimer deadline);

private:
    ExchangeResult exchangeOnce(const QByteArray& frame, int timeoutMs, int minLength, int attempts);
    void pause(int ms) const;

    std::unique_ptr<PanelTransport> m_transport;
    Settings m_settings;
    QByteArray m_buffer;
    QString m_host;
    quint16 m_port = 0;
    bool m_skipNextPause = false;
    int m_giveUpAfter = 0;
    int m_unansweredInRow = 0;
};
