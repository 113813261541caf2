#include "ui/reports/ReportOutput.h"

#include "reports/ReportPainter.h"
#include "reports/ReportRowSource.h"
#include "store/Translate.h"
#include "ui/common/FileDialog.h"
#include "ui/common/MessageBox.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QPageLayout>
#include <QPrintPreviewDialog>
#include <QPrinter>

using namespace Qt::StringLiterals;

namespace {

// The wait pointer for as long as a report is being written.
class WaitCursor
{
public:
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
};

} // namespace

QString ReportOutput::suffix(ReportExport::Format format)
{
    switch (format) {
    case ReportExport::Format::Xlsx:
        return u"xlsx"_s;
    case ReportExport::Format::Csv:
        return u"csv"_s;
    case ReportExport::Format::Pdf:
        return u"pdf"_s;
    }
    return {};
}

QString ReportOutput::fileFilter(ReportExport::Format format)
{
    switch (format) {
    case ReportExport::Format::Xlsx:
        return Translate(u"Excel Dosyaları"_s) + u" (*.xlsx)"_s;
    case ReportExport::Format::Csv:
        return Translate(u"CSV Dosyaları"_s) + u" (*.csv)"_s;
    case ReportExport::Format::Pdf:
        return Translate(u"PDF Dosyaları"_s) + u" (*.pdf)"_s;
    }
    return {};
}

bool ReportOutput::print(QPrinter* printer, const ReportStatement& statement, const QList<QVariantList>& shown,
                         const ReportDocument& document, qint64* rows, QString* error)
{
    ReportRowSource source;
    source.openRows(statement, shown);
    QString why;
    qint64 written = 0;
    bool ok = false;
    {
        WaitCursor wait;
        ok = ReportPainter().paint(printer, source, document, &written, &why);
    }
    if (rows)
        *rows = written;
    if (error)
        *error = why;
    if (!ok)
        qWarning().noquote() << "report printing:" << why;
    return ok;
}

QPrintPreviewDialog* ReportOutput::preview(QWidget* parent, const ReportStatement& statement,
                                           const QList<QVariantList>& shown, const ReportDocument& document)
{
    auto* printer = new QPrinter(QPrinter::HighResolution);
    printer->setPageSize(QPageSize(QPageSize::A4));
    printer->setPageOrientation(ReportPainter::wantsLandscape(document) ? QPageLayout::Landscape
                                                                        : QPageLayout::Portrait);
    printer->setDocName(document.title);
    auto* dialog = new QPrintPreviewDialog(printer, parent);
    dialog->setObjectName(u"dlgPrintPreview"_s);
    dialog->setWindowTitle(document.title);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    // The printer lives as long as the dialog that shows it.
    QObject::connect(dialog, &QObject::destroyed, dialog, [printer] { delete printer; });
    // The preview paints again whenever the page set-up changes, always the same rows.
    QObject::connect(dialog, &QPrintPreviewDialog::paintRequested, dialog,
                     [statement, shown, document](QPrinter* target) { print(target, statement, shown, document); });
    dialog->resize(900, 700);
    dialog->open();
    return dialog;
}

bool ReportOutput::exportFile(QWidget* parent, ReportExport::Format format, const ReportStatement& statement,
                              const QList<QVariantList>& shown, const ReportDocument& document, const QString& folder)
{
    // The title names the file; a slash in a translated title must not make a folder of it.
    QString name = document.title;
    for (QChar& c : name) {
        if (c == u'/' || c == u'\\' || c == u':')
            c = u'-';
    }
    const QString start = QDir(folder).filePath(name + u'.' + suffix(format));
    QString path = FileDialog::getSaveFileName(parent, Translate(u"Raporu Kaydet"_s), start, fileFilter(format));
    if (path.trimmed().isEmpty())
        return false;
    if (QFileInfo(path).suffix().isEmpty())
        path += u'.' + suffix(format);

    ReportExport::Outcome outcome;
    {
        WaitCursor wait;
        ReportRowSource source;
        source.openRows(statement, shown);
        outcome = ReportExport::write(format, source, document, path);
    }
    if (!outcome.ok) {
        qWarning().noquote() << "report export:" << outcome.error;
        MessageBox::warning(parent, Message(u"Rapor dosyaya yazılamadı!"_s).newLine().value(outcome.error));
        return false;
    }
    MessageBox::information(parent,
                            Message(u"Rapor dosyaya yazıldı."_s)
                                .newLine()
                                .value(QDir::toNativeSeparators(path))
                                .newLine()
                                .add(u"Kayıt Sayısı"_s)
                                .value(u": "_s + QString::number(outcome.rows)));
    return true;
}
