#include "ui/common/PanelChoiceBox.h"

#include "operations/panels/PanelRepository.h"
#include "reports/ReportFilter.h"
#include "store/Translate.h"
#include "ui/common/AllChoice.h"
#include "ui/common/Caption.h"
#include "ui/reports/ReportContext.h"

#include <QCheckBox>
#include <QListWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

PanelChoiceBox::PanelChoiceBox(QWidget* parent)
    : QGroupBox(parent)
{
    setObjectName(u"frStations"_s);
    setCaption(this, u"Paneller"_s);
    m_all = new QCheckBox(this);
    m_all->setObjectName(u"chkAllStations"_s);
    setCaption(m_all, u"Tüm Paneller"_s);
    m_all->setChecked(true);
    m_list = new QListWidget(this);
    m_list->setObjectName(u"lstPanel"_s);
    m_list->setMinimumHeight(60);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_all);
    layout->addWidget(m_list, 1);
    AllChoice::link(m_all, { m_list });
}

void PanelChoiceBox::reload(const Database& db, const ReportContext& context)
{
    QList<int> ticked;
    for (int row = 0; row < m_list->count(); ++row) {
        if (m_list->item(row)->checkState() == Qt::Checked)
            ticked.append(m_list->item(row)->data(Qt::UserRole).toInt());
    }
    m_list->clear();
    QString error;
    const QList<PanelRepository::Name> panels = PanelRepository(db).names(&error);
    if (!error.isEmpty())
        qWarning().noquote() << "panel list:" << error;
    for (const PanelRepository::Name& panel : panels) {
        const int number = panel.number;
        if (number < 1 || (context.clientStation && !context.watchedPanels.contains(number)))
            continue;
        QString text = Translate(u"Panel"_s) + u' ' + QString::number(number);
        const QString name = panel.name.trimmed();
        if (!name.isEmpty())
            text += u" - "_s + name;
        auto* item = new QListWidgetItem(text, m_list);
        item->setData(Qt::UserRole, number);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
        item->setCheckState(ticked.contains(number) ? Qt::Checked : Qt::Unchecked);
    }
}

void PanelChoiceBox::fill(ReportFilter& filter) const
{
    filter.allPanels = m_all->isChecked();
    filter.panels.clear();
    if (filter.allPanels)
        return;
    for (int row = 0; row < m_list->count(); ++row) {
        if (m_list->item(row)->checkState() == Qt::Checked)
            filter.panels.append(m_list->item(row)->data(Qt::UserRole).toInt());
    }
}

void PanelChoiceBox::choose(const QList<int>& panels)
{
    m_all->setChecked(false);
    for (int row = 0; row < m_list->count(); ++row) {
        QListWidgetItem* item = m_list->item(row);
        item->setCheckState(panels.contains(item->data(Qt::UserRole).toInt()) ? Qt::Checked : Qt::Unchecked);
    }
}
