#include "ui/users/frmLookupTable.h"

#include "store/Operator.h"
#include "store/OperatorSession.h"
#include "store/RightsCheck.h"
#include "store/Translate.h"
#include "ui/common/Caption.h"
#include "ui/common/MessageBox.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
// The number a row had when it was read; the key cell may have been edited since.
constexpr int StoredKeyRole = Qt::UserRole + 1;

QPushButton* button(QWidget* parent, const QString& name)
{
    auto* b = new QPushButton(parent);
    b->setObjectName(name);
    return b;
}
} // namespace

frmLookupTable::frmLookupTable(LookupTable::Kind kind, Database& db, const OperatorSession& session, Operator& op,
                               QWidget* parent)
    : QDialog(parent)
    , m_table(kind)
    , m_db(db)
    , m_session(session)
    , m_op(op)
{
    setObjectName(m_table.formName());
    setCaption(this, m_table.formTitle());

    m_model = new QStandardItemModel(0, 2, this);
    m_grid = new QTableView(this);
    m_grid->setObjectName(u"grdRecords"_s);
    m_grid->setModel(m_model);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->horizontalHeader()->setStretchLastSection(true);
    m_grid->verticalHeader()->setVisible(false);
    captionHeaders();

    m_position = new QLabel(this);
    m_position->setObjectName(u"datPrimaryRS"_s);
    m_position->setFrameShape(QFrame::Panel);
    m_position->setFrameShadow(QFrame::Sunken);

    m_add = button(this, u"cmdAdd"_s);
    setCaption(m_add, u"Yeni"_s);
    m_update = button(this, u"cmdUpdate"_s);
    setCaption(m_update, u"Güncelle"_s);
    m_delete = button(this, u"cmdDelete"_s);
    setCaption(m_delete, u"Sil"_s);
    m_refresh = button(this, u"cmdRefresh"_s);
    setCaption(m_refresh, u"Yenile"_s);
    m_close = button(this, u"cmdClose"_s);
    setCaption(m_close, u"Kapat"_s);

    auto* buttons = new QHBoxLayout;
    for (QPushButton* b : { m_add, m_update, m_delete, m_refresh, m_close })
        buttons->addWidget(b);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_grid, 1);
    layout->addWidget(m_position);
    layout->addLayout(buttons);
    resize(420, 380);

    connect(m_add, &QPushButton::clicked, this, &frmLookupTable::add);
    connect(m_update, &QPushButton::clicked, this, &frmLookupTable::update);
    connect(m_delete, &QPushButton::clicked, this, &frmLookupTable::remove);
    connect(m_refresh, &QPushButton::clicked, this, &frmLookupTable::reload);
    connect(m_close, &QPushButton::clicked, this, &frmLookupTable::close);
    connect(m_model, &QStandardItemModel::itemChanged, this, [this](QStandardItem* item) {
        if (!m_filling && item->row() != m_newRow)
            m_changed.insert(item->row());
    });
    connect(m_grid->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &frmLookupTable::showPosition);

    reload();
}

int frmLookupTable::currentRow() const
{
    const QModelIndex current = m_grid->currentIndex();
    return current.isValid() ? current.row() : -1;
}

void frmLookupTable::captionHeaders()
{
    m_model->setHorizontalHeaderLabels({ Translate(m_table.keyColumn()), Translate(m_table.nameColumn()) });
}

void frmLookupTable::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        captionHeaders();
        showPosition();
    }
    QDialog::changeEvent(event);
}

void frmLookupTable::reload()
{
    QString error;
    const QList<LookupTable::Row> rows = m_table.rows(m_db, &error);
    if (!error.isEmpty())
        qWarning().noquote() << m_table.tableName() << error;
    m_filling = true;
    m_model->removeRows(0, m_model->rowCount());
    for (const LookupTable::Row& row : rows) {
        auto* key = new QStandardItem(QString::number(row.key));
        key->setData(row.key, StoredKeyRole);
        m_model->appendRow({ key, new QStandardItem(row.name) });
    }
    m_filling = false;
    m_changed.clear();
    m_newRow = -1;
    selectRow(m_model->rowCount() > 0 ? 0 : -1);
}

void frmLookupTable::selectRow(int row)
{
    if (row < 0 || row >= m_model->rowCount()) {
        m_grid->setCurrentIndex(QModelIndex());
        showPosition();
        return;
    }
    m_grid->setCurrentIndex(m_model->index(row, 1));
    showPosition();
}

void frmLookupTable::selectKey(int key)
{
    for (int row = 0; row < m_model->rowCount(); ++row) {
        if (m_model->item(row, 0)->data(StoredKeyRole).toInt() == key) {
            selectRow(row);
            return;
        }
    }
}

void frmLookupTable::showPosition()
{
    const int row = currentRow();
    setCaption(m_position, u"Kayıt:"_s, row < 0 ? QString() : u" "_s + QString::number(row + 1));
}

void frmLookupTable::lockOtherRows(bool locked)
{
    m_filling = true;
    for (int row = 0; row < m_model->rowCount(); ++row) {
        if (row == m_newRow)
            continue;
        for (int column = 0; column < 2; ++column) {
            QStandardItem* item = m_model->item(row, column);
            item->setEnabled(!locked);
        }
    }
    m_filling = false;
}

void frmLookupTable::add()
{
    if (isAdding()) {
        // Second press: the new row is given up.
        m_filling = true;
        m_model->removeRow(m_newRow);
        m_filling = false;
        endAdding();
        selectRow(m_model->rowCount() - 1);
        return;
    }
    if (!checkAdministratorRights(m_session, m_op))
        return;
    m_filling = true;
    m_model->appendRow({ new QStandardItem(QString::number(m_table.nextFreeKey(m_db))), new QStandardItem() });
    m_filling = false;
    m_newRow = m_model->rowCount() - 1;
    lockOtherRows(true);
    setCaption(m_add, u"Vazgeç"_s);
    for (QPushButton* b : { m_delete, m_refresh, m_close })
        b->setEnabled(false);
    selectRow(m_newRow);
    m_grid->edit(m_model->index(m_newRow, 1));
}

void frmLookupTable::endAdding()
{
    m_newRow = -1;
    lockOtherRows(false);
    setCaption(m_add, u"Yeni"_s);
    for (QPushButton* b : { m_delete, m_refresh, m_close })
        b->setEnabled(true);
}

void frmLookupTable::update()
{
    if (!checkAdministratorRights(m_session, m_op))
        return;
    // An editor still open holds the last typed text: taking the focus from it hands it over.
    if (QWidget* editor = m_grid->focusWidget(); editor && editor != m_grid)
        m_grid->setFocus();

    if (isAdding()) {
        bool numeric = false;
        const int key = m_model->item(m_newRow, 0)->text().trimmed().toInt(&numeric);
        const LookupTable::Result result = m_table.add(m_db, m_model->item(m_newRow, 1)->text(), numeric ? key : 0);
        if (!result.ok) {
            MessageBox::warning(this, result.message);
            return;
        }
        endAdding();
        reload();
        selectKey(result.key);
        return;
    }

    int keep = -1;
    const QList<int> rows(m_changed.cbegin(), m_changed.cend());
    for (int row : rows) {
        const int storedKey = m_model->item(row, 0)->data(StoredKeyRole).toInt();
        bool numeric = false;
        const int newKey = m_model->item(row, 0)->text().trimmed().toInt(&numeric);
        const LookupTable::Result result
            = m_table.update(m_db, storedKey, numeric ? newKey : storedKey, m_model->item(row, 1)->text());
        if (!result.ok) {
            MessageBox::warning(this, result.message);
            return;
        }
        m_changed.remove(row);
        if (row == currentRow())
            keep = result.key;
    }
    if (!rows.isEmpty()) {
        const int current = currentRow();
        const int currentKey
            = keep >= 0 ? keep : (current >= 0 ? m_model->item(current, 0)->data(StoredKeyRole).toInt() : -1);
        reload();
        selectKey(currentKey);
    }
}

void frmLookupTable::remove()
{
    if (!checkAdministratorRights(m_session, m_op))
        return;
    const int row = currentRow();
    if (row < 0)
        return;
    if (MessageBox::question(this, Message(u"Bu kaydı silmek istiyor musunuz?"_s)) != QMessageBox::Yes)
        return;
    const LookupTable::Result result = m_table.remove(m_db, m_model->item(row, 0)->data(StoredKeyRole).toInt());
    if (!result.ok) {
        MessageBox::warning(this, result.message);
        return;
    }
    reload();
    selectRow(LookupTable::rowAfterDelete(row, m_model->rowCount()));
}
