#include "widgets/eventlist/WidgetEventSortModel.h"

#include "widgets/eventlist/WidgetEventModel.h"

#include <algorithm>
#include <numeric>

namespace Widgets {

namespace {

constexpr std::size_t fewPlaces = 8; // insertions that are announced one by one

} // namespace

WidgetEventSortModel::WidgetEventSortModel(Nodes::widgetEventList *, QObject *parent)
    : QAbstractProxyModel(parent)
{
}

WidgetEventSortModel::~WidgetEventSortModel() = default;

void WidgetEventSortModel::setSourceModel(QAbstractItemModel *source)
{
    beginResetModel();
    if (m_events)
        disconnect(m_events, nullptr, this, nullptr);
    m_events = qobject_cast<WidgetEventModel *>(source);
    QAbstractProxyModel::setSourceModel(m_events);
    m_order.setModel(m_events);
    if (m_events) {
        connect(m_events, &QAbstractItemModel::rowsInserted, this,
                &WidgetEventSortModel::onRowsInserted);
        connect(m_events, &QAbstractItemModel::dataChanged, this,
                &WidgetEventSortModel::onDataChanged);
        connect(m_events, &QAbstractItemModel::headerDataChanged, this,
                &WidgetEventSortModel::onHeaderChanged);
        connect(m_events, &QAbstractItemModel::modelAboutToBeReset, this,
                &WidgetEventSortModel::beginResetModel);
        connect(m_events, &QAbstractItemModel::modelReset, this, &WidgetEventSortModel::onReset);
    }
    rebuild();
    endResetModel();
}

void WidgetEventSortModel::rebuild()
{
    m_all = m_events ? m_order.sorted() : Rows();
    applyFilter();
}

// Rows are judged in the order they lie in memory, then taken in the order they stand.
void WidgetEventSortModel::applyFilter()
{
    m_passed.clear();
    if (m_filter.isEmpty() || !m_events)
        return;
    m_test = EventRowTest(m_filter, m_events->pool());
    std::vector<char> isPassed(m_all.size());
    std::transform(m_events->getItems().begin(), m_events->getItems().end(), isPassed.begin(),
                   [this](const WidgetEventItem &item) { return m_test(item) ? 1 : 0; });
    for (const EventRowOrder::Row row : m_all)
        if (isPassed[row])
            m_passed.push_back(row);
}

void WidgetEventSortModel::setFilter(const EventRowFilter &filter)
{
    if (filter == m_filter)
        return;
    beginResetModel();
    m_filter = filter;
    applyFilter();
    endResetModel();
}

template <class Change> void WidgetEventSortModel::relayout(Change change)
{
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    const QModelIndexList before = persistentIndexList();
    std::vector<int> sources;
    sources.reserve(std::size_t(before.size()));
    for (const QModelIndex &index : before)
        sources.push_back(sourceRow(index.row()));
    change();
    QModelIndexList after;
    after.reserve(before.size());
    for (int i = 0; i < before.size(); ++i)
        after.append(index(rowOf(sources[std::size_t(i)]), before[i].column()));
    changePersistentIndexList(before, after);
    emit layoutChanged({}, VerticalSortHint);
}

void WidgetEventSortModel::sort(int column, Qt::SortOrder order)
{
    const bool isKnown = column >= 0 && column < columnCount();
    const int kind =
        isKnown ? WidgetEventModel::kindOf(column) : int(Nodes::ColumnInfo::ColumnTime);
    relayout([this, kind, order = isKnown ? order : Qt::DescendingOrder] {
        m_order.setColumn(kind, order);
        rebuild();
    });
}

int WidgetEventSortModel::sortColumn() const
{
    return WidgetEventModel::columnOf(m_order.column());
}

const WidgetEventItem &WidgetEventSortModel::item(int row) const
{
    return m_events->getItems()[shown()[std::size_t(row)]];
}

// The rows are sorted: the place need not be kept anywhere.
int WidgetEventSortModel::rowOf(int sourceRow) const
{
    const Rows &rows = shown();
    const auto found = std::lower_bound(rows.begin(), rows.end(), EventRowOrder::Row(sourceRow),
                                        [this](EventRowOrder::Row left, EventRowOrder::Row right) {
                                            return m_order.isBefore(left, right);
                                        });
    return found != rows.end() && *found == EventRowOrder::Row(sourceRow)
               ? int(found - rows.begin())
               : -1;
}

void WidgetEventSortModel::onRowsInserted(const QModelIndex &, int first, int last)
{
    Rows added(std::size_t(last - first + 1));
    std::iota(added.begin(), added.end(), EventRowOrder::Row(first));
    m_order.sortFew(added);
    if (m_filter.isEmpty())
        return insertShown(added);
    m_order.merge(m_all, added);
    added.erase(std::remove_if(
                    added.begin(), added.end(),
                    [this](EventRowOrder::Row row) { return !m_test(m_events->getItems()[row]); }),
                added.end());
    if (!added.empty())
        insertShown(added);
}

// Each insertion is work for a view. Many are one at the end, which are then put where they belong.
void WidgetEventSortModel::insertShown(const Rows &added)
{
    Rows &rows = shown();
    const std::vector<std::size_t> places = m_order.placesOf(added, rows);
    std::vector<std::size_t> begins{0}; // of those of one place, in `added`
    for (std::size_t i = 1; i < places.size() && begins.size() <= fewPlaces; ++i)
        if (places[i] != places[i - 1])
            begins.push_back(i);
    if (begins.size() > fewPlaces) {
        const std::size_t before = rows.size();
        beginInsertRows({}, int(before), int(before + added.size()) - 1);
        rows.insert(rows.end(), added.begin(), added.end());
        endInsertRows();
        relayout([this, &rows, &added, before] {
            rows.resize(before);
            m_order.merge(rows, added);
        });
        return;
    }
    begins.push_back(added.size());
    for (std::size_t i = begins.size() - 1; i-- > 0;) {
        const std::size_t place = places[begins[i]];
        const std::size_t count = begins[i + 1] - begins[i];
        beginInsertRows({}, int(place), int(place + count) - 1);
        rows.insert(rows.begin() + std::ptrdiff_t(place), added.begin() + std::ptrdiff_t(begins[i]),
                    added.begin() + std::ptrdiff_t(begins[i + 1]));
        endInsertRows();
    }
}

// Their place, and whether they are seen, may be another one now.
void WidgetEventSortModel::onDataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight)
{
    Q_UNUSED(topLeft)
    Q_UNUSED(bottomRight)
    beginResetModel();
    rebuild();
    endResetModel();
}

void WidgetEventSortModel::onHeaderChanged(Qt::Orientation orientation, int first, int last)
{
    if (orientation == Qt::Horizontal)
        emit headerDataChanged(orientation, first, last);
}

void WidgetEventSortModel::onReset()
{
    rebuild();
    endResetModel();
}

QModelIndex WidgetEventSortModel::index(int row, int column, const QModelIndex &parent) const
{
    return hasIndex(row, column, parent) ? createIndex(row, column) : QModelIndex();
}

QModelIndex WidgetEventSortModel::parent(const QModelIndex &) const
{
    return {};
}

QModelIndex WidgetEventSortModel::sibling(int row, int column, const QModelIndex &) const
{
    return index(row, column);
}

int WidgetEventSortModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(shown().size());
}

int WidgetEventSortModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() || !m_events ? 0 : m_events->columnCount();
}

QModelIndex WidgetEventSortModel::mapToSource(const QModelIndex &index) const
{
    return index.isValid() && m_events ? m_events->index(sourceRow(index.row()), index.column())
                                       : QModelIndex();
}

QModelIndex WidgetEventSortModel::mapFromSource(const QModelIndex &sourceIndex) const
{
    return sourceIndex.isValid() ? index(rowOf(sourceIndex.row()), sourceIndex.column())
                                 : QModelIndex();
}

// Without the detour over the first row, which there may not be.
QVariant WidgetEventSortModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    return m_events ? m_events->headerData(section, orientation, role)
                    : QAbstractProxyModel::headerData(section, orientation, role);
}

} // namespace Widgets
