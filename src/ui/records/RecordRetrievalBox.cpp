#include "ui/records/RecordRetrievalBox.h"

#include "operations/records/RecordRetrieval.h"
#include "ui/common/Caption.h"
#include "ui/common/PanelTargetBox.h"
#include "ui/main/PanelWorkerBridge.h"
#include "ui/records/frmUnreadRecords.h"

#include <QCheckBox>
#include <QPushButton>
#include <QVBoxLayout>
#include <memory>

using namespace Qt::StringLiterals;

RecordRetrievalBox::RecordRetrievalBox(PanelWorkerBridge& bridge, PanelTargetBox& target, Database* db, QWidget* parent)
    : QGroupBox(parent)
    , m_bridge(bridge)
    , m_target(target)
    , m_db(db)
{
    setObjectName(u"frReadData"_s);
    setCaption(this, u"Offline Kayıtlar"_s);
    m_readData = new QPushButton(this);
    m_readData->setObjectName(u"cmdReadData"_s);
    setCaption(m_readData, u"Offline Kayıtları Al"_s);
    m_clearRam = new QCheckBox(this);
    m_clearRam->setObjectName(u"chkClearRAM"_s);
    setCaption(m_clearRam, u"Aldıktan sonra panel hafızasını sil"_s);
    auto* unread = new QPushButton(this);
    unread->setObjectName(u"cmdUnreadRecords"_s);
    setCaption(unread, u"Okunamayan Kayıtlar"_s);
    unread->setEnabled(m_db != nullptr);
    connect(unread, &QPushButton::clicked, this, &RecordRetrievalBox::showUnread);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_readData);
    layout->addWidget(m_clearRam);
    layout->addWidget(unread);
    m_bridge.guard(m_readData);
    connect(m_readData, &QPushButton::clicked, this, &RecordRetrievalBox::readData);
}

bool RecordRetrievalBox::readData()
{
    RecordRetrieval::Options options;
    options.target = m_target.allPanels() ? PanelTarget::All : PanelTarget::Selected;
    options.eraseAfter = m_clearRam->isChecked();
    auto added = std::make_shared<int>(0);
    return m_bridge.run([options, added](OperationContext& c) { *added = RecordRetrieval::run(c, options).added; },
                        [this, added] { Q_EMIT retrievalFinished(*added); });
}

void RecordRetrievalBox::showUnread()
{
    if (!m_db)
        return;
    auto* form = new frmUnreadRecords(*m_db, window());
    form->setAttribute(Qt::WA_DeleteOnClose);
    form->show();
}
