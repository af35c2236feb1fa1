#include "widgets/tools/problems/ProblemsFilter.h"

#include "widgets/tools/problems/ProblemsModel.h"

namespace Widgets {

ProblemsFilter::ProblemsFilter(QObject *parent) : QSortFilterProxyModel(parent)
{
    setSortRole(ProblemsModel::SortRole);
    setSortLocaleAware(true);
    setFilterRole(ProblemsModel::FilterRole);
    setFilterCaseSensitivity(Qt::CaseInsensitive);
}

void ProblemsFilter::setShown(Problem::enSeverity severity, bool isShown)
{
    m_isShown[severity] = isShown;
    invalidateFilter();
}

bool ProblemsFilter::filterAcceptsRow(int row, const QModelIndex &parent) const
{
    const auto *problems = static_cast<const ProblemsModel *>(sourceModel());
    return m_isShown[problems->problem(row).severity] &&
           QSortFilterProxyModel::filterAcceptsRow(row, parent);
}

} // namespace Widgets
