#include "ui/schedule/MainSchedule.h"

#include "operations/panels/OperationContext.h"
#include "operations/schedule/DailySendRepository.h"
#include "operations/schedule/ScheduledRunJobs.h"
#include "store/Clock.h"
#include "store/ConfigFile.h"
#include "store/InstanceLock.h"
#include "ui/backup/frmBackup.h"
#include "ui/common/Caption.h"
#include "ui/common/MessageBox.h"
#include "ui/main/MainPages.h"
#include "ui/main/PanelWorkerBridge.h"
#include "ui/main/WindowOperator.h"
#include "ui/main/frmMain.h"
#include "ui/panels/PanelsPage.h"
#include "ui/schedule/DailyTransferBox.h"

#include <QAction>
#include <QCheckBox>
#include <QDebug>
#include <QFileInfo>
#include <QMenu>

using namespace Qt::StringLiterals;

MainSchedule::MainSchedule(frmMain& window, MainPages& pages, const Clock& clock)
    : QObject(&window)
    , m_window(window)
    , m_pages(pages)
    , m_clock(clock)
{
    const StationSettings settings = window.settings();
    // Only the server station reads the backup plan, and only it backs up.
    m_runner = std::make_unique<ScheduleRunner>(clock, *this, settings.isServer() ? &window.database() : nullptr);
    m_runner->setSchedule(DailySchedule::from(settings));

    // Made inside its page: a caption set on a box without a parent would become a window title.
    m_box = new DailyTransferBox(window.folder().configFile(), DailySchedule::from(settings), pages.panelsPage());
    if (pages.panelsPage())
        pages.panelsPage()->addSideBox(m_box);
    connect(m_box, &DailyTransferBox::scheduleChanged, this,
            [this](const DailySchedule& schedule) { m_runner->setSchedule(schedule); });
    // The changed-only choice lives in the database with the other schedule settings; the daily
    // send reads it when it runs.
    m_box->displayChangedOnly(DailySendRepository(window.database()).changedOnly());
    connect(m_box, &DailyTransferBox::changedOnlyChosen, this, [this](bool changedOnly) {
        QString error;
        if (!DailySendRepository(m_window.database()).saveChangedOnly(changedOnly, &error)) {
            qWarning().noquote() << error;
            MessageBox::warning(&m_window, Message(u"Başlangıç ayarları kaydedilemedi."_s));
        }
    });
    m_configFile = window.folder().configFile();
    m_configStamp = QFileInfo(m_configFile).lastModified();
    m_schedulerLock = std::make_unique<InstanceLock>(window.folder().schedulerLockFile());
    if (m_schedulerLock->tryLock()) {
        connect(&window, &frmMain::ticked, this, [this] {
            followSettingsFile();
            m_runner->tick();
        });
    } else {
        window.windowOperator().status(Message(
            u"Günlük zamanlanmış işleri başka bir program (kx410d) yürütüyor; bu pencere zamanlayıcısız çalışıyor."_s));
    }

    if (auto* mnuFile = window.findChild<QMenu*>(u"mnuFile"_s)) {
        auto* entry = new QAction(mnuFile);
        entry->setObjectName(u"mnuBackup"_s);
        setCaption(entry, u"Yedekleme ve Kayıt Silme"_s);
        const QList<QAction*> entries = mnuFile->actions();
        mnuFile->insertAction(entries.isEmpty() ? nullptr : entries.first(), entry);
        connect(entry, &QAction::triggered, this, &MainSchedule::openBackupWindow);
    }
}

MainSchedule::~MainSchedule() = default;

bool MainSchedule::runsSchedule() const
{
    return m_schedulerLock->isLocked();
}

MainSchedule* MainSchedule::install(frmMain& window, MainPages& pages, const Clock& clock)
{
    return new MainSchedule(window, pages, clock);
}

bool MainSchedule::start(ScheduledRun run, std::function<void()> finished)
{
    switch (run) {
    case ScheduledRun::DailySend:
        return m_pages.sendUsersToAllPanels(std::move(finished));
    case ScheduledRun::DailyRetrieval:
        return m_pages.retrieveFromAllPanels(eraseAfterRetrieval(), std::move(finished));
    case ScheduledRun::PeriodicBackup:
        return startBackup(std::move(finished));
    case ScheduledRun::ApprovalReset:
        // Busy: tried again on the next tick, without the refusal a person's second operation gets.
        if (m_pages.bridge().busy())
            return false;
        return m_pages.bridge().run([](OperationContext& c) { ScheduledRunJobs::approvalReset(c); },
                                    std::move(finished));
    }
    return false;
}

bool MainSchedule::startBackup(std::function<void()> finished)
{
    PanelWorkerBridge& bridge = m_pages.bridge();
    if (bridge.busy())
        return false;
    const QString folder = m_window.folder().backupFolder();
    // The moment the scheduler found it due, by the clock that drives it.
    const QDateTime moment = m_clock.now();
    auto outcome = std::make_shared<PassageBackup::Result>();
    const auto job = [folder, moment, outcome](OperationContext& c) {
        *outcome = ScheduledRunJobs::periodicBackup(c, folder, moment);
    };
    const auto done = [this, outcome, finished] {
        // The run has ended before the person is told, so the daily runs need not wait for them.
        if (finished)
            finished();
        if (!outcome->ok)
            MessageBox::warning(&m_window, outcome->message);
    };
    return bridge.run(job, done);
}

void MainSchedule::followSettingsFile()
{
    // kx410ctl may have changed the daily settings: a look at the file's date each tick is cheap.
    const QDateTime stamp = QFileInfo(m_configFile).lastModified();
    if (stamp == m_configStamp)
        return;
    m_configStamp = stamp;
    const ConfigFile::ReadResult read = ConfigFile::read(m_configFile);
    if (read.status != ConfigFile::Status::Ok)
        return;
    const DailySchedule daily = DailySchedule::from(read.settings);
    if (daily == m_runner->schedule())
        return;
    m_box->display(daily);
    m_runner->setSchedule(daily);
}

bool MainSchedule::eraseAfterRetrieval() const
{
    // The daily retrieval erases the panels when the retrieval box says so, as the button does.
    const auto* clearRam = m_window.findChild<QCheckBox*>(u"chkClearRAM"_s);
    return clearRam && clearRam->isChecked();
}

void MainSchedule::openBackupWindow()
{
    frmBackup::open(m_window, m_pages.bridge());
}
