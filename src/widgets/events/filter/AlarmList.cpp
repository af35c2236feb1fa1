#include "widgets/events/filter/AlarmList.h"

#include "widgets/events/ModelAlarms.h"

#include "nodes/alarms/alarmColumn.h"

#include <algorithm>
#include <vector>

namespace Widgets {

AlarmList::AlarmList(ModelAlarms &model, QObject *parent)
    : Utils::SortingModel(parent), m_model(model)
{
    setDynamicSortFilter(false);
    setComparison(
        [this](int column, int left, int right) { return m_model.compare(column, left, right); });
    setInactiveTest([this](const QModelIndex &row) { return m_model.row(row.row()).isInactive(); });
    setSourceModel(&model);
}

void AlarmList::setFilter(const AlarmFilter &filter)
{
    if (filter == m_filter)
        return;
    m_filter = filter;
    updateSort();
    emit filterChanged();
}

void AlarmList::setGrouped(bool isGrouped)
{
    if (isGrouped == m_isGrouped)
        return;
    m_isGrouped = isGrouped;
    m_folded.clear();
    updateSort();
}

void AlarmList::setFolded(const std::string &area, bool isFolded)
{
    const QString name = QString::fromStdString(area);
    if (isFolded == m_folded.contains(name))
        return;
    if (isFolded)
        m_folded.insert(name);
    else
        m_folded.remove(name);
    updateSort();
}

bool AlarmList::isFolded(const std::string &area) const
{
    return !m_folded.isEmpty() && m_folded.contains(QString::fromStdString(area));
}

QStringList AlarmList::areas() const
{
    std::vector<const AlarmRow *> first; // of each area
    QSet<const QCollatorSortKey *> known;
    for (int number = 0; number < m_model.rowCount(); ++number) {
        const AlarmRow &row = m_model.row(number);
        if (known.contains(row.areaKey))
            continue;
        known.insert(row.areaKey);
        first.push_back(&row);
    }
    std::sort(first.begin(), first.end(), [](const AlarmRow *left, const AlarmRow *right) {
        return left->areaKey->compare(*right->areaKey) < 0;
    });
    QStringList areas;
    for (const AlarmRow *row : first)
        areas.append(QString::fromStdString(row->area()));
    return areas;
}

bool AlarmList::shows(const AlarmRow &row) const
{
    if (!m_filter.accepts(row))
        return false;
    return !m_isGrouped || row.event().isFirstUp || !isFolded(row.area());
}

const AlarmRow &AlarmList::rowAt(int listed) const
{
    return m_model.row(mapToSource(index(listed, 0)).row());
}

bool AlarmList::beginsGroup(int row) const
{
    if (!m_isGrouped || row < 1 || row >= rowCount())
        return false;
    const AlarmRow &above = rowAt(row - 1);
    const AlarmRow &own = rowAt(row);
    return above.event().isFirstUp != own.event().isFirstUp ||
           (!own.event().isFirstUp && above.areaKey != own.areaKey);
}

bool AlarmList::lessThan(const QModelIndex &left, const QModelIndex &right) const
{
    if (m_isGrouped) {
        const AlarmRow &one = m_model.row(left.row());
        const AlarmRow &other = m_model.row(right.row());
        if (one.event().isFirstUp != other.event().isFirstUp)
            return one.event().isFirstUp;
        const int areas = one.event().isFirstUp ? 0 : one.compare(other, Nodes::alarmColumn::Area);
        if (areas != 0)
            return areas < 0;
    }
    return Utils::SortingModel::lessThan(left, right);
}

bool AlarmList::filterAcceptsRow(int row, const QModelIndex &parent) const
{
    return shows(m_model.row(row)) && Utils::SortingModel::filterAcceptsRow(row, parent);
}

} // namespace Widgets
