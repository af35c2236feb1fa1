#pragma once

#include "widgets/WidgetsExport.h"

#include <QString>

namespace Widgets {

/// Whether a spreadsheet that was written is whole: the writing library does not notice a disk that
/// gets full. Reads all of it, so not on the GUI thread. Returns "" or what is wrong; `rows` is the
/// number of rows that all sheets have together.
WIDGETS_EXPORT QString xlsxFault(const QString &file, qint64 rows);

} // namespace Widgets
