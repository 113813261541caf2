#pragma once

#include <QJsonObject>
#include <QString>

// Reads written report files back with tools that share no code with the writers.
class ExportReader
{
public:
    // The first sheet of an .xlsx read by openpyxl, as JSON: "sheets" (how many), "merged"
    // (ranges), "cells" (one array per row, dates as ISO text) and "formats" (the number format
    // of each cell holding a date, by cell name). Empty when the file cannot be read.
    static QJsonObject xlsx(const QString& path);
    // The PDF's text as pdftotext lays it out; empty when it cannot be read.
    static QString pdfText(const QString& path);
};
