#include "SimFrames.h"

#include "SimPanelState.h"
#include "SimRecord.h"
#include "SimText.h"

#include <algorithm>

QByteArray SimFrames::answerHead(const QByteArray& code, int serial, int number)
{
    return '$' + code + SimText::hex2(serial >> 8) + SimText::hex2(serial) + SimText::number(number, 3);
}

QByteArray SimFrames::confirm(const QByteArray& code, int serial, int number, char status)
{
    return answerHead(code, serial, number) + status + "**";
}

QByteArray SimFrames::refusal(const QByteArray& code, int serial, int number, int answerLength)
{
    QByteArray answer = answerHead(code, serial, number) + 'E';
    const qsizetype fill = answerLength - 2 - answer.size();
    if (fill > 0)
        answer += QByteArray(fill, '0');
    return answer + "**";
}

QByteArray SimFrames::stamp(const QDateTime& time)
{
    const QDate d = time.date();
    const QTime t = time.time();
    return SimText::number(d.day(), 2) + SimText::number(d.month(), 2) + SimText::number(d.year() % 100, 2)
        + SimText::number(t.hour(), 2) + SimText::number(t.minute(), 2) + SimText::number(t.second(), 2);
}

QByteArray SimFrames::downloadRecord(const SimRecord& r)
{
    QByteArray text;
    appendDownloadRecord(text, r);
    return text;
}

void SimFrames::appendDownloadRecord(QByteArray& out, const SimRecord& r)
{
    // Written digit by digit: a full memory is 40000 records, streamed on every download.
    char text[30];
    const auto put = [&text](int pos, int value, int width) {
        value = std::max(value, 0);
        for (int i = pos + width - 1; i >= pos; --i) {
            text[i] = char('0' + value % 10);
            value /= 10;
        }
    };
    const QDate d = r.time.date();
    const QTime t = r.time.time();
    text[0] = '$';
    text[1] = 'D';
    text[2] = 'D';
    text[3] = '0';
    put(4, r.door, 3);
    put(7, r.localZone, 1);
    put(8, storedNumber(r.direction), 1);
    put(9, storedNumber(r.code), 2);
    put(11, r.userId, 5);
    put(16, d.day(), 2);
    put(18, d.month(), 2);
    put(20, d.year() % 100, 2);
    put(22, t.hour(), 2);
    put(24, t.minute(), 2);
    put(26, t.second(), 2);
    text[28] = '*';
    text[29] = '*';
    out.append(text, sizeof text);
}

QByteArray SimFrames::downloadEnd(int serial, int number)
{
    return answerHead("FD", serial, number) + "**";
}

QByteArray SimFrames::livePassage(const SimRecord& r, int number)
{
    // The live frame's direction digit is 1 for an entry and 2 for an exit.
    return "%CD" + SimText::number(number, 3) + SimText::number(r.door, 1) + SimText::number(storedNumber(r.code), 1)
        + (r.direction == Direction::Entry ? '1' : '2') + SimText::number(r.userId, 5) + SimText::number(r.card, 10)
        + stamp(r.time) + "**";
}

QByteArray SimFrames::statusPayload(const SimPanelState& state, int number)
{
    QByteArray p = SimText::number(number, 3);
    for (int door = 0; door < 4; ++door) {
        p += state.doorStates[door] == 0 ? '0' : '1';
        p += state.lineStates[door] ? '1' : '0';
    }
    const bool capacityOn = state.settings.localCapacityOn;
    p += capacityOn && state.zoneCounters[0] >= state.settings.localCapacity ? '1' : '0';
    p += "000";
    p += capacityOn && state.zoneCounters[1] >= state.settings.localCapacity ? '1' : '0';
    p += "00000";
    p += state.fire ? '1' : '0';
    p += state.alarm ? '1' : '0';
    p += "000";
    return p;
}

QByteArray SimFrames::liveStatus(const SimPanelState& state, int number)
{
    return "%CMS" + statusPayload(state, number) + "**";
}

QByteArray SimFrames::statusAnswer(const SimPanelState& state, int serial, int number)
{
    return "$GMS" + SimText::hex2(serial >> 8) + SimText::hex2(serial) + statusPayload(state, number) + "**";
}

QByteArray SimFrames::searchAnswer(const SimPanelState& state, int serial, int number)
{
    return answerHead("US", serial, number) + state.settings.record + "**";
}
