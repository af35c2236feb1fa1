#include "widgets/events/ModelAlarms.h"

#include "widgets/events/AlarmSigns.h"

#include "nodes/alarms/BasicAlarm.h"
#include "nodes/alarms/alarmColumn.h"
#include "nodes/alarms/systemAlarming.h"
#include "utils/MetaTypes.h"
#include "utils/PlainTip.h"
#include "utils/TimeConversions.h"
#include "utils/ValueConversions.h"

#include <QFileInfo>
#include <QFontMetrics>

namespace Widgets {

using Nodes::alarmColumn;
using Nodes::AlarmState;

enAlarmStateCode AlarmStateCode(const Nodes::BasicEvent &event)
{
    switch (event.alarmState) {
    case AlarmState::ActiveUnacked:
    case AlarmState::ActiveAcked:
        return AlarmPresent;
    case AlarmState::ReturnedUnacked:
    case AlarmState::Normal:
        return AlarmGone;
    default:
        return AlarmElsewhere;
    }
}

ModelAlarms::ModelAlarms(QObject *parent) : QAbstractTableModel(parent)
{
    readSettings(nullptr);
}

ModelAlarms::~ModelAlarms() = default;

void ModelAlarms::readSettings(const Nodes::systemAlarming *alarming)
{
    beginResetModel();
    m_columns.clear();
    if (alarming) {
        for (const alarmColumn *column : alarming->GetColumns())
            m_columns.append({QString::fromStdString(column->GetName()), column->GetColumnKind(),
                              column->GetWidth()});
        m_font = Utils::NFontToQFont(alarming->GetFont());
        m_headerFont = Utils::NFontToQFont(alarming->GetHeaderFont());
    }
    if (m_columns.isEmpty())
        m_columns = {{QStringLiteral("№"), alarmColumn::Number, 0},
                     {QStringLiteral("Состояние"), alarmColumn::Group, 0},
                     {QStringLiteral("Время"), alarmColumn::Time, 0},
                     {QStringLiteral("Уровень"), alarmColumn::Level, 0},
                     {QStringLiteral("Текст"), alarmColumn::Text, 0}};
    endResetModel();
}

int ModelAlarms::badgeHeight() const
{
    return QFontMetrics(m_font).height() + 8;
}

int ModelAlarms::columnOf(int kind) const
{
    for (int column = 0; column < m_columns.size(); ++column) {
        if (m_columns[column].kind == kind)
            return column;
    }
    return -1;
}

int ModelAlarms::rowOf(const Nodes::BasicEvent &event) const
{
    return m_rowOfNode.value(event.sourceNode.GetNodeId(), -1);
}

// The level of a journal entry tells what was done; that of a row how grave the alarm is.
void ModelAlarms::take(Row &row, const Nodes::BasicEvent &event)
{
    row.stateCode = AlarmStateCode(event);
    row.isAcknowledged = event.alarmState != AlarmState::ActiveUnacked &&
                         event.alarmState != AlarmState::ReturnedUnacked;
    const auto *alarm = dynamic_cast<const Nodes::BasicAlarm *>(event.sourceNode.GetNode());
    row.soundFile = alarm ? QString::fromStdString(alarm->GetSound().GetFullFilePath()) : QString();
    const bool hasSound = !row.soundFile.isEmpty() && QFileInfo(row.soundFile).isFile();
    row.soundState = row.isAcknowledged ? SoundAcknowledged : hasSound ? SoundPlaying : SoundNone;
}

static Nodes::BasicEvent listed(Nodes::BasicEvent event)
{
    if (event.priority > 0)
        event.level = Nodes::AlarmLevel(event.priority);
    return event;
}

int ModelAlarms::append(const Nodes::BasicEvent &event)
{
    Row row;
    row.info = std::make_unique<Nodes::EventInfo>(listed(event));
    take(row, event);
    const int number = rowCount();
    beginInsertRows({}, number, number);
    m_rowOfNode[event.sourceNode.GetNodeId()] = number;
    m_rows.push_back(std::move(row));
    endInsertRows();
    return number;
}

bool ModelAlarms::update(int number, const Nodes::BasicEvent &event)
{
    Row &row = m_rows[std::size_t(number)];
    if (!row.info->Update(listed(event)))
        return false;
    take(row, event);
    emit dataChanged(index(number, 0), index(number, columnCount() - 1));
    return true;
}

bool ModelAlarms::isInactive(int number) const
{
    const Row &row = m_rows[std::size_t(number)];
    return row.stateCode != AlarmPresent && row.isAcknowledged;
}

int ModelAlarms::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int ModelAlarms::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_columns.size();
}

AlarmState ModelAlarms::shownState(const Row &row)
{
    const AlarmState state = row.info->GetEvent().alarmState;
    if (row.isAcknowledged && state == AlarmState::ActiveUnacked)
        return AlarmState::ActiveAcked;
    if (row.isAcknowledged && state == AlarmState::ReturnedUnacked)
        return AlarmState::Normal;
    return state;
}

QVariant ModelAlarms::text(const Row &row, int number, int kind) const
{
    switch (kind) {
    case alarmColumn::Number:
        return QString::number(number + 1);
    case alarmColumn::Group: {
        Nodes::BasicEvent event = row.info->GetEvent();
        event.alarmState = shownState(row);
        return QString::fromStdString(Nodes::EventInfo(std::move(event)).GetGroupString());
    }
    case alarmColumn::Time:
        return Utils::timeText(row.info->GetEvent().time, Utils::tableTimeFormat);
    case alarmColumn::Level:
        return QString::fromStdString(row.info->GetEventLevel());
    default:
        return QString::fromStdString(row.info->GetEvent().text);
    }
}

QVariant ModelAlarms::sortKey(const Row &row, int number, int kind) const
{
    const Nodes::BasicEvent &event = row.info->GetEvent();
    switch (kind) {
    case alarmColumn::Number:
        return number;
    case alarmColumn::Group: {
        // What waits for acknowledgement stands above what only lasts.
        const bool isWaiting = !row.isAcknowledged;
        const bool isPresent = row.stateCode == AlarmPresent;
        return (isWaiting && isPresent ? 0 : isWaiting ? 10 : isPresent ? 20 : 30) + event.priority;
    }
    case alarmColumn::Time:
        return qlonglong(event.time);
    case alarmColumn::Level:
        return int(event.level);
    default:
        return QString::fromStdString(event.text);
    }
}

QVariant ModelAlarms::state(const Row &row, int role)
{
    switch (role) {
    case SoundStateRole:
        return row.soundState;
    case StateCodeRole:
        return row.stateCode;
    case SoundFileRole:
        return row.soundFile;
    case EventInfoRole:
        return QVariant::fromValue<const Nodes::EventInfo *>(row.info.get());
    case AcknowledgedRole:
        return row.isAcknowledged;
    case SourceRole:
        return QVariant::fromValue(row.info->GetEvent().sourceNode);
    default:
        return {};
    }
}

QVariant ModelAlarms::look(const Row &row, int column, int role) const
{
    const int priority = row.info->GetEvent().priority;
    const AlarmState state = shownState(row);
    switch (role) {
    case Qt::ForegroundRole:
        return row.stateCode == AlarmGone ? QColor(Qt::gray) : AlarmSigns::of(state, priority).text;
    case Qt::BackgroundRole:
        return AlarmSigns::of(state, priority).ground;
    case Qt::FontRole: {
        QFont font = m_font;
        font.setBold(!row.isAcknowledged);
        return font;
    }
    case Qt::DecorationRole:
        return column == 0 ? AlarmSigns::badge(state, priority, badgeHeight()) : QVariant();
    case Qt::ToolTipRole:
        return Utils::PlainTip(text(row, 0, alarmColumn::Text).toString());
    default:
        return {};
    }
}

QVariant ModelAlarms::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Row &row = m_rows[std::size_t(index.row())];
    const int kind = m_columns[index.column()].kind;
    switch (role) {
    case Qt::DisplayRole:
        return text(row, index.row(), kind);
    case SortRole:
        return sortKey(row, index.row(), kind);
    case ColumnKindRole:
        return kind;
    default:
        return role < Qt::UserRole ? look(row, index.column(), role) : state(row, role);
    }
}

QVariant ModelAlarms::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= m_columns.size())
        return QAbstractTableModel::headerData(section, orientation, role);
    if (role == Qt::DisplayRole)
        return m_columns[section].name;
    if (role == Qt::FontRole)
        return m_headerFont;
    return QAbstractTableModel::headerData(section, orientation, role);
}

bool ModelAlarms::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return false;
    Row &row = m_rows[std::size_t(index.row())];
    if (role == SoundStateRole)
        row.soundState = value.toInt();
    else if (role == AcknowledgedRole)
        row.isAcknowledged = value.toBool();
    else
        return false;
    emit dataChanged(index.sibling(index.row(), 0), index.sibling(index.row(), columnCount() - 1));
    return true;
}

bool ModelAlarms::removeRows(int row, int count, const QModelIndex &parent)
{
    if (parent.isValid() || row < 0 || count < 1 || row + count > rowCount())
        return false;
    beginRemoveRows({}, row, row + count - 1);
    m_rows.erase(m_rows.begin() + row, m_rows.begin() + row + count);
    m_rowOfNode.clear();
    for (std::size_t number = 0; number < m_rows.size(); ++number)
        m_rowOfNode[m_rows[number].info->GetEvent().sourceNode.GetNodeId()] = int(number);
    endRemoveRows();
    return true;
}

} // namespace Widgets
