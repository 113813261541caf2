#pragma once

#include "operations/panels/OperationContext.h"
#include "operations/station/Station.h"
#include "protocol/PanelLink.h"
#include "sim/SimPanel.h"
#include "sim/SimulatorHost.h"
#include "store/Clock.h"
#include "store/Database.h"
#include "support/ScriptedOperator.h"
#include "support/TestDatabases.h"

#include <QDateTime>
#include <functional>
#include <memory>

// The station against simulated panels on loopback: a Station over a fresh database, standing
// at a fixed moment of a clock that moves only when a test moves it, with a logged-in
// administrator; the simulator; and, for operations run on the test's own thread, a panel link
// without pacing and a scripted operator. Window tests open the real main window over it
// (StationWindow).
class StationFixture
{
public:
    explicit StationFixture(TestDatabases::Engine engine = TestDatabases::SQLite);
    ~StationFixture();
    StationFixture(const StationFixture&) = delete;
    StationFixture& operator=(const StationFixture&) = delete;

    // False (with the reason) when the database or the simulator could not be started.
    bool isReady() const { return m_ready; }
    QString error() const { return m_error; }

    // A simulated panel with a PanelSettings row at the next list position; the roster is
    // reloaded and position 1 selected.
    SimPanel* addPanel(int number, int serial = 0);
    // The same, pushing its live frames to the station's live monitor (which must be listening).
    SimPanel* addPushingPanel(int number, int serial = 0);
    // A PanelSettings row only: an unusable entry, or a panel nobody listens for.
    void addRow(int number, int serial, const QString& ip, int port);
    // A loopback port on which nothing listens.
    static quint16 deadPort();
    void reloadRoster();

    // A Users row; returns its record number.
    qint64 addUser(qint32 id, qint64 card, qint32 group = 1);
    void addGroup(qint32 number, const QString& name, qint32 passageLimit = 0);
    int userCount();
    // Rows of AccessDatas.
    int storedPassages();

    // The live monitor listens on a free loopback port and stores in small batches, instead of
    // on the port the panels are told (set before the live monitor starts).
    void listenOnFreePort();
    // Makes this a client station that watches the given panel numbers.
    void makeClient(const QList<int>& watched);

    Station& station() { return *m_station; }
    // A context for operations run on the test's thread, with the fixture's link and operator.
    OperationContext& context() { return *m_context; }
    ScriptedOperator& op() { return m_op; }
    Database& db() { return *m_db; }
    PanelRoster& roster() { return m_station->roster(); }
    OperatorSession& session() { return m_station->session(); }
    StationSettings& settings() { return m_station->settings(); }
    SimulatorHost& sim() { return m_sim; }
    PanelLink& link() { return m_link; }
    ManualClock& clock() { return m_clock; }
    QDateTime now() const { return m_clock.now(); }

    // Called with every request the link sends, just before it goes: lets a test make things
    // happen at a panel at an exact point of an operation.
    void setSendHook(std::function<void(const QByteArray& frame)> hook) { m_sendHook = std::move(hook); }

private:
    TestDatabases m_databases;
    std::shared_ptr<Database> m_db;
    SimulatorHost m_sim;
    std::function<void(const QByteArray& frame)> m_sendHook;
    PanelLink m_link;
    ScriptedOperator m_op;
    ManualClock m_clock;
    std::unique_ptr<Station> m_station;
    std::unique_ptr<OperationContext> m_context;
    int m_rows = 0;
    bool m_ready = false;
    QString m_error;
};
