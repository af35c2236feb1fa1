#include "widgets/reports/data/ReportTableRows.h"

#include <cmath>

namespace Widgets {

QStringList ReportTableRows::columns() const
{
    QStringList names;
    for (const Nodes::ReportColumn &column : m_table->columns)
        names << QString::fromStdString(column.name);
    return names;
}

int ReportTableRows::rowCount() const
{
    return int(m_table->rows);
}

QVariant ReportTableRows::value(int row, int column) const
{
    const Nodes::ReportColumn &cells = m_table->columns[std::size_t(column)];
    if (cells.isText)
        return QString::fromStdString(cells.texts[std::size_t(row)]);
    const double number = cells.numbers[std::size_t(row)];
    if (!std::isfinite(number))
        return {};
    if (cells.decimals < 0)
        return number;
    const double scale = std::pow(10.0, cells.decimals);
    return std::round(number * scale) / scale;
}

} // namespace Widgets
