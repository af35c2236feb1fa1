#include "widgets/eventlist/EventRowOrder.h"

#include "widgets/eventlist/RadixSort.h"

#include <algorithm>
#include <numeric>

namespace Widgets {

using Nodes::ColumnInfo;

namespace {

int sign(std::int64_t left, std::int64_t right)
{
    return left < right ? -1 : left > right ? 1 : 0;
}

int stateKey(const WidgetEventItem &item)
{
    constexpr int priorities = 256;
    return int(item.alarmState()) * priorities + item.priority();
}

EventTexts::Number textOf(const WidgetEventItem &item, int kind)
{
    switch (kind) {
    case ColumnInfo::ColumnSource:
        return item.source().name;
    case ColumnInfo::ColumnUser:
        return item.user();
    case ColumnInfo::ColumnValue:
        return item.newValue();
    default:
        return item.text();
    }
}

} // namespace

void EventRowOrder::setColumn(int kind, Qt::SortOrder order)
{
    m_kind = kind;
    m_order = order;
}

bool EventRowOrder::isEarlier(Row left, Row right) const
{
    const WidgetEventItem &one = item(left);
    const WidgetEventItem &other = item(right);
    if (one.time() != other.time())
        return one.time() < other.time();
    return one.id() != other.id() ? one.id() < other.id() : left < right;
}

int EventRowOrder::compare(Row left, Row right) const
{
    const WidgetEventItem &one = item(left);
    const WidgetEventItem &other = item(right);
    switch (m_kind) {
    case ColumnInfo::ColumnLevel:
        return sign(one.level(), other.level());
    case ColumnInfo::ColumnType:
        return sign(one.type(), other.type());
    case ColumnInfo::ColumnGroup:
        return sign(stateKey(one), stateKey(other));
    default:
        return m_model->pool().texts.compare(textOf(one, m_kind), textOf(other, m_kind));
    }
}

bool EventRowOrder::isBefore(Row left, Row right) const
{
    if (m_kind != ColumnInfo::ColumnTime) {
        const int compared = compare(left, right);
        if (compared != 0)
            return (compared < 0) == (m_order == Qt::AscendingOrder);
        return isEarlier(right, left);
    }
    return m_order == Qt::AscendingOrder ? isEarlier(left, right) : isEarlier(right, left);
}

// Of what is read from a journal it mostly is already the order, or its reverse.
EventRowOrder::Rows EventRowOrder::byTime() const
{
    Rows rows(m_model->getItems().size());
    std::iota(rows.begin(), rows.end(), 0);
    const auto isEarlierRow = [this](Row left, Row right) { return isEarlier(left, right); };
    if (std::is_sorted(rows.begin(), rows.end(), isEarlierRow))
        return rows;
    std::reverse(rows.begin(), rows.end());
    if (std::is_sorted(rows.begin(), rows.end(), isEarlierRow))
        return rows;
    RadixSort(rows, [this](Row row) { return std::uint64_t(item(row).time()); });
    for (auto first = rows.begin(); first != rows.end();) {
        const Nodes::Timestamp time = item(*first).time();
        auto last = first + 1;
        while (last != rows.end() && item(*last).time() == time)
            ++last;
        if (last - first > 1)
            std::sort(first, last, isEarlierRow);
        first = last;
    }
    return rows;
}

std::uint64_t EventRowOrder::key(const WidgetEventItem &item) const
{
    switch (m_kind) {
    case ColumnInfo::ColumnLevel:
        return std::uint64_t(item.level());
    case ColumnInfo::ColumnType:
        return std::uint64_t(item.type());
    case ColumnInfo::ColumnGroup:
        return std::uint64_t(stateKey(item));
    default:
        return m_model->pool().texts.places()[textOf(item, m_kind)];
    }
}

void EventRowOrder::sortByKey(Rows &rows) const
{
    constexpr std::uint64_t most = ~std::uint64_t(0) >> 32; // of any key
    const bool isRising = m_order == Qt::AscendingOrder;
    RadixSort(rows, [this, isRising](Row row) {
        const std::uint64_t ofRow = key(item(row));
        return isRising ? ofRow : most - ofRow;
    });
}

EventRowOrder::Rows EventRowOrder::sorted() const
{
    Rows rows = byTime();
    const bool isByTime = m_kind == ColumnInfo::ColumnTime;
    if (!isByTime || m_order == Qt::DescendingOrder)
        std::reverse(rows.begin(), rows.end());
    if (!isByTime)
        sortByKey(rows);
    return rows;
}

void EventRowOrder::sortFew(Rows &rows) const
{
    std::sort(rows.begin(), rows.end(),
              [this](Row left, Row right) { return isBefore(left, right); });
}

// Most are newer than all the others: looked for at both ends first.
std::vector<std::size_t> EventRowOrder::placesOf(const Rows &added, const Rows &rows) const
{
    std::vector<std::size_t> places;
    places.reserve(added.size());
    auto from = rows.begin();
    for (const Row row : added) {
        if (from != rows.end() && !isBefore(row, *from)) {
            from = isBefore(rows.back(), row)
                       ? rows.end()
                       : std::upper_bound(from, rows.end(), row, [this](Row left, Row right) {
                             return isBefore(left, right);
                         });
        }
        places.push_back(std::size_t(from - rows.begin()));
    }
    return places;
}

void EventRowOrder::merge(Rows &rows, const Rows &added) const
{
    const std::vector<std::size_t> places = placesOf(added, rows);
    std::size_t end = rows.size(); // of what has not been moved
    rows.resize(rows.size() + added.size());
    auto to = rows.end();
    for (std::size_t i = added.size(); i-- > 0;) {
        const auto from = rows.begin() + std::ptrdiff_t(places[i]);
        to = std::move_backward(from, rows.begin() + std::ptrdiff_t(end), to);
        end = places[i];
        *--to = added[i];
    }
}

} // namespace Widgets
