#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/tools/problems/Problem.h"

#include <QAbstractTableModel>

#include <vector>

namespace Widgets {

/// Findings about a project as rows, in the order they were made. GUI thread.
class WIDGETS_EXPORT ProblemsModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum enColumn { SeverityColumn, PlaceColumn, TextColumn, ColumnCount };
    enum Role {
        SortRole = Qt::UserRole,
        FilterRole ///< place and text
    };

    using QAbstractTableModel::QAbstractTableModel;

    void clear();
    void append(const std::vector<Problem> &problems);
    /// Rows that are in both stay, so that what is selected stays too.
    void replace(const std::vector<Problem> &problems);
    const Problem &problem(int row) const { return m_problems[std::size_t(row)]; }
    int count(Problem::enSeverity severity) const { return m_counts[severity]; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private:
    void remove(int row);

    std::vector<Problem> m_problems;
    int m_counts[2] = {};
};

} // namespace Widgets
