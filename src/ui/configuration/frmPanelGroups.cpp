#include "ui/configuration/frmPanelGroups.h"

#include "operations/configuration/ZoneRepository.h"
#include "store/RightsCheck.h"
#include "store/Translate.h"
#include "ui/common/Caption.h"
#include "ui/common/MessageBox.h"

#include <QDataWidgetMapper>
#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
// The number and name a stored row had when it was read.
constexpr int StoredRole = Qt::UserRole + 1;

const QString kNumberHeader = u"Global Bolge No"_s;
const QString kNameHeader = u"Global Bolge Adi"_s;

QPushButton* button(QWidget* parent, const QString& name, const QString& turkish, const QString& english = {})
{
    auto* b = new QPushButton(parent);
    b->setObjectName(name);
    b->setAutoDefault(false);
    setCaption(b, turkish);
    if (!english.isEmpty())
        setEnglishCaption(b, english);
    return b;
}

QLabel* label(QWidget* parent, const QString& name, const QString& turkish)
{
    auto* l = new QLabel(parent);
    l->setObjectName(name);
    setCaption(l, turkish);
    return l;
}

// The number typed on a row that is not stored yet: 0 when blank, -1 when it is no number.
int typedNumber(const QString& text)
{
    if (text.trimmed().isEmpty())
        return 0;
    bool ok = false;
    const int n = text.trimmed().toInt(&ok);
    return ok ? n : -1;
}
} // namespace

frmPanelGroups::frmPanelGroups(Database& db, const OperatorSession& session, Operator& op, QWidget* parent)
    : QDialog(parent)
    , m_db(db)
    , m_session(session)
    , m_op(op)
{
    setObjectName(u"frmPanelGroups"_s);
    setCaption(this, u"Global Kapı Bölgeleri"_s);

    m_model = new QStandardItemModel(0, 2, this);
    m_grid = new QTableView(this);
    m_grid->setObjectName(u"grdPanelGroups"_s);
    m_grid->setModel(m_model);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->horizontalHeader()->setStretchLastSection(true);
    m_grid->installEventFilter(this);

    m_position = new QLabel(this);
    m_position->setObjectName(u"datGlobalZones"_s);
    m_position->setFrameShape(QFrame::Panel);
    m_position->setFrameShadow(QFrame::Sunken);

    m_number = new QLineEdit(this);
    m_number->setObjectName(u"txtGlobalZoneNo"_s);
    m_name = new QLineEdit(this);
    m_name->setObjectName(u"txtGlobalZoneName"_s);
    m_mapper = new QDataWidgetMapper(this);
    m_mapper->setModel(m_model);
    m_mapper->addMapping(m_number, 0);
    m_mapper->addMapping(m_name, 1);

    auto* fields = new QGridLayout;
    fields->addWidget(label(this, u"lblGlobalZoneNo"_s, u"Global Kapı Bölgesi No:"_s), 0, 0);
    fields->addWidget(m_number, 0, 1);
    fields->addWidget(label(this, u"lblGlobalZoneName"_s, u"Global Kapı Bölgesi Adı:"_s), 1, 0);
    fields->addWidget(m_name, 1, 1);

    QPushButton* update = button(this, u"cmdUpdatePG"_s, u"Kaydet"_s, u"Update"_s);
    QPushButton* refresh = button(this, u"cmdRefreshPG"_s, u"Güncelle"_s, u"Refresh"_s);
    QPushButton* close = button(this, u"cmdClose"_s, u"Kapat"_s);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    for (QPushButton* b : { update, refresh, close })
        buttons->addWidget(b);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_grid, 1);
    layout->addWidget(m_position);
    layout->addLayout(fields);
    layout->addLayout(buttons);
    resize(460, 420);

    connect(update, &QPushButton::clicked, this, &frmPanelGroups::store);
    connect(refresh, &QPushButton::clicked, this, &frmPanelGroups::reload);
    connect(close, &QPushButton::clicked, this, &frmPanelGroups::accept);
    connect(m_model, &QStandardItemModel::itemChanged, this, [this](QStandardItem* item) {
        if (!m_filling && isNewLine(item->row()) && !item->text().trimmed().isEmpty())
            takeNewLine(item->row());
    });
    connect(m_grid->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &frmPanelGroups::showCurrent);

    reload();
}

bool frmPanelGroups::open(QWidget* parent, Database& db, const OperatorSession& session, Operator& op)
{
    frmPanelGroups window(db, session, op, parent);
    window.exec();
    return window.zonesChanged();
}

int frmPanelGroups::currentRow() const
{
    const QModelIndex current = m_grid->currentIndex();
    return current.isValid() ? current.row() : -1;
}

void frmPanelGroups::captionHeaders()
{
    m_model->setHorizontalHeaderLabels({ Translate(kNumberHeader), Translate(kNameHeader) });
    QHeaderView* header = m_grid->horizontalHeader();
    header->resizeSection(0, qMax(header->sectionSize(0), header->sectionSizeHint(0)));
}

void frmPanelGroups::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange && m_model) {
        captionHeaders();
        showCurrent();
    }
    QDialog::changeEvent(event);
}

bool frmPanelGroups::eventFilter(QObject* watched, QEvent* event)
{
    // Delete on the grid deletes the current zone; inside an open editor the key is the editor's.
    if (watched == m_grid && event->type() == QEvent::KeyPress
        && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Delete) {
        removeCurrent();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void frmPanelGroups::reload()
{
    QString error;
    const QList<ZoneRepository::Row> zones = ZoneRepository(m_db).list(&error);
    if (!error.isEmpty())
        qWarning().noquote() << "zone list:" << error;
    m_filling = true;
    m_model->removeRows(0, m_model->rowCount());
    for (const ZoneRepository::Row& zone : zones) {
        auto* number = new QStandardItem(QString::number(zone.number));
        number->setData(zone.number, StoredRole);
        number->setFlags(number->flags() & ~Qt::ItemIsEditable);
        auto* name = new QStandardItem(zone.name);
        name->setData(zone.name, StoredRole);
        m_model->appendRow({ number, name });
        m_model->setVerticalHeaderItem(m_model->rowCount() - 1, new QStandardItem(QString()));
    }
    appendNewLine();
    m_filling = false;
    // The headers are set again after every reading, as the table's own titles would return.
    captionHeaders();
    selectRow(0);
}

void frmPanelGroups::appendNewLine()
{
    m_model->appendRow({ new QStandardItem, new QStandardItem });
    m_model->setVerticalHeaderItem(m_model->rowCount() - 1, new QStandardItem(u"*"_s));
}

bool frmPanelGroups::isNewLine(int row) const
{
    return row >= 0 && row == m_model->rowCount() - 1;
}

bool frmPanelGroups::isStored(int row) const
{
    return row >= 0 && row < m_model->rowCount() && m_model->item(row, 0)->data(StoredRole).isValid();
}

QList<int> frmPanelGroups::pendingNumbers() const
{
    QList<int> numbers;
    for (int row = 0; row + 1 < m_model->rowCount(); ++row) {
        if (!isStored(row))
            numbers << typedNumber(m_model->item(row, 0)->text());
    }
    return numbers;
}

void frmPanelGroups::takeNewLine(int row)
{
    // The last line became a zone of its own: it gets a number and a new last line follows.
    m_filling = true;
    m_model->setVerticalHeaderItem(row, new QStandardItem(u"+"_s));
    QStandardItem* number = m_model->item(row, 0);
    if (number->text().trimmed().isEmpty()) {
        QList<int> taken = pendingNumbers();
        taken.removeOne(0);
        const int free = ZoneRepository(m_db).nextFreeNumber(taken);
        if (free > 0)
            number->setText(QString::number(free));
    }
    appendNewLine();
    m_filling = false;
}

void frmPanelGroups::selectRow(int row)
{
    if (row < 0 || row >= m_model->rowCount()) {
        m_grid->setCurrentIndex(QModelIndex());
        showCurrent();
        return;
    }
    m_grid->setCurrentIndex(m_model->index(row, 1));
    showCurrent();
}

void frmPanelGroups::selectNumber(int number, bool newFirst)
{
    for (const bool storedPass : { !newFirst, newFirst }) {
        for (int row = 0; row + 1 < m_model->rowCount(); ++row) {
            if (isStored(row) != storedPass)
                continue;
            const int shown = storedPass ? m_model->item(row, 0)->data(StoredRole).toInt()
                                         : typedNumber(m_model->item(row, 0)->text());
            if (shown == number) {
                selectRow(row);
                return;
            }
        }
    }
}

void frmPanelGroups::showCurrent()
{
    const int row = currentRow();
    const bool onZone = row >= 0 && !isNewLine(row);
    setCaption(m_position, u"Kayıt:"_s, onZone ? u" "_s + QString::number(row + 1) : QString());
    m_mapper->setCurrentIndex(row);
    // A stored zone keeps its number: what refers to it would otherwise point elsewhere.
    m_number->setReadOnly(isStored(row));
}

void frmPanelGroups::finishEditing()
{
    // An editor still open holds the last typed text: taking the focus from it hands it over.
    if (QWidget* editor = m_grid->focusWidget(); editor && editor != m_grid)
        m_grid->setFocus();
    if (m_number->hasFocus() || m_name->hasFocus())
        m_mapper->submit();
}

void frmPanelGroups::store()
{
    finishEditing();
    QList<ZoneRepository::Row> renamed;
    QList<ZoneRepository::Row> added;
    for (int row = 0; row + 1 < m_model->rowCount(); ++row) {
        const QStandardItem* number = m_model->item(row, 0);
        const QStandardItem* name = m_model->item(row, 1);
        if (isStored(row)) {
            if (name->text() != name->data(StoredRole).toString())
                renamed << ZoneRepository::Row{ number->data(StoredRole).toInt(), name->text() };
        } else if (!number->text().trimmed().isEmpty() || !name->text().trimmed().isEmpty()) {
            added << ZoneRepository::Row{ typedNumber(number->text()), name->text() };
        }
    }
    if (renamed.isEmpty() && added.isEmpty()) {
        reload();
        return;
    }
    if (!checkAdministratorRights(m_session, m_op))
        return;
    const ZoneRepository::Result result = ZoneRepository(m_db).store(renamed, added);
    if (!result.ok) {
        if (!result.error.isEmpty())
            qWarning().noquote() << "zones:" << result.error;
        MessageBox::warning(this, result.message);
        const bool onNewZone = std::any_of(added.cbegin(), added.cend(),
                                           [&](const ZoneRepository::Row& r) { return r.number == result.number; });
        selectNumber(result.number, onNewZone);
        return;
    }
    m_zonesChanged = true;
    const int row = currentRow();
    const int current = isStored(row) ? m_model->item(row, 0)->data(StoredRole).toInt()
                                      : (row >= 0 ? typedNumber(m_model->item(row, 0)->text()) : 0);
    reload();
    selectNumber(current);
}

void frmPanelGroups::removeCurrent()
{
    const int row = currentRow();
    if (row < 0 || isNewLine(row))
        return;
    if (!isStored(row)) {
        // A zone not stored yet is only dropped from the grid.
        m_filling = true;
        m_model->removeRow(row);
        m_filling = false;
        selectRow(row);
        return;
    }
    if (!checkAdministratorRights(m_session, m_op))
        return;
    const int number = m_model->item(row, 0)->data(StoredRole).toInt();
    const ZoneRepository zones(m_db);
    QString error;
    const ZoneRepository::Usage usage = zones.usage(number, &error);
    if (!error.isEmpty())
        qWarning().noquote() << "zone usage:" << error;
    if (!usage.isEmpty()) {
        MessageBox::warning(this, ZoneRepository::inUseMessage(number, usage));
        return;
    }
    if (MessageBox::question(this, ZoneRepository::deleteQuestion(number)) != QMessageBox::Yes)
        return;
    const ZoneRepository::Result result = zones.remove(number);
    if (!result.ok) {
        if (!result.error.isEmpty())
            qWarning().noquote() << "zones:" << result.error;
        MessageBox::warning(this, result.message);
        return;
    }
    m_zonesChanged = true;
    // The other rows keep what was typed in them.
    m_filling = true;
    m_model->removeRow(row);
    m_filling = false;
    selectRow(qMin(row, m_model->rowCount() - 2));
}
