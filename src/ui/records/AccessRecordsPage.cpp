#include "ui/records/AccessRecordsPage.h"

#include "operations/live/LiveMonitor.h"
#include "store/Translate.h"
#include "ui/common/Caption.h"
#include "ui/main/PageServices.h"
#include "ui/records/AccessRecordModel.h"
#include "ui/records/PassageColumns.h"
#include "ui/records/RecordRetrievalBox.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

AccessRecordsPage::AccessRecordsPage(const PageServices& services, QWidget* parent)
    : QWidget(parent)
    , m_names(*services.db)
{
    setObjectName(u"tabAccessRecords"_s);
    m_model = new AccessRecordModel(*services.db, m_names, this);
    m_grid = new QTableView(this);
    m_grid->setObjectName(u"grdAccessRecords"_s);
    m_grid->setModel(m_model);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->verticalHeader()->setVisible(false);
    m_grid->horizontalHeader()->setStretchLastSection(true);
    PassageColumns::fitMoment(m_grid);

    m_refreshAtOnce = new QCheckBox(this);
    m_refreshAtOnce->setObjectName(u"chkRefreshAtOnce"_s);
    setCaption(m_refreshAtOnce, u"Yeni kayıtları hemen göster"_s);
    m_refreshAtOnce->setChecked(true);
    auto* refreshButton = new QPushButton(this);
    refreshButton->setObjectName(u"cmdRefresh"_s);
    setCaption(refreshButton, u"Yenile"_s);
    m_waitingLabel = new QLabel(this);
    m_waitingLabel->setObjectName(u"lblWaitingRecords"_s);

    auto* bar = new QHBoxLayout;
    bar->addWidget(m_refreshAtOnce);
    bar->addWidget(m_waitingLabel);
    bar->addStretch();
    bar->addWidget(refreshButton);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(bar);
    layout->addWidget(m_grid);

    connect(refreshButton, &QPushButton::clicked, this, &AccessRecordsPage::refresh);
    // Turned on again after passages were left waiting: show them now, so no gap opens in the grid.
    connect(m_refreshAtOnce, &QCheckBox::toggled, this, [this](bool on) {
        if (on && m_waiting > 0)
            refresh();
    });
    refresh();
}

void AccessRecordsPage::watch(LiveMonitor& monitor)
{
    connect(&monitor, &LiveMonitor::passagesStored, this, &AccessRecordsPage::addPassages);
}

void AccessRecordsPage::follow(RecordRetrievalBox& retrieval)
{
    connect(&retrieval, &RecordRetrievalBox::retrievalFinished, this, [this](int added) {
        if (added > 0)
            refresh();
    });
}

bool AccessRecordsPage::refreshesAtOnce() const
{
    return m_refreshAtOnce->isChecked();
}

void AccessRecordsPage::addPassages(const QList<RecordRow>& rows)
{
    if (rows.isEmpty())
        return;
    if (!refreshesAtOnce() || m_waiting > 0) {
        m_waiting += int(rows.size());
        showWaiting();
        return;
    }
    m_model->addNewer(m_names.resolve(rows));
}

void AccessRecordsPage::refresh()
{
    // Names may have changed since they were read.
    m_names.clear();
    QString error;
    if (!m_model->reload(&error))
        qWarning().noquote() << "access records:" << error;
    m_waiting = 0;
    showWaiting();
}

void AccessRecordsPage::showWaiting()
{
    m_waitingLabel->setText(m_waiting > 0 ? Translate(u"Bekleyen yeni kayıt:"_s) + u' ' + QString::number(m_waiting)
                                          : QString());
}

void AccessRecordsPage::retranslate()
{
    m_model->retranslate();
    showWaiting();
}
