#pragma once

#include "CliGlobalOptions.h"
#include "store/Operator.h"
#include "store/OperatorAccounts.h"

#include <QList>
#include <QMutex>
#include <QString>
#include <atomic>

class OperatorSession;

// The person in the loop on the command line: questions are answered by --yes or --no (with
// neither, a question is refused and remembered so the command can say which flag to pass),
// messages are printed in the chosen language, progress and status go to standard error, and a
// login uses the password given with --admin-password. Safe to call from a worker thread.
class CliOperator : public Operator
{
public:
    explicit CliOperator(const CliGlobalOptions& options);

    // The session a login enters, the accounts and the password it uses; set once on the main
    // thread when the station has started. Before that a login fails.
    void setLogin(OperatorSession& session, const OperatorAccounts& accounts, const QString& userName,
                  const QString& password);

    bool ask(const Message& question) override;
    void tell(const Message& message, Kind kind = Kind::Information) override;
    void progress(int value, int maximum) override;
    void panelProgress(qint32 panelNumber, int value, int maximum) override;
    void status(const Message& line) override;
    void requestLogin() override;
    bool cancelRequested() const override;

    // Set by the interrupt signal: the running operation stops at its next check.
    static void requestCancel();

    // The first question that could not be answered for lack of --yes/--no; empty when none.
    Message unansweredQuestion() const;
    bool loginFailed() const { return m_loginFailed.load(); }

private:
    const QList<bool> m_answers;
    const CliGlobalOptions::Answer m_answer;
    OperatorSession* m_session = nullptr;
    OperatorAccounts m_accounts;
    QString m_userName;
    QString m_password;
    mutable QMutex m_mutex;
    Message m_unanswered;
    std::atomic<bool> m_loginFailed{ false };
    std::atomic<int> m_questions{ 0 };
    int m_lastMaximum = -1;
    int m_lastShown = -1;
    qint32 m_progressPanel = 0;
    static std::atomic<bool> s_cancel;
};
