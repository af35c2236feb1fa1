#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/charts/statistics/SpanStatistics.h"

#include <QAbstractTableModel>
#include <QPointer>

#include <optional>
#include <vector>

namespace Widgets {

class ISerie;

/// What the series of a plot do between its two cursors, a row each. GUI thread.
class WIDGETS_EXPORT CursorTable : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column {
        Name,
        First,
        Second,
        Difference,
        Mean,
        Minimum,
        Maximum,
        Integral,
        Remark,
        Count
    };

    /// One row. Values without the offset of the series.
    struct Row
    {
        QPointer<ISerie> serie;
        std::optional<double> first;
        std::optional<double> second;
        std::optional<SpanStatistics> statistics;
    };

    using QAbstractTableModel::QAbstractTableModel;

    void setRows(std::vector<Row> rows);
    const std::vector<Row> &rows() const { return m_rows; }
    /// Better statistics for a row.
    void setStatistics(int row, const SpanStatistics &statistics);

    /// Unit of an integral over time of values in that unit, and what to divide value times seconds
    /// by: "м³/ч" gives "м³" and 3600; units without a time are multiplied by hours.
    static std::pair<QString, double> integralUnit(const QString &unit);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    static QString text(const Row &row, Column column);
    static QString remark(const Row &row);

    std::vector<Row> m_rows;
};

} // namespace Widgets
