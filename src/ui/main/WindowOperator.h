#pragma once

#include "store/Operator.h"

#include <QObject>
#include <QPointer>
#include <atomic>
#include <functional>

class QLabel;
class QProgressBar;
class QWidget;

// The windows' side of Operator: questions and messages as message boxes over the main window,
// progress in its progress bar, the status line under it, and the login dialog on request.
// Operations may call it from the worker thread: each call then crosses to the window thread and
// waits there for the person's answer.
class WindowOperator : public QObject, public Operator
{
    Q_OBJECT

public:
    WindowOperator(QWidget* window, QProgressBar* progressBar, QLabel* statusLine, QObject* parent = nullptr);

    // What requestLogin() does (the main window shows its login dialog).
    void setLoginHandler(std::function<void()> handler);

    bool ask(const Message& question) override;
    void tell(const Message& message, Kind kind = Kind::Information) override;
    void progress(int value, int maximum) override;
    void status(const Message& line) override;
    void requestLogin() override;
    bool cancelRequested() const override;

    // The person asked to stop the running operation (a Cancel button); cleared at the next start.
    void requestCancel();
    void clearCancel();

private:
    // Runs f on the window thread, waiting for it when called from another thread.
    template <typename F> void onWindowThread(F f);

    QPointer<QWidget> m_window;
    QPointer<QProgressBar> m_progressBar;
    QPointer<QLabel> m_statusLine;
    std::function<void()> m_loginHandler;
    std::atomic_bool m_cancel{ false };
};
