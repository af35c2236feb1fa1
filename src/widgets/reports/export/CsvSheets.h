#pragma once

#include "widgets/reports/export/ExportSheet.h"

#include <QStringList>

namespace Widgets {

class DataExportProgress;

/// Data sources as CSV files: UTF-8 with its mark, semicolons, decimal points, times as ISO 8601
/// with their offset from UTC. A text that a spreadsheet would run as a formula gets an apostrophe
/// before it. Writing thread.
namespace CsvSheets {

/// One file for each sheet: `file` itself, or "name - sheet.csv" beside it where there are several.
QStringList filesOf(const QString &file, const ExportSheets &sheets);
/// All of the files appear, whole, or none of them does; what was there before stays then. Returns
/// an error for operators.
QString write(const QStringList &files, const ExportSheets &sheets, DataExportProgress &progress);

} // namespace CsvSheets

} // namespace Widgets
