#include "ui/live/frmMonitorSetup.h"

#include "operations/live/LiveRules.h"
#include "store/Database.h"
#include "ui/common/Caption.h"
#include "ui/common/MessageBox.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

frmMonitorSetup::frmMonitorSetup(const Database& db, QWidget* parent)
    : QDialog(parent)
    , m_db(db)
{
    setObjectName(u"frmMonitorSetup"_s);
    setCaption(this, u"Canlı İzleme Ayarları"_s);

    m_noAntipassback = new QCheckBox(this);
    m_noAntipassback->setObjectName(u"chkNoAntipassback"_s);
    setCaption(m_noAntipassback, u"Antipassback ihlali olan geçişleri kaydetme"_s);
    m_noDenied = new QCheckBox(this);
    m_noDenied->setObjectName(u"chkNoDenied"_s);
    setCaption(m_noDenied, u"Reddedilen geçişleri kaydetme"_s);
    m_noUnknown = new QCheckBox(this);
    m_noUnknown->setObjectName(u"chkNoUnknown"_s);
    setCaption(m_noUnknown, u"Tanımsız kart geçişlerini kaydetme"_s);

    auto* cmOk = new QPushButton(this);
    cmOk->setObjectName(u"cmOk"_s);
    setCaption(cmOk, u"Tamam"_s);
    cmOk->setDefault(true);
    auto* cmCancel = new QPushButton(this);
    cmCancel->setObjectName(u"cmCancel"_s);
    setCaption(cmCancel, u"İptal"_s);
    connect(cmOk, &QPushButton::clicked, this, &frmMonitorSetup::save);
    connect(cmCancel, &QPushButton::clicked, this, &QDialog::reject);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmOk);
    buttons->addWidget(cmCancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_noAntipassback);
    layout->addWidget(m_noDenied);
    layout->addWidget(m_noUnknown);
    layout->addLayout(buttons);

    const LiveRules rules = LiveRules::read(m_db);
    m_noAntipassback->setChecked(rules.dropAntiPassback);
    m_noDenied->setChecked(rules.dropDenied);
    m_noUnknown->setChecked(rules.dropUnknown);
}

bool frmMonitorSetup::save()
{
    LiveRules rules;
    rules.dropAntiPassback = m_noAntipassback->isChecked();
    rules.dropDenied = m_noDenied->isChecked();
    rules.dropUnknown = m_noUnknown->isChecked();
    QString error;
    if (!rules.write(m_db, &error)) {
        qWarning().noquote() << "live monitor settings:" << error;
        MessageBox::critical(this, Message(u"Ayarlar kaydedilemedi!"_s));
        return false;
    }
    accept();
    return true;
}
