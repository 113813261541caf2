#include "ui/schedule/MainSchedule.h"

#include "operations/backup/PassageBackup.h"
#include "operations/panels/OperationContext.h"
#include "operations/schedule/BackupPlanRepository.h"
#include "store/Clock.h"
#include "store/Operator.h"
#include "ui/backup/frmBackup.h"
#include "ui/common/Caption.h"
#include "ui/common/MessageBox.h"
#include "ui/main/MainPages.h"
#include "ui/main/PanelWorkerBridge.h"
#include "ui/main/frmMain.h"
#include "ui/panels/PanelsPage.h"
#include "ui/schedule/DailyTransferBox.h"

#include <QAction>
#include <QCheckBox>
#include <QDebug>
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
    connect(&window, &frmMain::ticked, this, [this] { m_runner->tick(); });

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
    }
    return false;
}

bool MainSchedule::startBackup(std::function<void()> finished)
{
    PanelWorkerBridge& bridge = m_pages.bridge();
    if (bridge.busy())
        return false;
    const QDateTime now = m_clock.now();
    const QString folder = m_window.folder().backupFolder();
    auto outcome = std::make_shared<PassageBackup::Result>();
    const auto job = [now, folder, outcome](OperationContext& c) {
        c.op.status(Message(u"Veritabanı yedekleniyor..."_s));
        *outcome = PassageBackup(c.db, folder).backupAndRemove(BackupPlan::removalCutoff(now.date()), now);
        if (outcome->ok) {
            QString error;
            if (!BackupPlanRepository(c.db).saveLastBackup(now.date(), &error))
                qWarning().noquote() << "last backup date:" << error;
        }
        c.op.status(outcome->ok ? outcome->message : Message());
    };
    const auto done = [this, outcome, finished] {
        if (!outcome->detail.isEmpty())
            qWarning().noquote() << "periodic backup:" << outcome->detail;
        // The run has ended before the person is told, so the daily runs need not wait for them.
        if (finished)
            finished();
        if (!outcome->ok)
            MessageBox::warning(&m_window, outcome->message);
    };
    return bridge.run(job, done);
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
