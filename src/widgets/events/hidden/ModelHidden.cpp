#include "widgets/events/hidden/ModelHidden.h"

#include "widgets/events/AlarmSpans.h"

#include "utils/convert/PlainTip.h"
#include "utils/convert/TimeConversions.h"

#include <array>
#include <limits>

namespace Widgets {

using Nodes::AlarmState;
using Nodes::BasicEvent;

namespace {

// More changes than these at once cost a table more than to be told everything anew.
constexpr std::size_t mostChanges = 32;
constexpr const char *byDesign = "По проекту";

const std::array<const char *, ModelHidden::ColumnCount> headers{"Состояние", "Тревога", "Участок",
                                                                 "Кто",       "Причина", "До"};

QString stateText(AlarmState state)
{
    switch (state) {
    case AlarmState::Shelved:
        return QStringLiteral("Отложена");
    case AlarmState::Suppressed:
        return QStringLiteral("Подавлена");
    default:
        return QStringLiteral("Выведена из работы");
    }
}

} // namespace

ModelHidden::ModelHidden(QObject *parent) : QAbstractTableModel(parent) {}

bool ModelHidden::isHidden(const BasicEvent &event)
{
    return event.alarmState == AlarmState::Shelved || event.alarmState == AlarmState::Suppressed ||
           event.alarmState == AlarmState::OutOfService;
}

bool ModelHidden::isByDesign(const BasicEvent &event)
{
    return event.alarmState == AlarmState::Suppressed && event.hiddenBy.empty() &&
           event.hiddenReason.rfind("по проекту", 0) == 0;
}

void ModelHidden::take(const std::vector<BasicEvent> &events)
{
    std::size_t changes = 0;
    for (const BasicEvent &event : events)
        changes += isHidden(event) || m_rowOfAlarm.contains(event.sourceNode.GetNodeId()) ? 1 : 0;
    if (changes > mostChanges)
        return rebuild(events);
    if (changes == 0)
        return;
    for (const BasicEvent &event : events)
        takeOne(event);
}

void ModelHidden::takeOne(const BasicEvent &event)
{
    const unsigned long alarm = event.sourceNode.GetNodeId();
    const int row = m_rowOfAlarm.value(alarm, -1);
    if (row < 0 && isHidden(event)) {
        beginInsertRows({}, rowCount(), rowCount());
        m_rowOfAlarm[alarm] = rowCount();
        m_events.push_back(event);
        endInsertRows();
    } else if (row >= 0 && isHidden(event)) {
        m_events[std::size_t(row)] = event;
        emit dataChanged(index(row, 0), index(row, ColumnCount - 1));
    } else if (row >= 0) {
        beginRemoveRows({}, row, row);
        m_events.erase(m_events.begin() + row);
        m_rowOfAlarm.remove(alarm);
        reindex(row);
        endRemoveRows();
    }
}

void ModelHidden::rebuild(const std::vector<BasicEvent> &events)
{
    beginResetModel();
    QHash<unsigned long, int> latest; // place in the batch
    for (std::size_t i = 0; i < events.size(); ++i)
        latest[events[i].sourceNode.GetNodeId()] = int(i);
    std::vector<BasicEvent> kept;
    for (BasicEvent &event : m_events) {
        if (!latest.contains(event.sourceNode.GetNodeId()))
            kept.push_back(std::move(event));
    }
    for (std::size_t i = 0; i < events.size(); ++i) {
        if (latest.value(events[i].sourceNode.GetNodeId()) == int(i) && isHidden(events[i]))
            kept.push_back(events[i]);
    }
    m_events = std::move(kept);
    m_rowOfAlarm.clear();
    reindex(0);
    endResetModel();
}

void ModelHidden::reindex(int from)
{
    for (int row = from; row < rowCount(); ++row)
        m_rowOfAlarm[event(row).sourceNode.GetNodeId()] = row;
}

void ModelHidden::setNow(Nodes::Timestamp now)
{
    m_now = now;
    if (rowCount() > 0)
        emit dataChanged(index(0, Until), index(rowCount() - 1, Until), {Qt::DisplayRole});
}

ModelHidden::Counts ModelHidden::counts() const
{
    Counts counts;
    for (const BasicEvent &event : m_events) {
        counts.shelved += event.alarmState == AlarmState::Shelved;
        counts.suppressed += event.alarmState == AlarmState::Suppressed;
        counts.outOfService += event.alarmState == AlarmState::OutOfService;
    }
    return counts;
}

std::vector<unsigned long> ModelHidden::alarms() const
{
    std::vector<unsigned long> alarms;
    for (const BasicEvent &event : m_events)
        alarms.push_back(event.sourceNode.GetNodeId());
    return alarms;
}

int ModelHidden::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_events.size());
}

int ModelHidden::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QString ModelHidden::untilText(const BasicEvent &event) const
{
    if (event.hiddenUntil == 0)
        return isByDesign(event) ? QStringLiteral("Пока выполняется условие")
                                 : QStringLiteral("Пока не вернут");
    const QString end = Utils::timeText(event.hiddenUntil);
    if (m_now == 0 || event.hiddenUntil <= m_now)
        return end;
    return QStringLiteral("%1, ещё %2").arg(end, AlarmSpans::text(event.hiddenUntil - m_now));
}

QString ModelHidden::text(const BasicEvent &event, int column) const
{
    switch (column) {
    case State:
        return QStringLiteral("%1, приоритет %2")
            .arg(stateText(event.alarmState))
            .arg(event.priority);
    case Text:
        return QString::fromStdString(event.text);
    case Area:
        return QString::fromStdString(event.area);
    case Who:
        return isByDesign(event) ? QString::fromUtf8(byDesign)
                                 : QString::fromStdString(event.hiddenBy);
    case Reason:
        return QString::fromStdString(event.hiddenReason);
    default:
        return untilText(event);
    }
}

QVariant ModelHidden::sortKey(const BasicEvent &event, int column) const
{
    if (column == State)
        return int(event.alarmState);
    if (column == Until) // what nobody ends comes last
        return event.hiddenUntil != 0 ? qlonglong(event.hiddenUntil)
                                      : std::numeric_limits<qlonglong>::max();
    return text(event, column);
}

QVariant ModelHidden::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const BasicEvent &shown = event(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return text(shown, index.column());
    case Qt::ToolTipRole:
        return Utils::PlainTip(text(shown, index.column()));
    case SortRole:
        return sortKey(shown, index.column());
    default:
        return {};
    }
}

QVariant ModelHidden::headerData(int section, Qt::Orientation orientation, int role) const
{
    const bool isName = orientation == Qt::Horizontal && role == Qt::DisplayRole && section >= 0 &&
                        section < ColumnCount;
    return isName ? QString::fromUtf8(headers[std::size_t(section)])
                  : QAbstractTableModel::headerData(section, orientation, role);
}

} // namespace Widgets
