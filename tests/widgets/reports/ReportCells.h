#pragma once

#include "widgets/reports/engine/data/SharedRows.h"

#include <QMap>
#include <QPair>
#include <QVector>

/// Rows given cell by cell.
class ReportCells : public LimeReport::SharedRows
{
public:
    ReportCells(QStringList columns, QVector<QVariantList> rows)
        : m_columns(std::move(columns)), m_rows(std::move(rows))
    {
    }
    QStringList columns() const override { return m_columns; }
    int rowCount() const override { return m_rows.size(); }
    QVariant value(int row, int column) const override { return m_rows[row][column]; }
    Nodes::Quality quality(int row, int column) const override
    {
        return qualities.value({row, column}, Nodes::Quality::Good);
    }

    QMap<QPair<int, int>, Nodes::Quality> qualities;

private:
    QStringList m_columns;
    QVector<QVariantList> m_rows;
};
