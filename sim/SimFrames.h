#pragma once

#include <QByteArray>
#include <QDateTime>

struct SimRecord;
struct SimPanelState;

// Texts the panel sends: answer heads, stored records, live frames and the status payload.
class SimFrames
{
public:
    // "$" + code + serial (4 hex) + panel number (3 digits).
    static QByteArray answerHead(const QByteArray& code, int serial, int number);
    // A confirm-only answer: head, status character, "**".
    static QByteArray confirm(const QByteArray& code, int serial, int number, char status = 'O');
    // A refusal as long as the full answer would be: head, "E", zeros, "**".
    static QByteArray refusal(const QByteArray& code, int serial, int number, int answerLength);
    // One stored passage as the download streams it (30 characters).
    static QByteArray downloadRecord(const SimRecord& record);
    static void appendDownloadRecord(QByteArray& out, const SimRecord& record);
    static QByteArray downloadEnd(int serial, int number);
    // "%CD" live passage frame (38 characters).
    static QByteArray livePassage(const SimRecord& record, int number);
    // The 26-character status payload shared by the status answer and the live status frame.
    static QByteArray statusPayload(const SimPanelState& state, int number);
    static QByteArray liveStatus(const SimPanelState& state, int number);
    static QByteArray statusAnswer(const SimPanelState& state, int serial, int number);
    static QByteArray searchAnswer(const SimPanelState& state, int serial, int number);
    // ddMMyyhhmmss of a panel time.
    static QByteArray stamp(const QDateTime& time);
};
