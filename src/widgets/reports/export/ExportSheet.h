#pragma once

#include "widgets/reports/engine/data/SharedRows.h"

#include <QList>
#include <QString>

namespace Widgets {

/// A data source of a report as it is exported.
struct ExportSheet
{
    QString name;
    LimeReport::SharedRowsPtr rows;
};
using ExportSheets = QList<ExportSheet>;

} // namespace Widgets
