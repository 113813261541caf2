#pragma once

#include "operations/schedule/ScheduleRunner.h"

#include <QDateTime>
#include <QObject>
#include <QString>
#include <memory>

class Clock;
class DailyTransferBox;
class InstanceLock;
class MainPages;
class frmMain;

// The scheduler in the main window: each tick of the window's clock drives the runner, and the
// runs go to the panel worker through the main pages, the daily ones shown in
// frmSendingUsersAllPanels with its cancel button. Adds the four daily settings to the panels
// page and the backup window to the file menu, and follows daily settings that kx410ctl changes
// in the settings file meanwhile.
//
// Only one program runs a data folder's daily schedule: the window takes the folder's scheduler
// lock when it opens; when kx410d (or another window) holds it, this window never ticks its
// runner and says so once on its status line, so no daily run happens twice.
class MainSchedule : public QObject, public ScheduleRunner::Starter
{
    Q_OBJECT

public:
    MainSchedule(frmMain& window, MainPages& pages, const Clock& clock);
    ~MainSchedule() override;

    static MainSchedule* install(frmMain& window, MainPages& pages, const Clock& clock);

    ScheduleRunner& runner() { return *m_runner; }
    // False when another program runs this folder's schedule.
    bool runsSchedule() const;
    DailyTransferBox* dailyBox() const { return m_box; }

    bool start(ScheduledRun run, std::function<void()> finished) override;

private:
    bool startBackup(std::function<void()> finished);
    bool eraseAfterRetrieval() const;
    // Takes daily settings another program wrote into the settings file.
    void followSettingsFile();
    void openBackupWindow();

    frmMain& m_window;
    MainPages& m_pages;
    const Clock& m_clock;
    QString m_configFile;
    QDateTime m_configStamp;
    std::unique_ptr<InstanceLock> m_schedulerLock;
    std::unique_ptr<ScheduleRunner> m_runner;
    DailyTransferBox* m_box = nullptr;
};
