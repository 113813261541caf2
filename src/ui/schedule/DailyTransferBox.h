#pragma once

#include "operations/schedule/DailySchedule.h"

#include <QGroupBox>

class QCheckBox;
class QTimeEdit;

// The main window's four daily settings: chkDailySendUser with dtDailySendUserTime, and
// chkDailyReceiveLogs with dtDailyReceiveLogsTime. Every change is written into the settings file
// at once (the other fields of the file are kept as they are there) and announced. Beside them
// chkDailySendChangedOnly, kept in the database by whoever listens to changedOnlyChosen.
class DailyTransferBox : public QGroupBox
{
    Q_OBJECT

public:
    DailyTransferBox(const QString& configFile, const DailySchedule& initial, QWidget* parent = nullptr);

    DailySchedule schedule() const;
    // Shows a schedule changed elsewhere, without writing it again.
    void display(const DailySchedule& schedule);
    bool changedOnly() const;
    void displayChangedOnly(bool changedOnly);

Q_SIGNALS:
    void scheduleChanged(const DailySchedule& schedule);
    void changedOnlyChosen(bool changedOnly);

private:
    void changed();

    QString m_configFile;
    QCheckBox* m_send = nullptr;
    QTimeEdit* m_sendTime = nullptr;
    QCheckBox* m_changedOnly = nullptr;
    QCheckBox* m_receive = nullptr;
    QTimeEdit* m_receiveTime = nullptr;
    bool m_showing = false;
};
