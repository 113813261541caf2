#include "ui/users/VisitorsPage.h"

#include "operations/configuration/GroupRepository.h"
#include "operations/users/PersonName.h"
#include "operations/users/UserRepository.h"
#include "operations/users/VisitorRepository.h"
#include "store/Clock.h"
#include "store/RightsCheck.h"
#include "store/Translate.h"
#include "ui/common/Caption.h"
#include "ui/common/ColumnHeading.h"
#include "ui/common/MessageBox.h"
#include "ui/main/WindowOperator.h"
#include "ui/panels/PanelGrid.h"

#include <QComboBox>
#include <QDateEdit>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTimeEdit>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
const QStringList visitColumns{ u"Kayit No"_s, u"User ID"_s,        u"Kart ID"_s, u"Adi"_s,
                                u"Soyadi"_s,   u"TCKimlik"_s,       u"Plaka"_s,   u"Tarih"_s,
                                u"Saat"_s,     u"Ziyaret Sebebi"_s, u"Grup No"_s, u"ID"_s };

QLabel* formLabel(QWidget* parent)
{
    return new QLabel(parent);
}
} // namespace

VisitorsPage::VisitorsPage(const PageServices& services, PanelRoster& roster, QWidget* parent)
    : QWidget(parent)
    , m_services(services)
{
    setObjectName(u"tabVisitors"_s);
    m_grid = new PanelGrid(u"FlexPanelVisitor"_s, roster, this);

    auto* form = new QGroupBox(this);
    form->setObjectName(u"frVisitorEntry"_s);
    setCaption(form, u"Ziyaretçi Girişi"_s);
    auto* formLayout = new QFormLayout(form);
    // Names the field and adds it to the form under its caption.
    const auto addField = [&](auto* field, const QString& name, const QString& caption) {
        field->setObjectName(name);
        QLabel* label = formLabel(form);
        formLayout->addRow(label, field);
        setCaption(label, caption);
        return field;
    };

    m_card = addField(new QComboBox(form), u"cmbVisitorCard"_s, u"Ziyaretçi Kartı"_s);
    m_name = addField(new QLineEdit(form), u"txtVisitorName"_s, columnHeading(u"Adi"_s));
    m_surname = addField(new QLineEdit(form), u"txtVisitorSurname"_s, columnHeading(u"Soyadi"_s));
    m_identity = addField(new QLineEdit(form), u"txtVisitorIdentity"_s, columnHeading(u"TCKimlik"_s));
    m_plate = addField(new QLineEdit(form), u"txtVisitorPlate"_s, u"Plaka"_s);
    m_plate->setMaxLength(25);
    m_visited = addField(new QComboBox(form), u"cmbVisitedPerson"_s, u"Ziyaret Edilen Kişi"_s);
    m_reason = addField(new QLineEdit(form), u"txtVisitReason"_s, u"Ziyaret Sebebi"_s);
    m_group = addField(new QComboBox(form), u"cmbVisitorGroup"_s, u"Grup No"_s);
    m_date = addField(new QDateEdit(form), u"dtpVisitDate"_s, u"Tarih"_s);
    m_date->setDisplayFormat(u"dd/MM/yyyy"_s);
    m_date->setCalendarPopup(true);
    m_time = addField(new QTimeEdit(form), u"dtpVisitTime"_s, u"Saat"_s);
    m_time->setDisplayFormat(u"HH:mm"_s);
    // Dates and times read left to right in every language.
    m_date->setLayoutDirection(Qt::LeftToRight);
    m_time->setLayoutDirection(Qt::LeftToRight);
    auto* registerButton = new QPushButton(form);
    registerButton->setObjectName(u"cmdRegisterVisit"_s);
    setCaption(registerButton, u"Ziyaretçi Kaydet"_s);
    formLayout->addRow(registerButton);
    connect(registerButton, &QPushButton::clicked, this, &VisitorsPage::registerVisit);

    m_listDay = new QDateEdit(this);
    m_listDay->setObjectName(u"dtpVisitList"_s);
    m_listDay->setDisplayFormat(u"dd/MM/yyyy"_s);
    m_listDay->setCalendarPopup(true);
    m_listDay->setLayoutDirection(Qt::LeftToRight);
    m_visits = new QTableWidget(this);
    m_visits->setObjectName(u"grdVisitors"_s);
    m_visits->setColumnCount(int(visitColumns.size()));
    m_visits->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_visits->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_visits->setSelectionMode(QAbstractItemView::SingleSelection);
    m_visits->verticalHeader()->setVisible(false);
    auto* remove = new QPushButton(this);
    remove->setObjectName(u"cmdDeleteVisitor"_s);
    setCaption(remove, u"Sil"_s);
    connect(remove, &QPushButton::clicked, this, &VisitorsPage::deleteVisit);
    connect(m_listDay, &QDateEdit::dateChanged, this, &VisitorsPage::reloadVisits);

    auto* listBar = new QHBoxLayout;
    listBar->addWidget(m_listDay);
    listBar->addStretch();
    listBar->addWidget(remove);
    auto* left = new QVBoxLayout;
    left->addWidget(m_grid, 1);
    left->addWidget(form);
    auto* right = new QVBoxLayout;
    right->addLayout(listBar);
    right->addWidget(m_visits);
    auto* layout = new QHBoxLayout(this);
    layout->addLayout(left, 2);
    layout->addLayout(right, 3);

    showNowInFields();
    m_listDay->setDate(m_shownNow.date());
    retranslate();
    reload();
}

QDateTime VisitorsPage::now() const
{
    return m_services.clock->now();
}

void VisitorsPage::showNowInFields()
{
    const QDateTime at = now();
    m_shownNow = QDateTime(at.date(), QTime(at.time().hour(), at.time().minute()));
    m_date->setDate(m_shownNow.date());
    m_time->setTime(m_shownNow.time());
}

QDateTime VisitorsPage::visitMoment() const
{
    const QDateTime typed(m_date->date(), m_time->time());
    // Fields left as they were filled: the page may have been open for hours since.
    if (typed == m_shownNow)
        return now();
    return typed;
}

void VisitorsPage::fillCombo(QComboBox* combo, const QList<std::pair<int, QString>>& entries)
{
    const QVariant current = combo->currentData();
    combo->clear();
    for (const auto& [number, name] : entries)
        combo->addItem(QString::number(number) + u" - "_s + name, number);
    const int at = combo->findData(current);
    if (at >= 0)
        combo->setCurrentIndex(at);
}

void VisitorsPage::reload()
{
    const UserRepository users(*m_services.db);
    // Visitor cards: users of type 1; the person visited: any of the personnel.
    const auto people = [&](qint32 userType, bool numberedOnly) {
        QList<std::pair<int, QString>> entries;
        for (const UserRow& user : users.listOfType(userType, numberedOnly))
            entries.append({ user.id, PersonName::join(user.name, user.surname) });
        return entries;
    };
    fillCombo(m_card, people(1, true));
    fillCombo(m_visited, people(0, false));
    QList<std::pair<int, QString>> groups;
    for (const GroupRepository::Row& group : GroupRepository(*m_services.db).list())
        groups.append({ group.number, group.name.trimmed() });
    fillCombo(m_group, groups);
    reloadVisits();
}

void VisitorsPage::showEvent(QShowEvent* event)
{
    if (QDateTime(m_date->date(), m_time->time()) == m_shownNow)
        showNowInFields();
    reload();
    QWidget::showEvent(event);
}

void VisitorsPage::reloadVisits()
{
    const QList<VisitRow> visits = VisitorRepository(*m_services.db).list(m_listDay->date());
    m_visits->clearContents();
    m_visits->setRowCount(int(visits.size()));
    for (int row = 0; row < visits.size(); ++row) {
        const VisitRow& v = visits.at(row);
        const QStringList cells{ QString::number(v.visitNo),
                                 QString::number(v.cardUserId),
                                 QString::number(v.cardId),
                                 v.name,
                                 v.surname,
                                 v.identityNo,
                                 v.plate,
                                 v.date.toString(u"dd/MM/yyyy"_s),
                                 v.time.toString(u"HH:mm"_s),
                                 v.reason,
                                 QString::number(v.groupNo),
                                 QString::number(v.visitedId) };
        for (int column = 0; column < cells.size(); ++column) {
            auto* item = new QTableWidgetItem(cells.at(column));
            if (column == 0)
                item->setData(Qt::UserRole, v.visitNo);
            m_visits->setItem(row, column, item);
        }
    }
    m_visits->resizeColumnsToContents();
}

qint64 VisitorsPage::selectedVisitNo() const
{
    const int row = m_visits->currentRow();
    if (row < 0 || !m_visits->item(row, 0))
        return 0;
    return m_visits->item(row, 0)->data(Qt::UserRole).toLongLong();
}

bool VisitorsPage::registerVisit()
{
    VisitRow visit;
    visit.cardUserId = m_card->currentIndex() >= 0 ? m_card->currentData().toInt() : 0;
    visit.name = m_name->text().trimmed();
    visit.surname = m_surname->text().trimmed();
    visit.identityNo = m_identity->text().trimmed();
    visit.plate = m_plate->text().trimmed();
    visit.visitedId = m_visited->currentIndex() >= 0 ? m_visited->currentData().toInt() : 0;
    visit.reason = m_reason->text().trimmed();
    visit.groupNo = m_group->currentIndex() >= 0 ? m_group->currentData().toInt() : 0;
    const QDateTime at = visitMoment();
    visit.date = at.date();
    visit.time = at.time();
    Message error;
    if (!VisitorRepository(*m_services.db).registerVisit(visit, &error)) {
        MessageBox::warning(this, error);
        return false;
    }
    for (QLineEdit* field : { m_name, m_surname, m_identity, m_plate, m_reason })
        field->clear();
    showNowInFields();
    m_listDay->setDate(visit.date);
    reloadVisits();
    for (int row = 0; row < m_visits->rowCount(); ++row) {
        if (m_visits->item(row, 0)->data(Qt::UserRole).toLongLong() == visit.visitNo)
            m_visits->setCurrentCell(row, 0);
    }
    return true;
}

void VisitorsPage::deleteVisit()
{
    const qint64 visitNo = selectedVisitNo();
    if (visitNo <= 0) {
        MessageBox::warning(this, Message(u"Kayıt Bulunamadı..."_s));
        return;
    }
    if (MessageBox::question(this, Message(u"Bu kaydı silmek istiyor musunuz?"_s)) != QMessageBox::Yes)
        return;
    if (!checkAdministratorRights(*m_services.session, *m_services.op))
        return;
    Message error;
    if (!VisitorRepository(*m_services.db).remove(visitNo, &error)) {
        MessageBox::warning(this, error);
        return;
    }
    reloadVisits();
}

void VisitorsPage::retranslate()
{
    m_grid->retranslate();
    QStringList headers;
    for (const QString& column : visitColumns)
        headers << Translate(columnHeading(column));
    m_visits->setHorizontalHeaderLabels(headers);
}
