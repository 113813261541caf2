#pragma once

#include "SimFault.h"
#include "SimPanelState.h"
#include "SimRecord.h"

#include <QByteArray>
#include <QDateTime>
#include <QHash>
#include <QList>
#include <QMutex>
#include <QObject>
#include <QRandomGenerator>
#include <functional>
#include <optional>

// One simulated panel: its memory, its rules and its faults. Every method may be called from any
// thread; the sockets that carry its traffic live elsewhere and only ask it for replies.
class SimPanel : public QObject
{
    Q_OBJECT

public:
    // What goes back on the link for one request, after the fault in force has shaped it.
    struct Reply
    {
        QList<QByteArray> chunks;
        int delayMs = 0;
        int trickleMs = 0;
        bool drop = false;
    };

    SimPanel(int number, int serial, quint16 port, const QString& pushHost, quint16 pushPort,
             QObject* parent = nullptr);

    int number() const;
    int serial() const;
    quint16 port() const;
    QString pushHost() const;
    quint16 pushPort() const;
    void setPushTarget(const QString& host, quint16 port);

    // A request frame from "%" to "**"; frames for another panel get an empty reply.
    Reply handleRequest(const QByteArray& frame);
    // A UDP frame (status, search, alarm reset, settings); empty when the panel does not answer.
    QByteArray handleDatagram(const QByteArray& frame);

    // A card presented at a door; the panel decides, stores and reports the passage.
    SimRecord presentCard(int door, qint64 card, std::optional<Direction> direction = std::nullopt,
                          std::optional<QDateTime> at = std::nullopt);
    // A known user's card (now and then an unknown one) at a random door.
    SimRecord presentRandomCard();
    void pressExitButton(int door);
    void setAlarm(bool alarm, bool fire);
    // Once a second: door pulses end, programmed slots open and close, night clearing.
    void tick();

    void putUser(const SimUser& user);
    std::optional<SimUser> user(int id) const;
    // Stores records directly, as if passages had happened while nobody listened.
    void addRecord(const SimRecord& record);
    void seedRecords(int count, const QDateTime& first = QDateTime());
    int recordCount() const;
    QList<SimRecord> records() const;
    void modify(const std::function<void(SimPanelState&)>& change);
    void inspect(const std::function<void(const SimPanelState&)>& look) const;

    void setFault(const SimFault& fault);
    SimFault fault() const;
    // How long the panel takes to answer any request, as a real panel's processor does: `delayMs`
    // plus a random part of up to `jitterMs`. 0, 0 answers at once.
    void setAnswerDelay(int delayMs, int jitterMs);
    QPair<int, int> answerDelay() const;
    int requestCount(const QByteArray& code) const;
    int totalRequests() const;
    // The last requests addressed to the panel as they came, from "%" to "**", oldest first.
    QList<QByteArray> recentRequests() const;
    static constexpr int RecentRequestsKept = 1000;
    void resetRequestCounts();
    // Closes every open link to the panel.
    void dropConnections();

Q_SIGNALS:
    // A live frame for the station; `datagram` when the settings ask for UDP instead of TCP.
    void pushFrame(const QByteArray& frame, const QString& host, quint16 port, bool datagram);
    void dropRequested();

private:
    struct Push
    {
        QList<SimRecord> passages;
        bool status = false;
    };

    void shapeReply(Reply& reply, const SimFault& fault, const QByteArray& code);
    QByteArray noise(int minLength, int maxLength, bool anyByte);
    void takeSettings(const SimPanelSettings& settings);
    SimRecord storePassage(const SimRecord& record, Push& push);
    void send(const Push& push);
    std::optional<SimFault> consumeFault(const QByteArray& code);

    mutable QMutex m_mutex;
    SimPanelState m_state;
    int m_number;
    const int m_serial;
    const quint16 m_port;
    QString m_pushHost;
    quint16 m_pushPort;
    SimFault m_fault;
    int m_answerDelayMs = 0;
    int m_answerJitterMs = 0;
    QHash<QByteArray, int> m_requestCounts;
    int m_totalRequests = 0;
    QList<QByteArray> m_recentRequests;
    QRandomGenerator m_random;
};
