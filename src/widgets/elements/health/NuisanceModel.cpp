#include "widgets/elements/health/NuisanceModel.h"

#include "widgets/elements/health/HealthText.h"

#include <algorithm>

namespace Widgets {

namespace {

/// How bad an alarm is in that way; 0: not at all.
std::uint64_t weightOf(const Nodes::AlarmCount &alarm, NuisanceModel::Kind kind)
{
    switch (kind) {
    case NuisanceModel::Frequent:
        return alarm.raised;
    case NuisanceModel::Chattering:
        return alarm.chattering;
    case NuisanceModel::Fleeting:
        return alarm.fleeting;
    case NuisanceModel::Standing:
        break;
    }
    return std::uint64_t(alarm.longestStanding);
}

QString countText(std::uint64_t count)
{
    return count > 0 ? QString::number(count) : QStringLiteral("—");
}

} // namespace

void NuisanceModel::setAlarms(const Nodes::AlarmFigures &figures, Kind kind)
{
    beginResetModel();
    m_alarms.clear();
    std::copy_if(figures.alarms.begin(), figures.alarms.end(), std::back_inserter(m_alarms),
                 [kind](const Nodes::AlarmCount &alarm) { return weightOf(alarm, kind) > 0; });
    std::stable_sort(m_alarms.begin(), m_alarms.end(),
                     [kind](const Nodes::AlarmCount &a, const Nodes::AlarmCount &b) {
                         return weightOf(a, kind) > weightOf(b, kind);
                     });
    endResetModel();
}

const Nodes::AlarmCount *NuisanceModel::alarmAt(int row) const
{
    return row >= 0 && row < rowCount() ? &m_alarms[std::size_t(row)] : nullptr;
}

int NuisanceModel::rowOf(const Nodes::NodeLink &alarm) const
{
    const auto found =
        std::find_if(m_alarms.begin(), m_alarms.end(),
                     [&](const Nodes::AlarmCount &count) { return count.alarm == alarm; });
    return found == m_alarms.end() ? -1 : int(found - m_alarms.begin());
}

int NuisanceModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_alarms.size());
}

int NuisanceModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QString NuisanceModel::text(const Nodes::AlarmCount &alarm, int column)
{
    switch (column) {
    case Name:
        return QString::fromStdString(alarm.text.empty() ? alarm.source : alarm.text);
    case Priority:
        return alarm.priority > 0 ? QString::number(alarm.priority) : QString();
    case Raised:
        return QString::number(alarm.raised);
    case ChatteringCount:
        return countText(alarm.chattering);
    case FleetingCount:
        return countText(alarm.fleeting);
    case Last:
        return alarm.lastRaised != 0 ? HealthText::time(alarm.lastRaised) : QStringLiteral("—");
    default:
        break;
    }
    if (alarm.longestStanding == 0)
        return QStringLiteral("—");
    const QString duration = HealthText::duration(alarm.longestStanding);
    return alarm.isStanding ? duration + QStringLiteral(", стоит") : duration;
}

QVariant NuisanceModel::data(const QModelIndex &index, int role) const
{
    const Nodes::AlarmCount *alarm = index.isValid() ? alarmAt(index.row()) : nullptr;
    if (!alarm)
        return {};
    if (role == Qt::TextAlignmentRole)
        return int(Qt::AlignVCenter | (index.column() == Name ? Qt::AlignLeft : Qt::AlignRight));
    if (role == Qt::ToolTipRole)
        return QString::fromStdString(alarm->source);
    return role == Qt::DisplayRole ? QVariant(text(*alarm, index.column())) : QVariant();
}

QVariant NuisanceModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const QString names[] = {QStringLiteral("Тревога"),      QStringLiteral("Приор."),
                                    QStringLiteral("Возникла"),     QStringLiteral("Дребезг"),
                                    QStringLiteral("Мимолётно"),    QStringLiteral("Стояла"),
                                    QStringLiteral("Последний раз")};
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal || section < 0 ||
        section >= ColumnCount)
        return {};
    return names[section];
}

} // namespace Widgets
