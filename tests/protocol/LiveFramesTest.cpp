#include "protocol/LiveFrames.h"

#include "protocol/BroadcastFrames.h"
#include "protocol/LiveFrameCutter.h"
#include "protocol/PanelSettingsFrame.h"
#include "protocol/StatusFrames.h"

#include <QTest>

namespace {

const QByteArray cardFrame = "%CD007211000070000012345310116090503**";
const QByteArray statusPayload = "00711010100000000000000000";
const QByteArray statusFrame = "%CMS" + statusPayload + "**";

QList<QByteArray> drain(LiveFrameCutter& cutter, int* skipped = nullptr)
{
    QList<QByteArray> frames;
    QByteArray frame;
    for (;;) {
        const LiveFrameCutter::Result result = cutter.next(frame);
        if (result == LiveFrameCutter::Result::NeedMore)
            return frames;
        if (result == LiveFrameCutter::Result::Frame)
            frames.append(frame);
        else if (skipped)
            ++*skipped;
    }
}

} // namespace

class LiveFramesTest : public QObject
{
    Q_OBJECT

private slots:
    void cardEventFields()
    {
        CardEvent event;
        QCOMPARE(LiveFrames::kindOf(cardFrame), LiveFrames::Kind::CardEvent);
        QCOMPARE(LiveFrames::parseCardEvent(cardFrame, event), ParseStatus::Valid);
        QCOMPARE(event.panelNumber, 7);
        QCOMPARE(event.door, 2);
        QCOMPARE(event.code, PassageCode::Granted);
        QCOMPARE(event.direction, Direction::Entry); // digit 1 is an entry
        QCOMPARE(event.userId, 7);
        QCOMPARE(event.cardId, 12345);
        QCOMPARE(event.time, QDateTime(QDate(2016, 1, 31), QTime(9, 5, 3)));

        QByteArray exitIn99 = cardFrame;
        exitIn99[8] = '2';
        exitIn99.replace(28, 2, "99");
        QCOMPARE(LiveFrames::parseCardEvent(exitIn99, event), ParseStatus::Valid);
        QCOMPARE(event.direction, Direction::Exit);
        QCOMPARE(event.time.date().year(), 2099);

        QCOMPARE(LiveFrames::parseCardEvent(cardFrame.left(20), event), ParseStatus::NeedMore);
        QByteArray letters = cardFrame;
        letters[12] = 'A';
        QCOMPARE(LiveFrames::parseCardEvent(letters, event), ParseStatus::Malformed);
        QByteArray month13 = cardFrame;
        month13.replace(26, 2, "13");
        QCOMPARE(LiveFrames::parseCardEvent(month13, event), ParseStatus::Malformed);
        QCOMPARE(LiveFrames::parseCardEvent(QByteArray("%XY" + cardFrame.mid(3)), event), ParseStatus::Malformed);
    }

    void statusFramesAndAnswers()
    {
        PanelStatus status;
        QCOMPARE(LiveFrames::kindOf(statusFrame), LiveFrames::Kind::Status);
        QCOMPARE(StatusFrames::parseFrame(statusFrame, status), ParseStatus::Valid);
        QCOMPARE(status.panelNumber, 7);
        QCOMPARE(status.doorState, (std::array<qint32, 4>{ 1, 0, 0, 0 }));
        QCOMPARE(status.lineState, (std::array<qint32, 4>{ 1, 1, 1, 0 }));
        QVERIFY(!status.fire && !status.zone1Full);

        QByteArray alarmed = statusPayload;
        alarmed[11] = '1';
        alarmed[15] = '1';
        alarmed[21] = '1';
        alarmed[22] = '1';
        alarmed[3] = 'x';
        QCOMPARE(StatusFrames::parseAnswer(QByteArray("$GMS12AB" + alarmed + "**\r"), status), ParseStatus::Valid);
        QCOMPARE(status.serial, quint16(0x12AB));
        QVERIFY(status.zone1Full && status.zone2Full && status.fire && status.alarm);
        QCOMPARE(status.doorState[0], PanelStatus::DoorUnknown);

        QCOMPARE(StatusFrames::parseFrame(QByteArray("%CMS065" + statusPayload.mid(3) + "**"), status),
                 ParseStatus::OutOfRange);
        QCOMPARE(StatusFrames::parseAnswer(QByteArray("$GMS12ab" + statusPayload + "**"), status),
                 ParseStatus::Malformed);
        QCOMPARE(StatusFrames::parseAnswer(QByteArray("$GMS12AB" + statusPayload.left(10)), status),
                 ParseStatus::NeedMore);
        QCOMPARE(StatusFrames::parseAnswer(QByteArray("$GMS12AB" + statusPayload + "*X"), status),
                 ParseStatus::Malformed);
    }

    void searchAnswersAndDatagrams()
    {
        PanelSettingsRecord settings;
        settings.ip = { 127, 0, 0, 1 };
        settings.tcpPort = 40001;
        settings.name = QStringLiteral("Otopark");
        const QByteArray record = PanelSettingsFrame::buildRecord(settings);
        const QByteArray piece = "$US00FF012" + record + "**";

        SearchAnswer found;
        QCOMPARE(PanelSettingsFrame::parseSearchAnswer(piece, found), ParseStatus::Valid);
        QCOMPARE(found.serial, quint16(0x00FF));
        QCOMPARE(found.panelNumber, 12);

        QCOMPARE(PanelSettingsFrame::parseSearchAnswer(piece.left(100), found), ParseStatus::NeedMore);
        QCOMPARE(PanelSettingsFrame::parseSearchAnswer(QByteArray("$US00FF099" + record + "**"), found),
                 ParseStatus::OutOfRange);
        QByteArray broken = piece;
        broken[20] = '?';
        QCOMPARE(PanelSettingsFrame::parseSearchAnswer(broken, found), ParseStatus::Malformed);
        QCOMPARE(PanelSettingsFrame::parseSearchAnswer("$GMS", found), ParseStatus::Malformed);

        QCOMPARE(BroadcastFrames::splitDatagram("noise$GMS1$US2$"), (QList<QByteArray>{ "$GMS1", "$US2", "$" }));
        QVERIFY(BroadcastFrames::splitDatagram("no dollar here").isEmpty());
        QCOMPARE(BroadcastFrames::statusRequest(), QByteArray("%GMS**\r"));
        QCOMPARE(BroadcastFrames::searchRequest(), QByteArray("%US1975**\r"));
        QCOMPARE(BroadcastFrames::alarmReset(), QByteArray("%AS0000000**\r"));
    }

    void cutterSurvivesPiecesAndNoise()
    {
        LiveFrameCutter cutter;
        cutter.feed(QByteArray(cardFrame + statusFrame));
        QCOMPARE(drain(cutter), (QList<QByteArray>{ cardFrame, statusFrame }));
        // Line ends between frames are no noise; other splits of a stream are the fuzz target's.
        cutter.feed(QByteArray("\r\n" + cardFrame.left(20)));
        QVERIFY(drain(cutter).isEmpty());
        cutter.feed(QByteArray(cardFrame.mid(20) + "\r"));
        QCOMPARE(drain(cutter), QList<QByteArray>{ cardFrame });
        QCOMPARE(cutter.droppedBytes(), 0);

        // Noise before, a frame cut short by the next "%", noise after.
        int skipped = 0;
        cutter.feed(QByteArray("xx\x01" + cardFrame.left(17) + statusFrame + "yy*" + cardFrame));
        QCOMPARE(drain(cutter, &skipped), (QList<QByteArray>{ statusFrame, cardFrame }));
        QCOMPARE(skipped, 3);
        QCOMPARE(cutter.buffered(), 0);
    }

    void cutterMemoryStaysBounded()
    {
        LiveFrameCutter cutter;
        // Ten megabytes without "**" in every shape: plain noise, all "%", a "%" and then noise.
        for (const char fill : { 'x', '%', '*' }) {
            QByteArray noise(10 * 1024 * 1024, fill);
            noise[0] = '%';
            cutter.feed(noise);
            drain(cutter);
            QVERIFY(cutter.buffered() < LiveFrameCutter::MaxFrameLength);
        }
        cutter.clear();
        cutter.feed(QByteArray(QByteArray(300, 'z') + '%' + QByteArray(300, 'z') + cardFrame));
        QCOMPARE(drain(cutter), QList<QByteArray>{ cardFrame });
    }
};

QTEST_APPLESS_MAIN(LiveFramesTest)
#include "LiveFramesTest.moc"
