#include "ui/users/PersonFilterBox.h"

#include "operations/configuration/GroupRepository.h"
#include "operations/users/UserRepository.h"
#include "reports/ReportFilter.h"
#include "store/LookupTable.h"
#include "ui/common/AllChoice.h"
#include "ui/common/Caption.h"
#include "ui/common/frmParameter.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardItemModel>

using namespace Qt::StringLiterals;

namespace {

// The columns the person search offers, in the order of its list.
const QStringList& searchColumns()
{
    static const QStringList columns = { u"ID"_s, u"Kart ID"_s, u"Adi"_s, u"Soyadi"_s, u"TCKimlik"_s };
    return columns;
}

// The numbered personnel, one row each in the columns of searchColumns().
void fillPersons(QStandardItemModel& model, const Database& db)
{
    model.setHorizontalHeaderLabels(searchColumns());
    for (const UserRow& user : UserRepository(db).listOfType(0, true)) {
        QList<QStandardItem*> row;
        for (const QVariant& value : QVariantList{ user.id, user.cardId, user.name, user.surname, user.identityNo }) {
            auto* item = new QStandardItem;
            item->setData(value, Qt::EditRole);
            item->setEditable(false);
            row << item;
        }
        model.appendRow(row);
    }
}

QList<QVariantList> lookupRows(const Database& db, LookupTable::Kind kind)
{
    QList<QVariantList> rows;
    for (const LookupTable::Row& row : LookupTable(kind).rows(db))
        rows.append({ row.key, row.name });
    return rows;
}

} // namespace

PersonFilterBox::PersonFilterBox(int parts, QWidget* parent)
    : QGroupBox(parent)
    , m_parts(parts)
{
    setObjectName(u"frPersonel"_s);
    setCaption(this, u"Personel"_s);
    auto* layout = new QGridLayout(this);
    int row = 0;
    if (parts & Person) {
        m_allPersons = new QCheckBox(this);
        m_allPersons->setObjectName(u"chkAllPersonel"_s);
        setCaption(m_allPersons, u"Tüm Personel"_s);
        m_allPersons->setChecked(true);
        m_criteria = new QComboBox(this);
        m_criteria->setObjectName(u"cmbSearchCriter"_s);
        for (int index = 0; index < searchColumns().size(); ++index) {
            m_criteria->addItem(QString());
            setCaption(m_criteria, index, searchColumns().at(index));
        }
        m_search = new QPushButton(this);
        m_search->setObjectName(u"cmdAra"_s);
        setCaption(m_search, u"Ara"_s);
        m_personNumber = new QLabel(this);
        m_personNumber->setObjectName(u"lblPersonel"_s);
        m_personNumber->setFrameShape(QFrame::Panel);
        m_personNumber->setFrameShadow(QFrame::Sunken);
        m_personNumber->setMinimumWidth(50);
        m_personName = new QLabel(this);
        m_personName->setObjectName(u"lblPersonelAdi"_s);
        m_personName->setFrameShape(QFrame::Panel);
        m_personName->setFrameShadow(QFrame::Sunken);
        layout->addWidget(m_allPersons, row, 0);
        layout->addWidget(m_criteria, row, 1);
        layout->addWidget(m_search, row, 2);
        ++row;
        layout->addWidget(m_personNumber, row, 0);
        layout->addWidget(m_personName, row, 1, 1, 2);
        ++row;
        AllChoice::link(m_allPersons, { m_criteria, m_search, m_personNumber, m_personName });
        connect(m_search, &QPushButton::clicked, this, &PersonFilterBox::searchPerson);
    }
    if (parts & Group)
        m_groups = addList(u"chkAllGroups"_s, u"Tüm Gruplar"_s, u"cmbGroups"_s, row++);
    if (parts & Company)
        m_companies = addList(u"chkAllSirket"_s, u"Tüm Şirketler"_s, u"cmbSirket"_s, row++);
    if (parts & Department)
        m_departments = addList(u"chkAllDepartman"_s, u"Tüm Departmanlar"_s, u"cmbDepartman"_s, row++);
    if (parts & Plate)
        m_plate = addText(u"chkAllPlates"_s, u"Tüm Plakalar"_s, u"txtPlate"_s, row++);
    if (parts & Block)
        m_blocks = addList(u"chkAllBlocks"_s, u"Tüm Bloklar"_s, u"cmbBlok"_s, row++);
    if (parts & Flat)
        m_flat = addText(u"chkAllFlats"_s, u"Tüm Daireler"_s, u"txtDaire"_s, row++);
    layout->setRowStretch(row, 1);
}

QComboBox* PersonFilterBox::addList(const QString& allName, const QString& allCaption, const QString& listName, int row)
{
    auto* all = new QCheckBox(this);
    all->setObjectName(allName);
    setCaption(all, allCaption);
    all->setChecked(true);
    auto* list = new QComboBox(this);
    list->setObjectName(listName);
    list->setMinimumWidth(140);
    auto* layout = static_cast<QGridLayout*>(this->layout());
    layout->addWidget(all, row, 0);
    layout->addWidget(list, row, 1, 1, 2);
    AllChoice::link(all, { list });
    return list;
}

QLineEdit* PersonFilterBox::addText(const QString& allName, const QString& allCaption, const QString& editName, int row)
{
    auto* all = new QCheckBox(this);
    all->setObjectName(allName);
    setCaption(all, allCaption);
    all->setChecked(true);
    auto* edit = new QLineEdit(this);
    edit->setObjectName(editName);
    auto* layout = static_cast<QGridLayout*>(this->layout());
    layout->addWidget(all, row, 0);
    layout->addWidget(edit, row, 1, 1, 2);
    AllChoice::link(all, { edit });
    return edit;
}

void PersonFilterBox::reload(const Database& db)
{
    m_db = &db;
    QString error;
    if (m_groups) {
        QList<QVariantList> rows;
        for (const GroupRepository::Row& group : GroupRepository(db).list(&error))
            rows.append({ group.number, group.name });
        fillList(m_groups, rows);
    }
    if (!error.isEmpty())
        qWarning().noquote() << "group list:" << error;
    if (m_companies)
        fillList(m_companies, lookupRows(db, LookupTable::Kind::Companies));
    if (m_departments)
        fillList(m_departments, lookupRows(db, LookupTable::Kind::Departments));
    if (m_blocks)
        fillList(m_blocks, lookupRows(db, LookupTable::Kind::Blocks));
}

void PersonFilterBox::fillList(QComboBox* list, const QList<QVariantList>& rows)
{
    const QVariant chosen = list->currentData();
    list->clear();
    for (const QVariantList& row : rows)
        list->addItem(row.value(1).toString(), row.value(0).toInt());
    const int index = list->findData(chosen);
    list->setCurrentIndex(index >= 0 ? index : 0);
}

std::optional<int> PersonFilterBox::chosen(const QComboBox* list)
{
    // The list counts only while its "all" box is clear, which enables it.
    if (!list || !list->isEnabledTo(list->parentWidget()) || list->currentIndex() < 0)
        return std::nullopt;
    return list->currentData().toInt();
}

void PersonFilterBox::fill(ReportFilter& filter) const
{
    filter.person = m_allPersons && !m_allPersons->isChecked() ? m_person : 0;
    filter.group = chosen(m_groups);
    filter.company = chosen(m_companies);
    filter.department = chosen(m_departments);
    filter.block = chosen(m_blocks);
    filter.plate.reset();
    if (m_plate && m_plate->isEnabledTo(this))
        filter.plate = m_plate->text();
    filter.flat.reset();
    if (m_flat && m_flat->isEnabledTo(this))
        filter.flat = m_flat->text();
}

void PersonFilterBox::setPerson(int id, const QString& name)
{
    m_person = id;
    if (m_allPersons)
        m_allPersons->setChecked(false);
    if (m_personNumber)
        m_personNumber->setText(id > 0 ? QString::number(id) : QString());
    if (m_personName)
        m_personName->setText(name);
}

void PersonFilterBox::searchPerson()
{
    if (!m_db)
        return;
    QStandardItemModel persons;
    fillPersons(persons, *m_db);
    frmParameter dialog(&persons, u"Kullanıcı Arama"_s, window());
    // The dialog opens on the column chosen here.
    if (auto* criteria = dialog.findChild<QComboBox*>(u"cmbSearchCriter"_s))
        criteria->setCurrentIndex(m_criteria->currentIndex());
    if (dialog.exec() != QDialog::Accepted)
        return;
    const int id = dialog.selectedValue(u"ID"_s).toInt();
    if (id <= 0)
        return;
    const QString name
        = dialog.selectedValue(u"Adi"_s).toString() + u' ' + dialog.selectedValue(u"Soyadi"_s).toString();
    setPerson(id, name.trimmed());
}
