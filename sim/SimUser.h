#pragma once

#include <QByteArray>
#include <QDateTime>
#include <optional>

// One card holder slot of a panel's user memory.
struct SimUser
{
    static constexpr int kBlockSize = 44;

    int id = 0;
    qint64 card = 0;
    int pin = 0;
    int passageMode = 0;
    int group = 0;
    bool calendarActive = false;
    bool temporaryActive = false;
    int calendar = 1;
    int temporaryGroup = 0;
    // The temporary group holds until this moment (panel time), then the own group applies again.
    QDateTime temporaryUntil;

    // The 44-character user block of the write and read-back frames.
    QByteArray toBlock() const;
    static std::optional<SimUser> fromBlock(const QByteArray& block);
    // What the panel answers for a slot that holds nobody: the number, then "-" in every other place.
    static QByteArray emptyBlock(int id);
};
