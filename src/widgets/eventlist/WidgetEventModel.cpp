#include "widgets/eventlist/WidgetEventModel.h"

#include "widgets/events/AlarmSigns.h"

#include "nodes/visual/events/widgetEventList.h"
#include "utils/convert/MetaTypes.h"
#include "utils/convert/PlainTip.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace Widgets {

namespace {

constexpr int badgeHeight = 24;

} // namespace

WidgetEventModel::WidgetEventModel(Nodes::widgetEventList *node, QObject *parent)
    : QAbstractTableModel(parent),
      m_node(node),
      m_columns(node ? node->GetColumns() : Nodes::ColumnInfo::Defaults()),
      m_pool(std::make_unique<EventPool>())
{
}

WidgetEventModel::~WidgetEventModel() = default;

std::size_t WidgetEventModel::bytes() const
{
    return m_pool->bytes() + m_items.capacity() * sizeof(WidgetEventItem);
}

QStringList WidgetEventModel::users() const
{
    std::unordered_set<EventTexts::Number> numbers;
    for (const WidgetEventItem &item : m_items)
        numbers.insert(item.user());
    QStringList names;
    for (const EventTexts::Number number : numbers)
        names << m_pool->texts.string(number);
    names.sort(Qt::CaseInsensitive);
    return names;
}

void WidgetEventModel::updateColumns()
{
    if (m_node)
        m_columns = m_node->GetColumns();
    emit headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

void WidgetEventModel::appendItems(const std::vector<Nodes::EventInfo> &events, bool isFiltered)
{
    std::unordered_set<const Nodes::BasicNode *> sources;
    if (isFiltered && m_node) {
        for (const Nodes::NodeLink &source : m_node->GetSources())
            sources.insert(source.GetNode());
        sources.erase(nullptr);
    }
    Items added;
    added.reserve(events.size());
    for (const Nodes::EventInfo &info : events) {
        if (!isFiltered || sources.count(info.GetEvent().sourceNode.GetNode()) != 0)
            added.emplace_back(info, *m_pool);
    }
    if (added.empty())
        return;
    const int first = rowCount();
    beginInsertRows({}, first, first + int(added.size()) - 1);
    m_items.insert(m_items.end(), added.begin(), added.end());
    endInsertRows();
}

void WidgetEventModel::updateItems(const std::vector<Nodes::EventInfo> &events)
{
    std::unordered_map<unsigned long, const Nodes::EventInfo *> changed;
    for (const Nodes::EventInfo &info : events)
        if (info.GetEvent().id != 0)
            changed[info.GetEvent().id] = &info;
    int first = -1;
    int last = -1;
    for (int row = 0; row < rowCount() && !changed.empty(); ++row) {
        WidgetEventItem &item = m_items[std::size_t(row)];
        const auto found = changed.find(item.id());
        if (found == changed.end())
            continue;
        if (item.update(*found->second)) {
            first = first < 0 ? row : first;
            last = row;
        }
        changed.erase(found);
    }
    if (first >= 0)
        emit dataChanged(index(first, 0), index(last, columnCount() - 1));
}

void WidgetEventModel::clear()
{
    beginResetModel();
    m_items.clear();
    m_items.shrink_to_fit();
    m_pool = std::make_unique<EventPool>();
    endResetModel();
}

int WidgetEventModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_items.size());
}

int WidgetEventModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_columns.size());
}

QVariant WidgetEventModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const WidgetEventItem &item = m_items[std::size_t(index.row())];
    const int kind = kindOf(index.column());
    switch (role) {
    case Qt::DisplayRole:
        return item.data(kind);
    case Qt::ToolTipRole:
        return Utils::PlainTip(item.data(kind).toString());
    case Qt::BackgroundRole:
        return item.getClrBackground();
    case Qt::ForegroundRole:
        return item.getClrText();
    case Qt::DecorationRole:
        return kind == Nodes::ColumnInfo::ColumnLevel
                   ? AlarmSigns::badge(item.alarmState(), item.priority(), badgeHeight)
                   : QVariant();
    case SortRole:
        return item.sortData(&m_columns[std::size_t(index.column())]);
    case SourceRole:
        return QVariant::fromValue(item.source().node);
    default:
        return {};
    }
}

QVariant WidgetEventModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && section >= 0 && section < columnCount() &&
        role == Qt::DisplayRole)
        return QString::fromStdString(m_columns[std::size_t(section)].title);
    return QAbstractTableModel::headerData(section, orientation, role);
}

} // namespace Widgets
