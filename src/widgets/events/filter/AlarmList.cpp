#include "widgets/events/filter/AlarmList.h"

#include "widgets/events/ModelAlarms.h"

#include <QHash>

#include <algorithm>

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
    QStringList names;
    for (const auto &[key, area] : count([](const AlarmRow &) { return true; }))
        names.append(QString::fromStdString(area.name));
    return names;
}

std::vector<AlarmArea> AlarmList::countAreas() const
{
    std::vector<AlarmArea> areas;
    for (auto &[key, area] : count([this](const AlarmRow &row) { return m_filter.accepts(row); })) {
        area.isFolded = isFolded(area.name);
        areas.push_back(std::move(area));
    }
    return areas;
}

template <class Test> AlarmList::KeyedAreas AlarmList::count(Test isCounted) const
{
    QHash<const QCollatorSortKey *, int> known; // place in the result
    KeyedAreas areas;
    for (int number = 0; number < m_model.rowCount(); ++number) {
        const AlarmRow &row = m_model.row(number);
        if (!isCounted(row))
            continue;
        const auto place = known.constFind(row.areaKey);
        const int index = place != known.constEnd() ? *place : int(areas.size());
        if (place == known.constEnd()) {
            known.insert(row.areaKey, index);
            areas.push_back({row.areaKey, {}});
            areas.back().second.name = row.area();
        }
        AlarmArea &area = areas[std::size_t(index)].second;
        const int priority = row.event().priority;
        ++area.all;
        area.waiting += row.isAcknowledged ? 0 : 1;
        if (!row.isAcknowledged && (area.urgent == 0 || priority < area.urgent))
            area.urgent = priority;
    }
    std::sort(areas.begin(), areas.end(), [](const auto &left, const auto &right) {
        return left.first->compare(*right.first) < 0;
    });
    return areas;
}

bool AlarmList::shows(const AlarmRow &row) const
{
    if (!m_filter.accepts(row))
        return false;
    return !m_isGrouped || row.isFirstUp || !isFolded(row.area());
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
    return above.isFirstUp != own.isFirstUp || (!own.isFirstUp && above.areaKey != own.areaKey);
}

bool AlarmList::lessThan(const QModelIndex &left, const QModelIndex &right) const
{
    if (m_isGrouped) {
        const AlarmRow &one = m_model.row(left.row());
        const AlarmRow &other = m_model.row(right.row());
        if (one.isFirstUp != other.isFirstUp)
            return one.isFirstUp;
        if (!one.isFirstUp && one.areaKey != other.areaKey)
            return one.areaKey->compare(*other.areaKey) < 0;
    }
    return Utils::SortingModel::lessThan(left, right);
}

bool AlarmList::filterAcceptsRow(int row, const QModelIndex &parent) const
{
    return shows(m_model.row(row)) && Utils::SortingModel::filterAcceptsRow(row, parent);
}

} // namespace Widgets
