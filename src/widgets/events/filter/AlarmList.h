#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/events/filter/AlarmArea.h"
#include "widgets/events/filter/AlarmFilter.h"

#include "utils/models/SortingModel.h"

#include <QCollatorSortKey>
#include <QSet>
#include <QStringList>

#include <string>
#include <vector>

namespace Widgets {

class ModelAlarms;

/// Alarms as tables show them: sorted, those of a filter only, and in a flood by area, where areas
/// can be folded. What came first in its group stands above all areas then, and is never folded
/// away. Sorted when asked to, once for a batch. GUI thread.
class WIDGETS_EXPORT AlarmList : public Utils::SortingModel
{
    Q_OBJECT

public:
    /// The model outlives the list.
    explicit AlarmList(ModelAlarms &model, QObject *parent = nullptr);

    const AlarmFilter &filter() const { return m_filter; }
    void setFilter(const AlarmFilter &filter);

    /// By area, whatever the columns say within one.
    void setGrouped(bool isGrouped);
    bool isGrouped() const { return m_isGrouped; }
    void setFolded(const std::string &area, bool isFolded);
    /// Counts of each area, of all alarms that pass the filter, in the order of the list.
    std::vector<AlarmArea> countAreas() const;
    bool isFolded(const std::string &area) const;
    /// Those of all alarms, whether the list shows them or not, in their order; "" is none.
    QStringList areas() const;
    /// Passes the filter and is not folded away.
    bool shows(const AlarmRow &row) const;
    /// Whether a row of the list begins another area than the one above it; never when not grouped.
    bool beginsGroup(int row) const;

signals:
    void filterChanged();

protected:
    bool lessThan(const QModelIndex &left, const QModelIndex &right) const override;
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override;

private:
    using KeyedAreas = std::vector<std::pair<const QCollatorSortKey *, AlarmArea>>;

    template <class Test> KeyedAreas count(Test isCounted) const;
    const AlarmRow &rowAt(int listed) const;

    ModelAlarms &m_model;
    AlarmFilter m_filter;
    bool m_isGrouped = false;
    QSet<QString> m_folded; // areas
};

} // namespace Widgets
