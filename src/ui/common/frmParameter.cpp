#include "ui/common/frmParameter.h"

#include "store/SearchFilter.h"
#include "store/Translate.h"
#include "ui/common/Caption.h"
#include "ui/common/MessageBox.h"
#include "ui/common/SearchProxyModel.h"

#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

frmParameter::frmParameter(QAbstractItemModel* list, const QString& title, QWidget* parent)
    : QDialog(parent)
{
    build(list, title);
}

void frmParameter::build(QAbstractItemModel* list, const QString& title)
{
    m_list = list;
    setObjectName(u"frmParameter"_s);
    setCaption(this, title);

    auto* lblFieldName = new QLabel(this);
    lblFieldName->setObjectName(u"lblFieldName"_s);
    setCaption(lblFieldName, u"Field Name:"_s);
    m_column = new QComboBox(this);
    m_column->setObjectName(u"cmbSearchCriter"_s);
    auto* lblValue = new QLabel(this);
    lblValue->setObjectName(u"lblValue"_s);
    setCaption(lblValue, u"Value:"_s);
    m_text = new QLineEdit(this);
    m_text->setObjectName(u"txtSearchText"_s);

    m_proxy = new SearchProxyModel(this);
    m_proxy->setSourceModel(m_list);
    m_grid = new QTableView(this);
    m_grid->setObjectName(u"grdSearch"_s);
    m_grid->setModel(m_proxy);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->verticalHeader()->setVisible(false);
    m_grid->horizontalHeader()->setStretchLastSection(true);
    m_position = new QLabel(this);
    m_position->setObjectName(u"datSearch"_s);
    m_position->setFrameShape(QFrame::Panel);
    m_position->setFrameShadow(QFrame::Sunken);

    auto* cmdSelect = new QPushButton(this);
    cmdSelect->setObjectName(u"cmdSelect"_s);
    setCaption(cmdSelect, u"Seç"_s);
    auto* cmdClose = new QPushButton(this);
    cmdClose->setObjectName(u"cmdClose"_s);
    setCaption(cmdClose, u"Kapat"_s);
    // Enter belongs to the search text, not to a default button.
    cmdSelect->setAutoDefault(false);
    cmdClose->setAutoDefault(false);

    auto* criteria = new QGridLayout;
    criteria->addWidget(lblFieldName, 0, 0);
    criteria->addWidget(m_column, 0, 1);
    criteria->addWidget(lblValue, 1, 0);
    criteria->addWidget(m_text, 1, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdSelect);
    buttons->addWidget(cmdClose);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(criteria);
    layout->addWidget(m_grid, 1);
    layout->addWidget(m_position);
    layout->addLayout(buttons);
    resize(560, 420);

    fillColumns();
    if (m_proxy->rowCount() > 0)
        m_grid->setCurrentIndex(m_proxy->index(0, 0));
    showPosition();

    connect(m_text, &QLineEdit::textChanged, this, &frmParameter::filter);
    connect(m_text, &QLineEdit::returnPressed, this, &frmParameter::find);
    connect(m_column, &QComboBox::currentIndexChanged, this, &frmParameter::filter);
    connect(cmdSelect, &QPushButton::clicked, this, &frmParameter::select);
    connect(cmdClose, &QPushButton::clicked, this, &frmParameter::reject);
    connect(m_grid, &QTableView::doubleClicked, this, &frmParameter::select);
    connect(m_grid->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &frmParameter::showPosition);
}

void frmParameter::fillColumns()
{
    // The entries are the columns in order, so the choice is kept by its position.
    const int chosen = m_column->currentIndex();
    QSignalBlocker block(m_column);
    m_column->clear();
    for (int column = 0; column < m_list->columnCount(); ++column) {
        const QString name = m_list->headerData(column, Qt::Horizontal).toString();
        m_column->addItem(Translate(name));
    }
    m_column->setCurrentIndex(chosen >= 0 && chosen < m_column->count() ? chosen : 0);
    m_proxy->headerDataChanged(Qt::Horizontal, 0, m_list->columnCount() - 1);
    // Titles are read whole; widths come from the titles alone, so a long list costs nothing.
    QHeaderView* header = m_grid->horizontalHeader();
    for (int column = 0; column + 1 < m_list->columnCount(); ++column)
        header->resizeSection(column, qMax(header->sectionSize(column), header->sectionSizeHint(column)));
}

void frmParameter::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange && m_column)
        fillColumns();
    QDialog::changeEvent(event);
}

QString frmParameter::searchColumn() const
{
    if (!m_column || m_column->currentIndex() < 0)
        return QString();
    // The list shows translated names; the column is found by its Turkish name.
    return ToTurkish(m_column->currentText());
}

int frmParameter::columnIndex(const QString& turkishName) const
{
    if (turkishName.isEmpty())
        return -1;
    for (int column = 0; column < m_list->columnCount(); ++column) {
        if (m_list->headerData(column, Qt::Horizontal).toString() == turkishName)
            return column;
    }
    return -1;
}

int frmParameter::visibleRowCount() const
{
    return m_proxy->rowCount();
}

bool frmParameter::selectValue(const QString& column, const QVariant& value)
{
    const int index = columnIndex(column);
    for (int row = 0; index >= 0 && row < m_proxy->rowCount(); ++row) {
        if (m_proxy->index(row, index).data(Qt::EditRole) == value) {
            m_grid->setCurrentIndex(m_proxy->index(row, 0));
            return true;
        }
    }
    return false;
}

void frmParameter::filter()
{
    const QString column = searchColumn();
    const SearchFilter::Typing typing = SearchFilter::whileTyping(column, m_text->text());
    switch (typing.action) {
    case SearchFilter::TypingAction::RemoveFilter:
        m_proxy->clearCriterion();
        break;
    case SearchFilter::TypingAction::KeepFilter:
        break;
    case SearchFilter::TypingAction::SetFilter:
        m_proxy->setCriterion(columnIndex(column), typing.criterion);
        break;
    }
    if (m_proxy->rowCount() > 0 && !m_grid->currentIndex().isValid())
        m_grid->setCurrentIndex(m_proxy->index(0, 0));
    showPosition();
}

void frmParameter::find()
{
    const SearchFilter::Find request = SearchFilter::onEnter(m_text->text());
    if (!request.ok) {
        MessageBox::warning(this, request.message);
        return;
    }
    const int column = columnIndex(searchColumn());
    QList<QVariant> values;
    for (int row = 0; column >= 0 && row < m_proxy->rowCount(); ++row)
        values.append(m_proxy->index(row, column).data(Qt::EditRole));
    const int row = SearchFilter::findRow(request.criterion, values);
    if (row < 0) {
        MessageBox::information(this, SearchFilter::notFoundMessage());
        return;
    }
    m_grid->setCurrentIndex(m_proxy->index(row, 0));
}

void frmParameter::select()
{
    const QModelIndex current = m_grid->currentIndex();
    if (!current.isValid())
        return;
    const QModelIndex source = m_proxy->mapToSource(current);
    m_selected.clear();
    for (int column = 0; column < m_list->columnCount(); ++column)
        m_selected.append(m_list->index(source.row(), column).data(Qt::EditRole));
    accept();
}

QVariant frmParameter::selectedValue(const QString& column) const
{
    const int index = columnIndex(column);
    return index >= 0 && index < m_selected.size() ? m_selected.at(index) : QVariant();
}

void frmParameter::showPosition()
{
    const QModelIndex current = m_grid->currentIndex();
    setCaption(m_position, u"Kayıt:"_s, current.isValid() ? u" "_s + QString::number(current.row() + 1) : QString());
}
