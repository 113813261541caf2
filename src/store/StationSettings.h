#pragma once

#include "store/Message.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QTime>
#include <array>

// The station's own settings record (kept in Config.cfg): whether the start-up dialog was
// confirmed, server or client, the panels a client watches, the client's database path, the
// interface language and the two daily transfers. A plain record: every field is public.
struct StationSettings
{
    static constexpr qint32 SetUpMarker = 255;
    static constexpr int PanelCount = 64;
    enum WorkingMode : qint32
    {
        Client = 0,
        Server = 1
    };

    qint32 marker = 0;
    qint32 workingMode = Client;
    // Element n-1 is non-zero when panel n is watched by this station.
    std::array<qint32, PanelCount> watched{};
    // The database a client works on: a file path or a postgresql:// address.
    QString remotePath;
    // 0 Turkish, 1 English, 2 Arabic.
    qint16 language = 0;
    bool dailySendOn = false;
    // Date-time values as stored: days since 30 December 1899, the fraction being the time of day.
    double dailySendStamp = 0.0;
    bool dailyReceiveOn = false;
    double dailyReceiveStamp = 0.0;
    // Bytes found after the record in the file; written back unchanged so that nothing a later
    // version appends is lost.
    QByteArray trailing;

    bool isSetUp() const;
    bool isServer() const;
    // Panel numbers 1..64; others are never watched.
    bool isWatched(int panel) const;
    void setWatched(int panel, bool on);
    QList<int> watchedPanels() const;

    QTime dailySendTime() const;
    void setDailySendTime(const QTime& time);
    QTime dailyReceiveTime() const;
    void setDailyReceiveTime(const QTime& time);

    // Takes the choices of the start-up dialog. Returns an empty message when they are taken, or
    // the refusal to show (and the record is left unchanged): a client needs a database path.
    // A client with no watched panel watches panel 1.
    Message applyStartChoices(bool serverMode, const QString& remotePath, const QList<int>& watchedPanels,
                              int language);

    // Date-time stamp helpers (days since 30 December 1899).
    static QTime timeOfStamp(double stamp);
    static double stampOfTime(const QTime& time);

    bool operator==(const StationSettings&) const = default;
};
