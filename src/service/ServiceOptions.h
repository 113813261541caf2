#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <optional>

// What kx410d is told on its command line.
struct ServiceOptions
{
    QString dataDir;
    QString database;
    // Where status and search datagrams go; the field's broadcast address when empty.
    QString broadcast;
    // Where the live monitor listens; every address when empty.
    QString listen;
    // The live monitor's TCP port; the port the panels push to when not given.
    std::optional<quint16> livePort;
    // The status listener's local port; the station's usual one when not given (0: any).
    std::optional<quint16> statusPort;
    bool eraseAfterRetrieval = false;
    // The daily runs walk this many panels at once and give up on a panel after this many
    // unanswered requests in a row.
    int parallel = 8;
    int giveUpAfter = 3;
    // The daily send takes each panel only the users changed since its last send.
    bool sendChanged = false;
    // Not in the help: the service's clock starts at this moment and runs on from it.
    QDateTime startAt;
    bool help = false;

    // False with the reason for an option it does not take or a bad value.
    bool parse(const QStringList& arguments, QString* error);

    static QString usage();
};
