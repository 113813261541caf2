#pragma once

#include "operations/panels/OperationContext.h"
#include "operations/panels/PanelRoster.h"
#include "protocol/PanelLink.h"
#include "sim/SimPanel.h"
#include "sim/SimulatorHost.h"
#include "store/Database.h"
#include "store/OperatorSession.h"
#include "store/StationSettings.h"
#include "support/ScriptedOperator.h"
#include "support/TestDatabases.h"

#include <QDateTime>
#include <functional>
#include <memory>

// A station against simulated panels on loopback: a fresh database, the simulator, one panel
// link without pacing, a scripted operator and a logged-in administrator, with "now" fixed.
class SimFixture
{
public:
    explicit SimFixture(TestDatabases::Engine engine = TestDatabases::SQLite);
    ~SimFixture();

    // False (with the reason) when the database or the simulator could not be started.
    bool isReady() const { return m_ready; }
    QString error() const { return m_error; }

    // A simulated panel with a PanelSettings row at the next list position; the roster is
    // reloaded and position 1 selected.
    SimPanel* addPanel(int number, int serial = 0);
    // A PanelSettings row only: an unusable entry, or a panel nobody listens for.
    void addRow(int number, int serial, const QString& ip, int port);
    // A loopback port on which nothing listens.
    static quint16 deadPort();
    void reloadRoster();

    // A Users row; returns its record number.
    qint64 addUser(qint32 id, qint64 card, qint32 group = 1);
    void addGroup(qint32 number, const QString& name, qint32 passageLimit = 0);
    int userCount();

    OperationContext& context() { return *m_context; }
    ScriptedOperator& op() { return m_op; }
    Database& db() { return m_db; }
    PanelRoster& roster() { return m_roster; }
    OperatorSession& session() { return m_session; }
    StationSettings& settings() { return m_settings; }
    SimulatorHost& sim() { return m_sim; }
    PanelLink& link() { return m_link; }
    QDateTime now() const { return m_now; }

    // Makes this a client station that watches the given panel numbers.
    void makeClient(const QList<int>& watched);

    // Called with every request the link sends, just before it goes: lets a test make things
    // happen at a panel at an exact point of an operation.
    void setSendHook(std::function<void(const QByteArray& frame)> hook) { m_sendHook = std::move(hook); }

private:
    TestDatabases m_databases;
    Database m_db;
    SimulatorHost m_sim;
    std::function<void(const QByteArray& frame)> m_sendHook;
    PanelLink m_link;
    ScriptedOperator m_op;
    OperatorSession m_session;
    StationSettings m_settings;
    PanelRoster m_roster;
    QDateTime m_now;
    std::unique_ptr<OperationContext> m_context;
    int m_rows = 0;
    bool m_ready = false;
    QString m_error;
};
