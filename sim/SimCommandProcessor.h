#pragma once

#include <QByteArray>
#include <optional>

class SimCommandContext;

// Reads a request's head, decides whether the panel is addressed, and hands the request to the
// command family that knows it.
class SimCommandProcessor
{
public:
    struct Head
    {
        QByteArray code;
        int serial = 0;
        int number = 0;
        QByteArray fields;
    };

    // A frame "%" + code + serial + number + fields + "**"; nothing when the head is malformed.
    static std::optional<Head> parseHead(const QByteArray& frame);
    // Whether a panel with this serial and number acts on the request.
    static bool addressed(const Head& head, int serial, int number);
    // Answers the request; an unknown code leaves the context without answers.
    static void process(SimCommandContext& c);
};
