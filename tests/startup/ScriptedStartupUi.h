#pragma once

#include "store/StartupUi.h"

#include <QList>
#include <QPair>
#include <QStringList>
#include <functional>

// A start-up "person" answering from a script and noting every question and message.
class ScriptedStartupUi : public StartupUi
{
public:
    // The start-up dialog's answer: fills the record and returns true, or returns false (cancel).
    std::function<bool(StationSettings&)> dialog;
    // Password entries to give in turn; once used up the question is cancelled.
    QList<QPair<QString, QString>> passwords;

    // "dialog", "password: <hint>" and "message: <text>" in the order they happened.
    QStringList events;

    bool askInitialSettings(StationSettings& settings) override;
    bool chooseAdminPassword(const Message& hint, QString* password, QString* repeated) override;
    void showMessage(const Message& message) override;

    QStringList messages() const;
};
