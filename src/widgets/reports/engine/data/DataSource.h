#pragma once

#include "widgets/reports/engine/data/SharedRows.h"

#include <QHash>

namespace LimeReport {

/// Rows with their columns found by name. Cheap to copy; any thread.
class WIDGETS_EXPORT DataSource
{
public:
    DataSource() = default;
    explicit DataSource(SharedRowsPtr rows);

    int rowCount() const { return m_rowCount; }
    const QStringList &columns() const { return m_columns; }
    /// Exact name first, then whatever the case; -1 when there is none.
    int column(const QString &name) const;

    /// Invalid outside the rows and columns, and where there is no value (not-a-number included).
    QVariant value(int row, int column) const;
    QVariant value(int row, const QString &name) const { return value(row, column(name)); }
    /// Bad outside the rows and columns, and where there is no value.
    Nodes::Quality quality(int row, int column) const;

private:
    bool contains(int row, int column) const;

    SharedRowsPtr m_rows;
    QStringList m_columns;
    QHash<QString, int> m_exact;
    QHash<QString, int> m_folded;
    int m_rowCount = 0;
};

} // namespace LimeReport
