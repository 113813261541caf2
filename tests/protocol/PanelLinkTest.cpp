#include "protocol/PanelLink.h"

#include "ScriptedPanel.h"
#include "protocol/CommandCatalogue.h"
#include "protocol/ReaderCommands.h"
#include "protocol/UserCommands.h"
#include "protocol/ZoneDoorCommands.h"

#include <QHostAddress>
#include <QTcpServer>
#include <QTest>

namespace {

const PanelAddress panel(7, 0x12AB);
const QString loopback = QStringLiteral("127.0.0.1");

QByteArray codeOf(const QByteArray& request)
{
    return request.mid(1, 2);
}

QByteArray okAnswer(const QByteArray& request)
{
    return "$" + codeOf(request) + "12AB007O**";
}

quint16 unusedPort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost, 0);
    return probe.serverPort();
}

} // namespace

class PanelLinkTest : public QObject
{
    Q_OBJECT

private slots:
    void silentPanelGetsItsTries()
    {
        ScriptedPanel silent([](const QByteArray&) { return QList<ScriptedPanel::Write>{}; });
        PanelLink link;
        QVERIFY(link.ConnectPanel(loopback, silent.port()));
        QCOMPARE(ClearAlarm(link, panel).outcome(), CommandOutcome::NoAnswer);
        // The new-card command alone tries three times.
        QCOMPARE(SendNewCard(link, panel, UserRecord{}, QDateTime::currentDateTime()).outcome(),
                 CommandOutcome::NoAnswer);
        QTRY_COMPARE(silent.requests().size(), 4);
        const QList<QByteArray> requests = silent.requests();
        QCOMPARE(requests.count(requests.last()), 3);
        QVERIFY(requests.last().startsWith("%NC12AB007"));
    }

    void refusalIsNotRetried()
    {
        // How each answer is read is the answer readers' test; here what the link does about it.
        ScriptedPanel refusing([](const QByteArray& request) {
            return QList<ScriptedPanel::Write>{ { 0, "$" + codeOf(request) + "12AB007E**" } };
        });
        PanelLink link;
        QVERIFY(link.ConnectPanel(loopback, refusing.port()));
        QCOMPARE(SendNewCard(link, panel, UserRecord{}, QDateTime::currentDateTime()).outcome(),
                 CommandOutcome::Refused);
        QCOMPARE(DoorCommand(link, panel, 3, "anything").outcome(), CommandOutcome::NoAnswer);
        // One send of the new card, none of the unknown door action.
        QCOMPARE(refusing.requests().size(), 1);
    }

    void lateAnswerIsReadWithTheNextCommand()
    {
        ScriptedPanel slow([](const QByteArray& request) {
            const int delay = codeOf(request) == "AS" ? 1300 : 0;
            return QList<ScriptedPanel::Write>{ { delay, okAnswer(request) } };
        });
        PanelLink link;
        QVERIFY(link.ConnectPanel(loopback, slow.port()));
        QCOMPARE(ClearAlarm(link, panel).outcome(), CommandOutcome::NoAnswer);

        const CommandInfo& erase = CommandCatalogue::info(PanelCommand::EraseRecordMemory);
        const ExchangeResult next = link.exchange(BuildEraseRecordMemoryFrame(panel), erase);
        QVERIFY(next.answered);
        QVERIFY(next.text.startsWith("$AS12AB007O**"));
        // The echo convention looks at the first "$", which belongs to the late answer.
        QVERIFY(EraseRecordMemory(link, panel).isAccepted());
    }

    void answerInPiecesIsReadWhole()
    {
        ScriptedPanel trickling([](const QByteArray&) {
            return QList<ScriptedPanel::Write>{ { 0, "$PR12AB007O2" }, { 100, "5" }, { 100, "**" } };
        });
        PanelLink link;
        QVERIFY(link.ConnectPanel(loopback, trickling.port()));
        QCOMPARE(GetReaderPower(link, panel, 1), CommandResult<qint32>::accepted(25));
    }

    void linkIsReusedPerHostAndPort()
    {
        const auto echo = [](const QByteArray& request) {
            return QList<ScriptedPanel::Write>{ { 0, okAnswer(request) } };
        };
        ScriptedPanel first(echo);
        ScriptedPanel second(echo);
        PanelLink link;
        QVERIFY(link.ConnectPanel(loopback, first.port()));
        QVERIFY(link.ConnectPanel(QStringLiteral("  127.0.0.1 "), first.port()));
        QVERIFY(ClearAllInsideCounts(link, panel).isAccepted());
        QTRY_COMPARE(first.connections(), 1);

        QVERIFY(link.ConnectPanel(loopback, second.port()));
        QVERIFY(ClearAllInsideCounts(link, panel).isAccepted());
        QTRY_COMPARE(second.connections(), 1);
        QVERIFY(link.ConnectPanel(loopback, first.port()));
        QTRY_COMPARE(first.connections(), 2);

        link.DisconnectPanel();
        QVERIFY(!link.isConnected());
        QVERIFY(!link.ConnectPanel(loopback, unusedPort()));
        QVERIFY(!link.ConnectPanel(QString(), first.port()));
        // Without a link nothing is sent and nothing is awaited.
        const ExchangeResult none = link.exchange(BuildClearAlarmFrame(panel), 5000, 13, 3);
        QVERIFY(!none.answered);
        QCOMPARE(none.sends, 0);
    }
};

QTEST_GUILESS_MAIN(PanelLinkTest)
#include "PanelLinkTest.moc"
