#pragma once

#include "store/Operator.h"

#include <QList>
#include <QPair>
#include <QStringList>
#include <functional>

// An Operator for tests: answers questions from a queue (an unexpected question fails the test
// and is answered No), and records what was asked, told, shown as status and as progress, all
// in the station's Turkish text.
class ScriptedOperator : public Operator
{
public:
    // Queues answers for the next questions, in order.
    ScriptedOperator& yes(int count = 1);
    ScriptedOperator& no();
    // What the login brings up (e.g. logs in as administrator); nothing by default.
    void setLoginHandler(std::function<void()> handler);
    // cancelRequested() turns true once it has been asked this many times (-1: never).
    void setCancelAfter(int checks);

    bool ask(const Message& question) override;
    void tell(const Message& message, Kind kind = Kind::Information) override;
    void progress(int value, int maximum) override;
    void status(const Message& line) override;
    void requestLogin() override;
    bool cancelRequested() const override;

    const QStringList& questions() const { return m_questions; }
    const QStringList& told() const { return m_told; }
    const QStringList& statusLines() const { return m_status; }
    const QList<QPair<int, int>>& progressSteps() const { return m_progress; }
    int loginRequests() const { return m_logins; }
    // The last message told, or an empty text.
    QString lastTold() const;
    void clearRecords();

private:
    QList<bool> m_answers;
    QStringList m_questions;
    QStringList m_told;
    QStringList m_status;
    QList<QPair<int, int>> m_progress;
    std::function<void()> m_login;
    int m_logins = 0;
    int m_cancelAfter = -1;
    mutable int m_cancelChecks = 0;
};
