#include "sim/SimFrameCutter.h"

#include <QTest>

class SimFrameCutterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cutsFramesHoweverTheyArrive()
    {
        const QByteArray first = "%RC12AB007**";
        const QByteArray second = "%UC12AB00700007**";

        // Several frames in one read, the last one split over two reads (any other split is the
        // fuzz target's).
        SimFrameCutter batch;
        const QByteArray stream = first + "\r" + second + "\r" + first;
        QCOMPARE(batch.feed(stream.left(stream.size() - 1)), (QList<QByteArray>{ first, second }));
        QCOMPARE(batch.feed(stream.right(1) + "\r"), QList<QByteArray>{ first });

        // A frame end split between reads.
        SimFrameCutter split;
        QVERIFY(split.feed("%EM12AB007*").isEmpty());
        QCOMPARE(split.feed("*\r"), QList<QByteArray>{ "%EM12AB007**" });
    }

    void dropsNoiseAroundAndInsideFrames()
    {
        SimFrameCutter cutter;
        // Noise before a frame, a stray "%" that never ends, "**" without a start.
        const QList<QByteArray> frames = cutter.feed("xx\x01**garbage%%12%RC12AB007**\r\n**%EM12AB007**");
        QCOMPARE(frames, (QList<QByteArray>{ "%RC12AB007**", "%EM12AB007**" }));
        QCOMPARE(cutter.pending(), 0);
    }

    void staysBoundedWithoutFrameEnd()
    {
        SimFrameCutter cutter(4096);
        const QByteArray chunk(64 * 1024, 'A');
        const QByteArray started = QByteArray("%").append(chunk);
        for (int i = 0; i < 160; ++i) // 10 MB without a frame end
            QVERIFY(cutter.feed(i % 2 ? chunk : started).isEmpty());
        QVERIFY(cutter.pending() <= 4096);
        // The link still works afterwards.
        QCOMPARE(cutter.feed("%RC12AB007**"), QList<QByteArray>{ "%RC12AB007**" });

        // A frame longer than the limit is refused even when its end arrives.
        SimFrameCutter small(32);
        QVERIFY(small.feed(QByteArray("%").append(QByteArray(40, '1')).append("**")).isEmpty());
        QCOMPARE(small.feed("%RC12AB007**"), QList<QByteArray>{ "%RC12AB007**" });
    }
};

QTEST_GUILESS_MAIN(SimFrameCutterTest)
#include "SimFrameCutterTest.moc"
