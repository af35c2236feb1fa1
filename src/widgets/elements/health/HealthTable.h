#pragma once

#include "widgets/WidgetsExport.h"

class QTableView;

namespace Widgets {

/// How the tables of alarm health look and are touched: whole rows, legible, no editing.
WIDGETS_EXPORT void PrepareHealthTable(QTableView &table, int rowHeight, int stretched);

} // namespace Widgets
