#include "ui/records/frmUnreadRecords.h"

#include "operations/records/UnreadRecordStore.h"
#include "store/Translate.h"
#include "ui/common/Caption.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

frmUnreadRecords::frmUnreadRecords(Database& db, QWidget* parent)
    : QDialog(parent)
    , m_db(db)
{
    setObjectName(u"frmUnreadRecords"_s);
    setCaption(this, u"Okunamayan Kayıtlar"_s);
    m_table = new QTableWidget(0, 4, this);
    m_table->setObjectName(u"grdUnreadRecords"_s);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->verticalHeader()->hide();
    m_table->horizontalHeader()->setStretchLastSection(true);
    setHeaders();

    auto* cmdClose = new QPushButton(this);
    cmdClose->setObjectName(u"cmdClose"_s);
    setCaption(cmdClose, u"Kapat"_s);
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::accept);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdClose);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_table);
    layout->addLayout(buttons);
    resize(760, 420);
    reload();
}

int frmUnreadRecords::reload()
{
    QString error;
    const QList<UnreadRecordStore::Row> rows = UnreadRecordStore(m_db).rows(0, &error);
    if (!error.isEmpty())
        qWarning().noquote() << "unread records:" << error;
    m_table->setRowCount(static_cast<int>(rows.size()));
    for (int r = 0; r < rows.size(); ++r) {
        const UnreadRecordStore::Row& row = rows.at(r);
        m_table->setItem(r, 0, new QTableWidgetItem(QString::number(row.panel)));
        m_table->setItem(r, 1, new QTableWidgetItem(row.received.toString(u"dd/MM/yyyy HH:mm:ss"_s)));
        auto* reason = new QTableWidgetItem(Translate(row.reason));
        reason->setData(Qt::UserRole, row.reason);
        m_table->setItem(r, 2, reason);
        auto* text = new QTableWidgetItem(row.text);
        text->setTextAlignment(Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter); // raw text reads left to right
        m_table->setItem(r, 3, text);
    }
    m_table->resizeColumnsToContents();
    return m_table->rowCount();
}

void frmUnreadRecords::setHeaders()
{
    m_table->setHorizontalHeaderLabels(
        { Translate(u"Panel"_s), Translate(u"Alınma Zamanı"_s), Translate(u"Neden"_s), Translate(u"Metin"_s) });
}

void frmUnreadRecords::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        setHeaders();
        for (int r = 0; r < m_table->rowCount(); ++r) {
            if (QTableWidgetItem* reason = m_table->item(r, 2))
                reason->setText(Translate(reason->data(Qt::UserRole).toString()));
        }
    }
    QDialog::changeEvent(event);
}
