#pragma once

#include "widgets/reports/engine/data/SharedRows.h"

#include <QHash>
#include <QVector>

#include <vector>

class QAbstractItemModel;

namespace LimeReport {

/// Copy of a model's cells, column by column; equal texts of a column are kept once. Filled on the
/// GUI thread, then only read.
class WIDGETS_EXPORT SnapshotRows : public SharedRows
{
public:
    /// Takes the columns over; the rows follow by addRow.
    explicit SnapshotRows(const QAbstractItemModel &model);

    /// Row `rowCount()` of the model that the rows are of.
    void addRow(const QAbstractItemModel &model);

    QStringList columns() const override { return m_names; }
    int rowCount() const override { return m_rowCount; }
    QVariant value(int row, int column) const override;
    Nodes::Quality quality(int row, int column) const override;

private:
    struct Column
    {
        std::vector<QVariant> values;
        std::vector<Nodes::Quality> qualities; // empty while all are good
        QHash<QString, QString> texts;
    };
    static QVariant shared(Column &column, const QVariant &value);

    QStringList m_names;
    std::vector<Column> m_columns;
    int m_rowCount = 0;
};

} // namespace LimeReport
