#include "ui/reports/ReportWindow.h"

#include "reports/ReportBuilder.h"
#include "reports/ReportCatalogue.h"
#include "reports/ReportCount.h"
#include "reports/ReportRowSource.h"
#include "store/Clock.h"
#include "store/Database.h"
#include "store/Translate.h"
#include "ui/common/Caption.h"
#include "ui/common/MessageBox.h"
#include "ui/reports/ReportDatabaseBox.h"
#include "ui/reports/ReportGridModel.h"
#include "ui/reports/ReportOutput.h"

#include <QApplication>
#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSet>
#include <QTableView>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int KeyRole = Qt::UserRole;
constexpr int CaptionRole = Qt::UserRole + 1;

QPushButton* button(QWidget* parent, const QString& name, const QString& turkish)
{
    auto* b = new QPushButton(parent);
    b->setObjectName(name);
    setCaption(b, turkish);
    b->setAutoDefault(false);
    return b;
}

} // namespace

ReportWindow::ReportWindow(const QString& objectName, const QString& title, const ReportContext& context,
                           const QString& databaseBoxName, QWidget* parent)
    : QWidget(parent, Qt::Window)
    , m_context(context)
{
    setObjectName(objectName);
    setCaption(this, title);

    m_databaseBox = new ReportDatabaseBox(databaseBoxName, context.backupFolder, this);
    m_fields = new QListWidget(this);
    m_fields->setObjectName(u"lstFields"_s);
    m_fields->setMinimumWidth(150);
    auto* lblFields = new QLabel(this);
    lblFields->setObjectName(u"lblFields"_s);
    setCaption(lblFields, u"Aktarılacak Alanlar"_s);

    m_model = new ReportGridModel(this);
    m_grid = new QTableView(this);
    m_grid->setObjectName(u"grdReports"_s);
    m_grid->setModel(m_model);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->setAlternatingRowColors(true);
    m_grid->verticalHeader()->setDefaultSectionSize(m_grid->fontMetrics().height() + 6);
    // A stretched last column (the date) would be cut short when the others are wide.
    m_grid->horizontalHeader()->setStretchLastSection(false);

    m_countLabel = new QLabel(this);
    m_countLabel->setObjectName(u"lblCount"_s);
    setCaption(m_countLabel, u"Kayıt Sayısı"_s, u":"_s);
    m_recordCount = new QLabel(this);
    m_recordCount->setObjectName(u"lblRecordCount"_s);
    m_recordCount->setMinimumWidth(60);
    m_recordCount->setText(u"0"_s);

    QPushButton* cmdMakeReport = button(this, u"cmdMakeReport"_s, u"Rapor Oluştur"_s);
    QPushButton* cmdPrint = button(this, u"cmdPrint"_s, u"Yazdır"_s);
    QPushButton* cmdExportExcel = button(this, u"cmdExportExcel"_s, u"Excel Dosyası"_s);
    QPushButton* cmdExportPdf = button(this, u"cmdExportPdf"_s, u"PDF Dosyası"_s);
    QPushButton* cmdExportCsv = button(this, u"cmdExportCsv"_s, u"CSV Dosyası"_s);
    QPushButton* cmdClose = button(this, u"cmdClose"_s, u"Kapat"_s);
    cmdMakeReport->setDefault(true);

    m_filters = new QGridLayout;
    auto* side = new QVBoxLayout;
    side->addWidget(m_databaseBox);
    side->addWidget(lblFields);
    side->addWidget(m_fields, 1);
    auto* top = new QHBoxLayout;
    top->addLayout(m_filters, 1);
    top->addLayout(side);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_countLabel);
    bottom->addWidget(m_recordCount);
    bottom->addStretch();
    for (QPushButton* b : { cmdMakeReport, cmdPrint, cmdExportExcel, cmdExportPdf, cmdExportCsv, cmdClose })
        bottom->addWidget(b);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_grid, 1);
    layout->addLayout(bottom);

    connect(cmdMakeReport, &QPushButton::clicked, this, &ReportWindow::makeReport);
    connect(cmdPrint, &QPushButton::clicked, this, &ReportWindow::print);
    connect(cmdExportExcel, &QPushButton::clicked, this, [this] { exportAs(ReportExport::Format::Xlsx); });
    connect(cmdExportPdf, &QPushButton::clicked, this, [this] { exportAs(ReportExport::Format::Pdf); });
    connect(cmdExportCsv, &QPushButton::clicked, this, [this] { exportAs(ReportExport::Format::Csv); });
    connect(cmdClose, &QPushButton::clicked, this, &ReportWindow::close);
    resize(1100, 760);
}

ReportWindow::~ReportWindow()
{
    // The grid's rows are read over a connection of their own; let it go before the backup.
    m_model->clear();
}

void ReportWindow::addFilter(QWidget* box, int row, int column, int rowSpan, int columnSpan)
{
    m_filters->addWidget(box, row, column, rowSpan, columnSpan);
}

void ReportWindow::reload()
{
    if (!m_context.db)
        return;
    reloadLists(*m_context.db);
    // The fields offered are those of the report the choices make now.
    if (!m_haveReport || m_statement.kind != kind())
        fillFields(ReportCatalogue::columns(kind(), false));
}

void ReportWindow::reportShown(const ReportFilter&) { }

ReportFilter ReportWindow::filter() const
{
    ReportFilter f;
    f.clientStation = m_context.clientStation;
    f.watchedPanels = m_context.watchedPanels;
    fillFilter(f);
    f.fields = chosenFields();
    return f;
}

void ReportWindow::clearReport()
{
    m_counting.disconnect(this);
    m_model->clear();
    m_count = 0;
    m_recordCount->setText(u"0"_s);
    m_haveReport = false;
}

void ReportWindow::makeReport()
{
    if (!m_context.db)
        return;
    const ReportFilter f = filter();
    // The backup (or, when it fails, the main database) is chosen before anything is read.
    const Database& db = m_databaseBox->choose(*m_context.db);
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const ReportStatement statement = ReportBuilder::build(db, kind(), f);
    QApplication::restoreOverrideCursor();
    if (statement.isRefused()) {
        clearReport();
        MessageBox::warning(this, statement.refusal);
        return;
    }
    QApplication::setOverrideCursor(Qt::WaitCursor);
    QString error;
    auto source = std::make_unique<ReportRowSource>();
    // The grid translates as it shows, so a change of language reaches the rows too.
    source->keepTurkishTexts(true);
    bool ok = source->open(db, statement, &error);
    if (ok) {
        m_statement = statement;
        m_filter = f;
        m_haveReport = true;
        m_model->setSource(std::move(source));
        startCount(db, statement);
        fillFields(statement.columns);
        m_grid->resizeColumnsToContents();
    }
    QApplication::restoreOverrideCursor();
    if (!ok) {
        qWarning().noquote() << "report:" << error;
        clearReport();
        MessageBox::warning(this, Message(u"Rapor oluşturulamadı!"_s).newLine().value(error));
        return;
    }
    reportShown(f);
}

bool ReportWindow::ensureReport()
{
    if (!m_haveReport)
        makeReport();
    return m_haveReport;
}

void ReportWindow::startCount(const Database& db, const ReportStatement& statement)
{
    // The first rows are shown now; the count follows when the database has made it.
    m_counting.disconnect(this);
    m_count = -1;
    m_recordCount->setText(u"..."_s);
    connect(&m_counting, &QFutureWatcher<qint64>::finished, this, &ReportWindow::showCount);
    m_counting.setFuture(ReportCount::start(db, statement));
}

void ReportWindow::showCount()
{
    m_counting.disconnect(this);
    const qint64 count = m_counting.future().isValid() ? m_counting.future().result() : -1;
    m_count = qMax<qint64>(count, 0);
    m_recordCount->setText(count >= 0 ? QString::number(count) : u"?"_s);
}

qint64 ReportWindow::recordCount()
{
    if (m_count < 0) {
        m_counting.waitForFinished();
        showCount();
    }
    return m_count;
}

ReportDocument ReportWindow::document()
{
    ReportFilter f = m_filter;
    // The fields ticked now, even if ticked after the report was made.
    f.fields = chosenFields();
    ReportDocument doc = ReportExport::document(m_statement.kind, f, m_statement, m_context.clock->now());
    doc.expectedRows = m_model->rowCount();
    return doc;
}

bool ReportWindow::readWholeReport()
{
    if (!ensureReport())
        return false;
    // What goes out is what the grid shows: the rest of its rows first, from the reading it
    // started, and the count becomes theirs.
    QApplication::setOverrideCursor(Qt::WaitCursor);
    m_model->fetchAll();
    QApplication::restoreOverrideCursor();
    m_counting.disconnect(this);
    m_count = m_model->rowCount();
    m_recordCount->setText(QString::number(m_count));
    return true;
}

void ReportWindow::print()
{
    if (readWholeReport())
        ReportOutput::preview(this, m_statement, m_model->rows(), document());
}

void ReportWindow::exportAs(ReportExport::Format format)
{
    if (readWholeReport())
        ReportOutput::exportFile(this, format, m_statement, m_model->rows(), document(), m_context.backupFolder);
}

void ReportWindow::fillFields(const QList<ReportColumn>& columns)
{
    QSet<QString> cleared;
    for (int row = 0; row < m_fields->count(); ++row) {
        if (m_fields->item(row)->checkState() != Qt::Checked)
            cleared.insert(m_fields->item(row)->data(KeyRole).toString());
    }
    m_fields->clear();
    for (const ReportColumn& column : columns) {
        auto* item = new QListWidgetItem(Translate(column.caption), m_fields);
        item->setData(KeyRole, column.key);
        item->setData(CaptionRole, column.caption);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
        item->setCheckState(cleared.contains(column.key) ? Qt::Unchecked : Qt::Checked);
    }
}

QStringList ReportWindow::chosenFields() const
{
    QStringList keys;
    bool every = true;
    for (int row = 0; row < m_fields->count(); ++row) {
        if (m_fields->item(row)->checkState() == Qt::Checked)
            keys.append(m_fields->item(row)->data(KeyRole).toString());
        else
            every = false;
    }
    // Nothing left out means every column (also those of a zone chosen later).
    return every ? QStringList() : keys;
}

void ReportWindow::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        m_model->retranslate();
        m_grid->resizeColumnsToContents();
        for (int row = 0; row < m_fields->count(); ++row) {
            QListWidgetItem* item = m_fields->item(row);
            item->setText(Translate(item->data(CaptionRole).toString()));
        }
        if (m_context.db)
            reloadLists(*m_context.db);
    }
    QWidget::changeEvent(event);
}
