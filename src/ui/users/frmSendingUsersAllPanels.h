#pragma once

#include "store/Message.h"

#include <QDialog>
#include <atomic>

class QLabel;
class QProgressBar;
class QPushButton;

// The small window shown while the daily run sends every user to every panel: a progress bar
// counting users, the last failure in a label, and a Cancel button that asks the run to stop
// before its next user. Its methods may be called from the worker thread.
class frmSendingUsersAllPanels : public QDialog
{
    Q_OBJECT

public:
    explicit frmSendingUsersAllPanels(QWidget* parent = nullptr);

    void setProgress(int value, int maximum);
    void setMessage(const Message& message);
    QString messageText() const;

    // Set by cmdCancel; the run tests it before each user and clears it when it stops.
    bool cancelRequested() const { return m_cancel.load(); }
    void clearCancel() { m_cancel.store(false); }

Q_SIGNALS:
    void cancelPressed();

private:
    template <typename F> void onWindowThread(F f);

    QProgressBar* m_progress = nullptr;
    QLabel* m_message = nullptr;
    QPushButton* m_cancelButton = nullptr;
    std::atomic_bool m_cancel{ false };
};
