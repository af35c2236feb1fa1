#pragma once

#include "widgets/reports/export/ExportSheet.h"

namespace Widgets {

class DataExportProgress;

/// Data sources as the sheets of a spreadsheet: numbers, times and logical values as such, texts
/// never as formulas, the header fixed above the rows. Memory does not grow with the rows. Writing
/// thread.
namespace XlsxBook {

/// Rows a sheet has room for, its header not counted; more go on in further sheets.
constexpr int mostRows = (1 << 20) - 1;

/// The file appears when it is whole, and was read back; what was there before stays otherwise.
/// Returns an error for operators.
QString write(const QString &file, const ExportSheets &sheets, DataExportProgress &progress,
              int rowsPerSheet = mostRows);

} // namespace XlsxBook

} // namespace Widgets
