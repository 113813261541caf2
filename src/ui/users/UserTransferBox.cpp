#include "ui/users/UserTransferBox.h"

#include "operations/users/UserTransfer.h"
#include "ui/common/Caption.h"
#include "ui/common/PanelTargetBox.h"
#include "ui/main/PanelWorkerBridge.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {
PanelTarget targetOf(const PanelTargetBox& box)
{
    return box.allPanels() ? PanelTarget::All : PanelTarget::Selected;
}
} // namespace

UserTransferBox::UserTransferBox(PanelWorkerBridge& bridge, PanelTargetBox& target,
                                 std::function<qint64()> selectedUser, QWidget* parent)
    : QGroupBox(parent)
    , m_bridge(bridge)
    , m_target(target)
    , m_selectedUser(std::move(selectedUser))
{
    setObjectName(u"frUserTransfer"_s);
    setCaption(this, u"Kullanıcı İşlemleri"_s);
    auto* layout = new QGridLayout(this);

    m_allUsers = new QCheckBox(this);
    m_allUsers->setObjectName(u"chkSendAllUsers"_s);
    setCaption(m_allUsers, u"Tüm Kullanıcılar"_s);
    m_allUsers->setChecked(true);
    layout->addWidget(m_allUsers, 0, 0, 1, 2);

    auto* firstLabel = new QLabel(this);
    setCaption(firstLabel, u"İlk ID"_s);
    m_firstId = new QLineEdit(this);
    m_firstId->setObjectName(u"txtNumOfUser0"_s);
    auto* lastLabel = new QLabel(this);
    setCaption(lastLabel, u"Son ID"_s);
    m_lastId = new QLineEdit(this);
    m_lastId->setObjectName(u"txtNumOfUser1"_s);
    layout->addWidget(firstLabel, 1, 0);
    layout->addWidget(m_firstId, 1, 1);
    layout->addWidget(lastLabel, 2, 0);
    layout->addWidget(m_lastId, 2, 1);

    QPushButton* sendAll = addButton(u"cmdSendUserAll"_s);
    setCaption(sendAll, u"Kullanıcıları Gönder"_s);
    QPushButton* sendSelected = addButton(u"cmdSendUserSelected"_s);
    setCaption(sendSelected, u"Seçilen Kullanıcıyı Gönder"_s);
    QPushButton* deleteAll = addButton(u"cmdDeleteAllUsers"_s);
    setCaption(deleteAll, u"Tüm Kart Hafızasını Sil"_s);
    QPushButton* deleteSelected = addButton(u"cmdDeleteUserSelected"_s);
    setCaption(deleteSelected, u"Seçilen Kullanıcıyı Panelden Sil"_s);
    QPushButton* receive = addButton(u"cmdReceiveUser"_s);
    setCaption(receive, u"Kullanıcıları Al"_s);
    QPushButton* receiveSelected = addButton(u"cmdReceiveUserSelected"_s);
    setCaption(receiveSelected, u"Seçilen Kullanıcıyı Al"_s);

    connect(sendAll, &QPushButton::clicked, this, [this] {
        const UserSelection selection = m_allUsers->isChecked()
            ? UserSelection::all()
            : UserSelection::ids(UserIdRange::fromText(m_firstId->text(), m_lastId->text()));
        const PanelTarget where = targetOf(m_target);
        m_bridge.run([=](OperationContext& c) { UserTransfer(c).sendUsers(where, selection); });
    });
    connect(sendSelected, &QPushButton::clicked, this, [this] {
        const qint64 user = m_selectedUser();
        const PanelTarget where = targetOf(m_target);
        m_bridge.run([=](OperationContext& c) { UserTransfer(c).sendSelectedUser(where, user); });
    });
    connect(deleteAll, &QPushButton::clicked, this, [this] {
        const PanelTarget where = targetOf(m_target);
        m_bridge.run([=](OperationContext& c) { UserTransfer(c).eraseCardMemory(where); });
    });
    connect(deleteSelected, &QPushButton::clicked, this, [this] {
        const qint64 user = m_selectedUser();
        const PanelTarget where = targetOf(m_target);
        m_bridge.run([=](OperationContext& c) { UserTransfer(c).deleteSelectedUser(where, user); });
    });
    connect(receive, &QPushButton::clicked, this, [this] {
        const UserIdRange range = UserIdRange::fromText(m_firstId->text(), m_lastId->text());
        m_bridge.run([=](OperationContext& c) { UserTransfer(c).receiveUsers(range); },
                     [this] { Q_EMIT usersReceived(); });
    });
    connect(receiveSelected, &QPushButton::clicked, this, [this] {
        const qint64 user = m_selectedUser();
        m_bridge.run([=](OperationContext& c) { UserTransfer(c).receiveSelectedUser(user); },
                     [this] { Q_EMIT usersReceived(); });
    });
}

QPushButton* UserTransferBox::addButton(const QString& name)
{
    auto* button = new QPushButton(this);
    button->setObjectName(name);
    auto* grid = static_cast<QGridLayout*>(layout());
    const int index = int(findChildren<QPushButton*>(Qt::FindDirectChildrenOnly).size()) - 1;
    grid->addWidget(button, 3 + index / 2, index % 2);
    m_bridge.guard(button);
    return button;
}
