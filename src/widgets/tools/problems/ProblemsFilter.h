#pragma once

#include "widgets/tools/problems/Problem.h"

#include <QSortFilterProxyModel>

namespace Widgets {

/// Problems of the chosen severities, searched and sorted. Its source is a ProblemsModel. GUI
/// thread.
class ProblemsFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit ProblemsFilter(QObject *parent = nullptr);

    void setShown(Problem::enSeverity severity, bool isShown);

protected:
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override;

private:
    bool m_isShown[2] = {true, true};
};

} // namespace Widgets
