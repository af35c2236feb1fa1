#pragma once

#include "editor/review/FindingModel.h"

#include <QSortFilterProxyModel>

namespace Editor {

/// Findings of at least one severity.
class SeverityFilter : public QSortFilterProxyModel
{
public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

    void setLeast(int severity)
    {
        m_least = severity;
        invalidateFilter();
    }

protected:
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override
    {
        const QModelIndex index = sourceModel()->index(row, FindingModel::Severity, parent);
        return index.data(FindingModel::SortRole).toInt() >= m_least;
    }

private:
    int m_least = 0;
};

} // namespace Editor
