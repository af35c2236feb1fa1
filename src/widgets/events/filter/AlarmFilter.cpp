#include "widgets/events/filter/AlarmFilter.h"

#include "widgets/events/AlarmRow.h"

#include <QJsonArray>

#include <algorithm>

namespace Widgets {

namespace {

const QString priorityKey = QStringLiteral("priorities");
const QString stateKey = QStringLiteral("states");
const QString areaKey = QStringLiteral("area");
const QString textKey = QStringLiteral("text");

template <std::size_t Count> QJsonArray written(const std::array<bool, Count> &choices)
{
    QJsonArray array;
    for (const bool isChosen : choices)
        array.append(isChosen);
    return array;
}

template <std::size_t Count> void read(const QJsonValue &value, std::array<bool, Count> &choices)
{
    const QJsonArray array = value.toArray();
    if (array.size() != int(Count))
        return;
    for (std::size_t i = 0; i < Count; ++i)
        choices[i] = array[int(i)].toBool(true);
    // A list that shows nothing at all is nobody's choice.
    if (std::none_of(choices.begin(), choices.end(), [](bool isChosen) { return isChosen; }))
        choices.fill(true);
}

} // namespace

AlarmFilter::State AlarmFilter::stateOf(const AlarmRow &row)
{
    if (!row.isAcknowledged)
        return Waiting;
    return row.stateCode == AlarmPresent ? Active : Returned;
}

bool AlarmFilter::accepts(const AlarmRow &row) const
{
    const int priority = row.event().priority;
    if (priority >= 1 && priority <= PriorityCount && !priorities[std::size_t(priority - 1)])
        return false;
    if (!states[stateOf(row)])
        return false;
    if (area && row.area() != area->toStdString())
        return false;
    return text.isEmpty() || row.contains(text.toLower());
}

QJsonObject AlarmFilter::toJson() const
{
    QJsonObject kept{{priorityKey, written(priorities)}, {stateKey, written(states)}};
    if (area)
        kept.insert(areaKey, *area);
    if (!text.isEmpty())
        kept.insert(textKey, text);
    return kept;
}

AlarmFilter AlarmFilter::fromJson(const QJsonObject &kept)
{
    AlarmFilter filter;
    read(kept.value(priorityKey), filter.priorities);
    read(kept.value(stateKey), filter.states);
    if (kept.value(areaKey).isString())
        filter.area = kept.value(areaKey).toString();
    filter.text = kept.value(textKey).toString();
    return filter;
}

bool AlarmFilter::operator==(const AlarmFilter &other) const
{
    return priorities == other.priorities && states == other.states && area == other.area &&
           text == other.text;
}

} // namespace Widgets
