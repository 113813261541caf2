#include "ui/calendars/frmDailyPermission.h"

#include "operations/configuration/DailyPermissionTransfer.h"
#include "operations/schedule/ApprovalResetRepository.h"
#include "store/RightsCheck.h"
#include "store/Translate.h"
#include "ui/common/Caption.h"
#include "ui/common/MessageBox.h"
#include "ui/main/PanelWorkerBridge.h"
#include "ui/main/WindowOperator.h"

#include <QCheckBox>
#include <QDebug>
#include <QEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>
#include <QTimeEdit>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
constexpr int kApproved = 4;

QPushButton* button(QWidget* parent, const QString& name, const QString& turkish)
{
    auto* b = new QPushButton(parent);
    b->setObjectName(name);
    setCaption(b, turkish);
    return b;
}

// The main window's operator, with the progress shown in the window's own bar PR.
class ListOperator : public Operator
{
public:
    ListOperator(Operator& main, QProgressBar* bar)
        : m_main(main)
        , m_bar(bar)
    { }
    bool ask(const Message& question) override { return m_main.ask(question); }
    void tell(const Message& message, Kind kind) override { m_main.tell(message, kind); }
    void progress(int value, int maximum) override
    {
        if (!m_bar)
            return;
        QMetaObject::invokeMethod(m_bar, [bar = m_bar, value, maximum] {
            if (!bar)
                return;
            bar->setRange(0, qMax(1, maximum));
            bar->setValue(qBound(0, value, qMax(1, maximum)));
        });
    }
    void status(const Message& line) override { m_main.status(line); }
    void requestLogin() override { m_main.requestLogin(); }
    bool cancelRequested() const override { return m_main.cancelRequested(); }

private:
    Operator& m_main;
    QPointer<QProgressBar> m_bar;
};

QString approvalText(bool approved)
{
    return Translate(approved ? u"Evet"_s : u"Hayır"_s);
}
} // namespace

frmDailyPermission::~frmDailyPermission() = default;

frmDailyPermission::frmDailyPermission(const PageServices& services, PanelWorkerBridge& bridge, int group,
                                       QWidget* parent)
    : QDialog(parent)
    , m_services(services)
    , m_bridge(bridge)
    , m_group(group)
{
    setObjectName(u"frmDailyPermission"_s);
    m_groupName = DailyPermissionRepository(*m_services.db).groupName(group);

    m_model = new QStandardItemModel(0, 5, this);
    m_grid = new QTableView(this);
    m_grid->setObjectName(u"grdDailyPerm"_s);
    m_grid->setModel(m_model);
    m_grid->verticalHeader()->setVisible(false);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    connect(m_model, &QStandardItemModel::itemChanged, this, [](QStandardItem* item) {
        if (item->column() == kApproved)
            item->setText(approvalText(item->checkState() == Qt::Checked));
    });

    QPushButton* allSign = button(this, u"cmdAllSign"_s, u"Tümünü Onayla"_s);
    QPushButton* allCancel = button(this, u"cmdAllCancel"_s, u"Tümünü İptal Et"_s);
    QPushButton* saveButton = button(this, u"cmdSave"_s, u"Kaydet-Güncelle"_s);
    QPushButton* sendButton = button(this, u"cmdSend"_s, u"Seçilen Panele Gönder"_s);
    QPushButton* close = button(this, u"cmdClose"_s, u"Kapat"_s);
    // This window's own English for a caption the other windows word differently.
    setEnglishCaption(sendButton, u"Send To Current Panel"_s);
    connect(allSign, &QPushButton::clicked, this, [this] { setAll(true); });
    connect(allCancel, &QPushButton::clicked, this, [this] { setAll(false); });
    connect(saveButton, &QPushButton::clicked, this, &frmDailyPermission::save);
    connect(sendButton, &QPushButton::clicked, this, &frmDailyPermission::send);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    m_bridge.guard(sendButton);

    m_progress = new QProgressBar(this);
    m_progress->setObjectName(u"PR"_s);
    m_progress->setValue(0);
    m_operator = std::make_shared<ListOperator>(*m_services.op, m_progress);

    auto* reset = new QGroupBox(this);
    reset->setObjectName(u"fraApprovalReset"_s);
    setCaption(reset, u"Onayların Günlük Sıfırlanması"_s);
    m_resetOn = new QCheckBox(reset);
    m_resetOn->setObjectName(u"chkApprovalReset"_s);
    setCaption(m_resetOn, u"Onayları her gün bu saatte iptal et"_s);
    m_resetTime = new QTimeEdit(reset);
    m_resetTime->setObjectName(u"dtApprovalResetTime"_s);
    m_resetTime->setDisplayFormat(u"HH:mm"_s);
    m_resetPanels = new QCheckBox(reset);
    m_resetPanels->setObjectName(u"chkApprovalResetPanels"_s);
    setCaption(m_resetPanels, u"Panellere de gönder"_s);
    auto* resetLayout = new QHBoxLayout(reset);
    resetLayout->addWidget(m_resetOn);
    resetLayout->addWidget(m_resetTime);
    resetLayout->addWidget(m_resetPanels);
    resetLayout->addStretch();
    connect(m_resetOn, &QCheckBox::toggled, this, &frmDailyPermission::storeResetPlan);
    connect(m_resetTime, &QTimeEdit::timeChanged, this, &frmDailyPermission::storeResetPlan);
    connect(m_resetPanels, &QCheckBox::toggled, this, &frmDailyPermission::storeResetPlan);

    auto* buttons = new QHBoxLayout;
    for (QPushButton* b : { allSign, allCancel, saveButton, sendButton })
        buttons->addWidget(b);
    buttons->addStretch();
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_grid, 1);
    layout->addWidget(m_progress);
    layout->addLayout(buttons);
    layout->addWidget(reset);
    resize(640, 480);

    retranslate();
    showResetPlan();
    reload();
}

frmDailyPermission* frmDailyPermission::open(const PageServices& services, PanelWorkerBridge& bridge, int group,
                                             QWidget* parent)
{
    if (group <= 0) {
        MessageBox::warning(parent, Message(u"Grup numarası 0'dan büyük olmalıdır"_s));
        return nullptr;
    }
    auto* window = new frmDailyPermission(services, bridge, group, parent);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->show();
    return window;
}

void frmDailyPermission::captionGrid()
{
    m_model->setHorizontalHeaderLabels({ Translate(u"ID"_s), Translate(u"Kart ID"_s), Translate(u"Adi"_s),
                                         Translate(u"Soyadi"_s), Translate(u"Gunluk Gecis Onayi"_s) });
}

void frmDailyPermission::reload()
{
    QString error;
    m_members = DailyPermissionRepository(*m_services.db).members(m_group, &error);
    if (!error.isEmpty())
        qWarning().noquote() << "daily approvals:" << error;
    m_model->removeRows(0, m_model->rowCount());
    for (const DailyPermissionRepository::Member& m : std::as_const(m_members)) {
        auto* id = new QStandardItem;
        id->setData(m.id, Qt::DisplayRole);
        auto* card = new QStandardItem;
        card->setData(m.card, Qt::DisplayRole);
        auto* approved = new QStandardItem(approvalText(m.approved));
        approved->setCheckable(true);
        approved->setCheckState(m.approved ? Qt::Checked : Qt::Unchecked);
        m_model->appendRow({ id, card, new QStandardItem(m.name), new QStandardItem(m.surname), approved });
    }
    m_grid->resizeColumnsToContents();
}

QList<DailyPermissionRepository::Member> frmDailyPermission::gridMembers() const
{
    QList<DailyPermissionRepository::Member> members = m_members;
    for (int row = 0; row < members.size() && row < m_model->rowCount(); ++row)
        members[row].approved = m_model->item(row, kApproved)->checkState() == Qt::Checked;
    return members;
}

bool frmDailyPermission::save()
{
    QString error;
    const bool ok = DailyPermissionRepository(*m_services.db).store(gridMembers(), &error);
    if (!ok) {
        qWarning().noquote() << "daily approvals:" << error;
        MessageBox::warning(this, Message(u"Hata, İşlem tamamlanamadı!"_s));
    }
    reload();
    return ok;
}

void frmDailyPermission::setAll(bool approved)
{
    QString error;
    if (!DailyPermissionRepository(*m_services.db).setAll(m_group, approved, &error)) {
        qWarning().noquote() << "daily approvals:" << error;
        MessageBox::warning(this, Message(u"Hata, İşlem tamamlanamadı!"_s));
    }
    reload();
}

void frmDailyPermission::send()
{
    // Pending edits go first, so that what is sent is what is stored.
    if (!save())
        return;
    m_progress->setValue(0);
    const int group = m_group;
    // The job keeps the operator alive should the window close while it runs.
    m_bridge.run([group, keep = m_operator](OperationContext& c) { DailyPermissionTransfer(c).send(group); }, {},
                 m_operator.get());
}

void frmDailyPermission::showResetPlan()
{
    ApprovalResetPlan plan;
    QString error;
    if (!ApprovalResetRepository(*m_services.db).load(&plan, &error) && !error.isEmpty())
        qWarning().noquote() << "approval reset:" << error;
    m_showingPlan = true;
    m_resetOn->setChecked(plan.on);
    m_resetTime->setTime(plan.time.isValid() ? plan.time : QTime(0, 0));
    m_resetPanels->setChecked(plan.toPanels);
    m_resetTime->setEnabled(plan.on);
    m_resetPanels->setEnabled(plan.on);
    m_showingPlan = false;
}

void frmDailyPermission::storeResetPlan()
{
    if (m_showingPlan)
        return;
    // A station-wide setting: the administrator's to change.
    if (!checkAdministratorRights(*m_services.session, *m_services.op)) {
        showResetPlan();
        return;
    }
    const ApprovalResetPlan plan{ m_resetOn->isChecked(), m_resetTime->time(), m_resetPanels->isChecked() };
    m_resetTime->setEnabled(plan.on);
    m_resetPanels->setEnabled(plan.on);
    QString error;
    if (!ApprovalResetRepository(*m_services.db).save(plan, &error))
        qWarning().noquote() << "approval reset:" << error;
}

void frmDailyPermission::retranslate()
{
    // The group's name between single quotation marks, then the fixed text.
    setWindowTitle(u"'"_s + m_groupName + u"' "_s + Translate(u"Grubu İçin Günlük Geçiş Onay Listesi"_s));
    captionGrid();
    for (int row = 0; row < m_model->rowCount(); ++row) {
        QStandardItem* item = m_model->item(row, kApproved);
        item->setText(approvalText(item->checkState() == Qt::Checked));
    }
}

void frmDailyPermission::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QDialog::changeEvent(event);
}
