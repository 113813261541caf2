#include "ExportReader.h"

#include <QDebug>
#include <QJsonDocument>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace {

const char* kDumpXlsx = R"PY(
import json, sys, datetime, openpyxl
wb = openpyxl.load_workbook(sys.argv[1])
ws = wb.worksheets[0]
cells, formats = [], {}
for row in ws.iter_rows():
    values = []
    for c in row:
        v = c.value
        if isinstance(v, datetime.datetime):
            v = v.isoformat(sep=' ')
            formats[c.coordinate] = c.number_format
        values.append(v)
    cells.append(values)
print(json.dumps({"sheets": len(wb.worksheets), "merged": [str(r) for r in ws.merged_cells.ranges],
                  "cells": cells, "formats": formats}))
)PY";

} // namespace

QJsonObject ExportReader::xlsx(const QString& path)
{
    QProcess p;
    p.start(u"/usr/bin/python3"_s, { u"-c"_s, QString::fromUtf8(kDumpXlsx), path });
    if (!p.waitForFinished(60000) || p.exitCode() != 0) {
        qWarning() << p.readAllStandardError();
        return {};
    }
    return QJsonDocument::fromJson(p.readAllStandardOutput()).object();
}

QString ExportReader::pdfText(const QString& path)
{
    QProcess p;
    p.start(u"pdftotext"_s, { u"-layout"_s, path, u"-"_s });
    if (!p.waitForFinished(60000) || p.exitCode() != 0)
        return {};
    return QString::fromUtf8(p.readAllStandardOutput());
}
