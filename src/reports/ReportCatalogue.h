#pragma once

#include "protocol/Direction.h"
#include "protocol/PassageCode.h"
#include "reports/ReportColumn.h"
#include "reports/ReportFilter.h"
#include "reports/ReportKind.h"

#include <QList>
#include <QString>
#include <optional>

// What the station knows about each report: its names, titles, columns and the captions of its
// choices. Texts are Turkish; they are translated where they are shown.
class ReportCatalogue
{
public:
    static QList<ReportKind> all();
    // The word of the command line ("access", "came", ...).
    static QString cliName(ReportKind kind);
    static std::optional<ReportKind> fromCliName(const QString& name);
    // The window's title ("Personel Raporları", ...).
    static QString formTitle(ReportKind kind);
    // The report's own name ("Personel Raporu", "Gelen Personel Raporu", ...).
    static QString reportName(ReportKind kind);
    // The printed title: the report's name, for the access report followed by " - " and the
    // chosen result's caption (each part translated).
    static QString printTitle(ReportKind kind, const ReportFilter& filter);
    // The spreadsheet title: the report's name and, with a zone chosen, "Global Bölge: name".
    static QString sheetTitle(ReportKind kind, const QString& zoneName);
    // The cells the spreadsheet title is merged over.
    static QString titleRange(ReportKind kind);

    // The columns of the report before any field choice; a chosen zone adds its name column to
    // the passage reports.
    static QList<ReportColumn> columns(ReportKind kind, bool withZone);

    // Result filter captions as the options show them ("Antibassback İhlalleri" spelled so) and
    // as the printed title shows them ("Antipassback İhlalleri").
    static QString resultCaption(ReportFilter::Result result);
    static QString resultTitle(ReportFilter::Result result);
    // The captions of the door operations; empty for other codes.
    static QString operationCaption(PassageCode code);
    // Turkish texts of stored values; the row source hands them out translated.
    static QString directionText(Direction direction);
    // What the panel decided for a passage; empty for door operations and unknown codes.
    static QString resultText(PassageCode code);
    // Who carried out a door operation: the operator, the exit button or the weekly program.
    static QString performerText(PassageCode code);
    static QString presenceText(bool inside);
    static QString recordCountText();
};
