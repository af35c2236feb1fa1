#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/alarms/statistics/AlarmFigures.h"

#include <QAbstractTableModel>

#include <vector>

namespace Widgets {

/// Alarms that trouble operators in one way, the worst first. GUI thread.
class WIDGETS_EXPORT NuisanceModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Kind { Frequent, Chattering, Fleeting, Standing };
    enum Column {
        Name,
        Priority,
        Raised,
        ChatteringCount,
        FleetingCount,
        Stood,
        Last,
        ColumnCount
    };

    using QAbstractTableModel::QAbstractTableModel;

    /// Those of that kind.
    void setAlarms(const Nodes::AlarmFigures &figures, Kind kind);
    /// Null for a row that there is not.
    const Nodes::AlarmCount *alarmAt(int row) const;
    /// The row of that alarm; -1 when it is not in the list.
    int rowOf(const Nodes::NodeLink &alarm) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    static QString text(const Nodes::AlarmCount &alarm, int column);

    std::vector<Nodes::AlarmCount> m_alarms;
};

} // namespace Widgets
