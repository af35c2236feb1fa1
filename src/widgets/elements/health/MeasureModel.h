#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/alarms/statistics/AlarmMeasure.h"

#include <QAbstractTableModel>

#include <vector>

namespace Widgets {

/// Table of the measures of alarm health: what, how much, what is recommended, and the verdict by
/// sign and word. GUI thread.
class WIDGETS_EXPORT MeasureModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Name, Value, Target, Verdict, ColumnCount };

    using QAbstractTableModel::QAbstractTableModel;

    void setMeasures(std::vector<Nodes::AlarmMeasure> measures);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<Nodes::AlarmMeasure> m_measures;
};

} // namespace Widgets
