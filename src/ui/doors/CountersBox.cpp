#include "ui/doors/CountersBox.h"

#include "operations/configuration/GroupRepository.h"
#include "operations/doors/CounterOperations.h"
#include "ui/common/Caption.h"
#include "ui/common/PanelTargetBox.h"
#include "ui/main/PanelWorkerBridge.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <memory>

using namespace Qt::StringLiterals;

namespace {
PanelTarget targetOf(const PanelTargetBox& box)
{
    return box.allPanels() ? PanelTarget::All : PanelTarget::Selected;
}
} // namespace

CountersBox::CountersBox(PanelWorkerBridge& bridge, PanelTargetBox& target, PanelTargetBox& recordTarget, Database& db,
                         std::function<qint64()> selectedUser, QWidget* parent)
    : QGroupBox(parent)
    , m_bridge(bridge)
    , m_target(target)
    , m_recordTarget(recordTarget)
    , m_db(db)
    , m_selectedUser(std::move(selectedUser))
{
    setObjectName(u"frCounters"_s);
    setCaption(this, u"Sayaç İşlemleri"_s);
    auto* layout = new QGridLayout(this);

    QPushButton* apbAll = addButton(u"cmdAPBAllUser"_s);
    setCaption(apbAll, u"Tüm Antipassback Sayaçlarını Sil"_s);
    QPushButton* apbUser = addButton(u"cmdAPBSelectedUser"_s);
    setCaption(apbUser, u"Seçilen Kullanıcının Antipassback Sayacını Sil"_s);
    QPushButton* countersAll = addButton(u"cmdDeleteAllAccessCounters"_s);
    setCaption(countersAll, u"Tüm Geçiş Sayaçlarını Sil"_s);
    QPushButton* countersUser = addButton(u"cmdDeleteSingleAccessCounters"_s);
    setCaption(countersUser, u"Seçilen Kullanıcının Geçiş Sayacını Sil"_s);
    QPushButton* readUser = addButton(u"cmdReadSingleAccessCounter"_s);
    setCaption(readUser, u"Seçilen Kullanıcının Geçiş Sayacını Oku"_s);
    QPushButton* clearRecords = addButton(u"cmdClearCounter"_s);
    setCaption(clearRecords, u"Offline Geçiş Hafızasını Sil"_s);
    QPushButton* readRecords = addButton(u"cmdReadCounter"_s);
    setCaption(readRecords, u"Kayıt Sayısını Oku"_s);

    m_recordCounter = new QLabel(this);
    m_recordCounter->setObjectName(u"lblRecordCounter"_s);
    m_recordCounter->setFrameShape(QFrame::StyledPanel);
    layout->addWidget(m_recordCounter, 3, 1);

    auto* groupLabel = new QLabel(this);
    setCaption(groupLabel, u"Geçiş Grubu:"_s);
    m_groups = new QComboBox(this);
    m_groups->setObjectName(u"cmbMaxInGroup"_s);
    layout->addWidget(groupLabel, 4, 0);
    layout->addWidget(m_groups, 4, 1);

    QPushButton* insideAll = addButton(u"cmdEraseAllMaxIn"_s);
    setCaption(insideAll, u"Tüm Gruplarda İçerdeki Sayısını Sil"_s);
    QPushButton* insideGroup = addButton(u"cmdEraseMaxIn"_s);
    setCaption(insideGroup, u"Gruptaki İçerdeki Sayısını Sil"_s);
    QPushButton* readInside = addButton(u"cmdReadMaxIn"_s);
    setCaption(readInside, u"Gruptaki İçerdeki Sayısını Oku"_s);

    connect(apbAll, &QPushButton::clicked, this, [this] {
        const PanelTarget where = targetOf(m_target);
        m_bridge.run([=](OperationContext& c) { CounterOperations(c).resetAllAntiPassback(where); });
    });
    connect(apbUser, &QPushButton::clicked, this, [this] {
        const PanelTarget where = targetOf(m_target);
        const qint64 user = m_selectedUser();
        m_bridge.run([=](OperationContext& c) { CounterOperations(c).resetUserAntiPassback(where, user); });
    });
    connect(countersAll, &QPushButton::clicked, this, [this] {
        const PanelTarget where = targetOf(m_target);
        m_bridge.run([=](OperationContext& c) { CounterOperations(c).eraseAllAccessCounters(where); });
    });
    connect(countersUser, &QPushButton::clicked, this, [this] {
        const PanelTarget where = targetOf(m_target);
        const qint64 user = m_selectedUser();
        m_bridge.run([=](OperationContext& c) { CounterOperations(c).eraseUserAccessCounter(where, user); });
    });
    connect(readUser, &QPushButton::clicked, this, [this] {
        const qint64 user = m_selectedUser();
        m_bridge.run([=](OperationContext& c) { CounterOperations(c).readUserAccessCounter(user); });
    });
    connect(clearRecords, &QPushButton::clicked, this, [this] {
        const PanelTarget where = targetOf(m_recordTarget);
        m_bridge.run([=](OperationContext& c) { CounterOperations(c).eraseRecordMemory(where); });
    });
    connect(readRecords, &QPushButton::clicked, this, [this] {
        auto count = std::make_shared<qint32>(-1);
        auto ok = std::make_shared<bool>(false);
        m_bridge.run([=](OperationContext& c) { *ok = CounterOperations(c).readRecordCount(count.get()).succeeded(); },
                     [this, count, ok] { m_recordCounter->setText(*ok ? QString::number(*count) : QString()); });
    });
    connect(insideAll, &QPushButton::clicked, this,
            [this] { m_bridge.run([](OperationContext& c) { CounterOperations(c).clearAllInsideCounts(); }); });
    connect(insideGroup, &QPushButton::clicked, this, [this] {
        const int group = selectedGroup();
        m_bridge.run([=](OperationContext& c) { CounterOperations(c).clearGroupInsideCount(group); });
    });
    connect(readInside, &QPushButton::clicked, this, [this] {
        const int group = selectedGroup();
        m_bridge.run([=](OperationContext& c) { CounterOperations(c).readGroupInsideCount(group); });
    });
    refreshGroups();
}

QPushButton* CountersBox::addButton(const QString& name)
{
    // Buttons fill two columns, the inside-count buttons below the group choice.
    static const QStringList order{ u"cmdAPBAllUser"_s,
                                    u"cmdAPBSelectedUser"_s,
                                    u"cmdDeleteAllAccessCounters"_s,
                                    u"cmdDeleteSingleAccessCounters"_s,
                                    u"cmdReadSingleAccessCounter"_s,
                                    u"cmdClearCounter"_s,
                                    u"cmdReadCounter"_s,
                                    QString(),
                                    QString(),
                                    QString(),
                                    u"cmdEraseAllMaxIn"_s,
                                    u"cmdEraseMaxIn"_s,
                                    u"cmdReadMaxIn"_s };
    auto* button = new QPushButton(this);
    button->setObjectName(name);
    const int index = int(order.indexOf(name));
    static_cast<QGridLayout*>(layout())->addWidget(button, index / 2, index % 2);
    m_bridge.guard(button);
    return button;
}

void CountersBox::refreshGroups()
{
    const int current = selectedGroup();
    m_groups->clear();
    for (const GroupRepository::Row& group : GroupRepository(m_db).list())
        m_groups->addItem(QString::number(group.number) + u" - "_s + group.name.trimmed(), group.number);
    const int index = m_groups->findData(current);
    if (index >= 0)
        m_groups->setCurrentIndex(index);
}

void CountersBox::showEvent(QShowEvent* event)
{
    refreshGroups();
    QGroupBox::showEvent(event);
}

int CountersBox::selectedGroup() const
{
    return m_groups->currentIndex() >= 0 ? m_groups->currentData().toInt() : 0;
}
