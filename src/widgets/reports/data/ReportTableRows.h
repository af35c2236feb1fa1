#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/reports/engine/data/SharedRows.h"

#include "nodes/reports/data/ReportTable.h"

namespace Widgets {

/// The rows of a report's table as the report engine takes them, without a copy. Any thread.
class WIDGETS_EXPORT ReportTableRows : public LimeReport::SharedRows
{
public:
    explicit ReportTableRows(Nodes::ReportTablePtr table) : m_table(std::move(table)) {}

    QStringList columns() const override;
    int rowCount() const override;
    /// Numbers as many decimals long as their column says; invalid where nothing is known.
    QVariant value(int row, int column) const override;

private:
    const Nodes::ReportTablePtr m_table;
};

} // namespace Widgets
