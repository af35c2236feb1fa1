#include "widgets/events/ModelAlarms.h"

#include "widgets/events/AlarmSigns.h"

#include "nodes/alarms/alarmColumn.h"
#include "nodes/alarms/systemAlarming.h"
#include "utils/convert/MetaTypes.h"
#include "utils/convert/PlainTip.h"
#include "utils/convert/ValueConversions.h"

#include <QFontMetrics>
#include <QSet>

#include <algorithm>

namespace Widgets {

using Nodes::alarmColumn;

namespace {

// More scattered removals cost a table more than to be told everything anew.
constexpr std::size_t mostRemovals = 32;

} // namespace

ModelAlarms::ModelAlarms(QObject *parent) : QAbstractTableModel(parent)
{
    readSettings(nullptr);
}

ModelAlarms::~ModelAlarms() = default;

void ModelAlarms::readSettings(const Nodes::systemAlarming *alarming)
{
    beginResetModel();
    m_columns.read(alarming);
    m_soundDefaults = AlarmSoundDefaults::of(alarming); // of alarms that come from now on
    if (alarming) {
        m_font = Utils::NFontToQFont(alarming->GetFont());
        m_headerFont = Utils::NFontToQFont(alarming->GetHeaderFont());
    }
    m_boldFont = m_font;
    m_boldFont.setBold(true);
    endResetModel();
    emit columnsChanged();
}

void ModelAlarms::setGrouped(bool isGrouped)
{
    if (isGrouped == m_columns.isGrouped())
        return;
    beginResetModel();
    m_columns.setGrouped(isGrouped);
    endResetModel();
    emit columnsChanged();
}

int ModelAlarms::badgeHeight() const
{
    return QFontMetrics(m_font).height() + 8;
}

int ModelAlarms::compare(int column, int left, int right) const
{
    return row(left).compare(row(right), m_columns[column].kind);
}

void ModelAlarms::Touched::add(int row)
{
    first = first < 0 ? row : std::min(first, row);
    last = std::max(last, row);
}

void ModelAlarms::count(const AlarmRow &row, int step)
{
    if (row.soundState == SoundPlaying)
        m_sounds.count(row.event().priority, row.soundFile, step);
}

template <class Change> void ModelAlarms::change(AlarmRow &row, Change apply)
{
    count(row, -1);
    apply(row);
    count(row, 1);
    row.isLeaving = shouldLeave(row);
}

bool ModelAlarms::shouldLeave(const AlarmRow &row) const
{
    return row.stateCode == AlarmElsewhere || (m_isRemoving && row.isInactive());
}

ModelAlarms::Taken ModelAlarms::take(const std::vector<Nodes::BasicEvent> &events)
{
    ++m_revision;
    Taken taken;
    Touched touched;
    std::vector<AlarmRow> added;
    QSet<unsigned long> waiting; // of those
    for (const Nodes::BasicEvent &event : events) {
        const unsigned long alarm = event.sourceNode.GetNodeId();
        if (waiting.contains(alarm)) {
            append(added);
            waiting.clear();
        }
        const int number = rowOf(alarm);
        if (number >= 0) {
            const AlarmRow::enNews news = update(m_rows[std::size_t(number)], event);
            if (news != AlarmRow::Nothing)
                touched.add(number);
            taken.isNews = taken.isNews || news == AlarmRow::ToBeSeen;
        } else if (AlarmRow::isToBeListed(event)) {
            added.emplace_back(event, m_revision, m_soundDefaults);
            waiting.insert(alarm);
            taken.isOrderChanged = true;
            taken.isNews = taken.isNews || event.type != Nodes::TypeAcknowledgement;
        }
    }
    append(added);
    announce(touched);
    removeLeaving();
    taken.isOrderChanged = taken.isOrderChanged || touched.first >= 0;
    return taken;
}

AlarmRow::enNews ModelAlarms::update(AlarmRow &row, const Nodes::BasicEvent &event)
{
    auto news = AlarmRow::Nothing;
    change(row, [&](AlarmRow &changed) { news = changed.take(event, m_revision); });
    return news;
}

bool ModelAlarms::acknowledge(const std::vector<int> &rows)
{
    Touched touched;
    for (const int number : rows) {
        change(m_rows[std::size_t(number)], [](AlarmRow &row) { row.acknowledge(); });
        touched.add(number);
    }
    announce(touched);
    removeLeaving();
    return touched.first >= 0;
}

void ModelAlarms::setRemoveInactive(bool isRemoving)
{
    m_isRemoving = isRemoving;
    for (AlarmRow &row : m_rows)
        row.isLeaving = shouldLeave(row);
    removeLeaving();
}

void ModelAlarms::append(std::vector<AlarmRow> &added)
{
    if (added.empty())
        return;
    const int first = rowCount();
    beginInsertRows({}, first, first + int(added.size()) - 1);
    for (AlarmRow &row : added) {
        count(row, 1);
        m_rows.push_back(std::move(row));
    }
    reindex(first);
    endInsertRows();
    added.clear();
}

void ModelAlarms::announce(const Touched &touched)
{
    if (touched.first >= 0)
        emit dataChanged(index(touched.first, 0), index(touched.last, columnCount() - 1));
}

void ModelAlarms::removeLeaving()
{
    std::vector<std::pair<int, int>> ranges;
    for (int number = 0; number < rowCount(); ++number) {
        if (!row(number).isLeaving)
            continue;
        if (!ranges.empty() && ranges.back().second == number - 1)
            ranges.back().second = number;
        else
            ranges.emplace_back(number, number);
    }
    if (ranges.size() <= mostRemovals) {
        for (auto range = ranges.rbegin(); range != ranges.rend(); ++range)
            removeRows(range->first, range->second - range->first + 1);
        return;
    }
    beginResetModel();
    for (const AlarmRow &row : m_rows) {
        if (row.isLeaving)
            count(row, -1);
    }
    m_rows.erase(std::remove_if(m_rows.begin(), m_rows.end(),
                                [](const AlarmRow &row) { return row.isLeaving; }),
                 m_rows.end());
    m_rowOfAlarm.clear();
    reindex(0);
    endResetModel();
}

void ModelAlarms::reindex(int from)
{
    for (int number = from; number < rowCount(); ++number)
        m_rowOfAlarm[row(number).alarm()] = number;
}

int ModelAlarms::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int ModelAlarms::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_columns.count();
}

QVariant ModelAlarms::state(const AlarmRow &row, int role)
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
        return QVariant::fromValue(row.event().sourceNode);
    default:
        return {};
    }
}

QVariant ModelAlarms::look(const AlarmRow &row, int column, int role) const
{
    const int priority = row.event().priority;
    const Nodes::AlarmState state = row.state();
    switch (role) {
    case Qt::ForegroundRole:
        return row.stateCode == AlarmGone ? QColor(Qt::gray) : AlarmSigns::of(state, priority).text;
    case Qt::BackgroundRole:
        return AlarmSigns::of(state, priority).ground;
    case Qt::FontRole:
        return row.isAcknowledged ? m_font : m_boldFont;
    case Qt::DecorationRole:
        return column == m_columns.badgeColumn() ? AlarmSigns::badge(state, priority, badgeHeight())
                                                 : QVariant();
    case Qt::ToolTipRole:
        return Utils::PlainTip(row.text(alarmColumn::Text));
    default:
        return {};
    }
}

QVariant ModelAlarms::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const AlarmRow &row = m_rows[std::size_t(index.row())];
    const int kind = m_columns[index.column()].kind;
    switch (role) {
    case Qt::DisplayRole:
        return kind == alarmColumn::Number     ? QVariant(index.row() + 1)
               : kind == alarmColumn::Priority ? QVariant() // the badge has its number
                                               : row.text(kind);
    case ColumnKindRole:
        return kind;
    default:
        return role < Qt::UserRole ? look(row, index.column(), role) : state(row, role);
    }
}

QVariant ModelAlarms::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= m_columns.count())
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
    if (role != SoundStateRole && role != AcknowledgedRole)
        return false;
    AlarmRow &row = m_rows[std::size_t(index.row())];
    count(row, -1);
    if (role == SoundStateRole)
        row.soundState = value.toInt();
    else
        row.isAcknowledged = value.toBool();
    count(row, 1);
    announce({index.row(), index.row()});
    return true;
}

bool ModelAlarms::removeRows(int row, int count, const QModelIndex &parent)
{
    if (parent.isValid() || row < 0 || count < 1 || row + count > rowCount())
        return false;
    const auto first = m_rows.begin() + row;
    beginRemoveRows({}, row, row + count - 1);
    for (auto gone = first; gone != first + count; ++gone) {
        this->count(*gone, -1);
        m_rowOfAlarm.remove(gone->alarm());
    }
    m_rows.erase(first, first + count);
    reindex(row);
    endRemoveRows();
    return true;
}

} // namespace Widgets
