#include "nodes/archive/store/SampleRun.h"

#include "nodes/values/SignalValue.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

namespace Nodes {

namespace {

constexpr double none = std::numeric_limits<double>::quiet_NaN();

bool isSame(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

template <class Column> void eraseFront(Column &column, std::size_t count)
{
    if (!column.empty())
        column.erase(column.begin(), column.begin() + std::ptrdiff_t(count));
}

template <class Column>
void appendPart(Column &into, const Column &from, std::size_t begin, std::size_t end)
{
    into.insert(into.end(), from.begin() + std::ptrdiff_t(begin),
                from.begin() + std::ptrdiff_t(end));
}

template <class Column> void reorder(Column &column, const std::vector<std::size_t> &order)
{
    if (column.empty())
        return;
    Column ordered;
    ordered.reserve(order.size());
    for (const std::size_t i : order)
        ordered.push_back(std::move(column[i]));
    column = std::move(ordered);
}

} // namespace

const std::string &SampleRun::TextAt(std::size_t i) const
{
    static const std::string noText;
    return texts.empty() ? noText : texts[i];
}

bool SampleRun::IsAscending() const
{
    return std::adjacent_find(times.begin(), times.end(), std::greater_equal<>()) == times.end();
}

void SampleRun::push(Timestamp time, double number, Quality quality, SampleKind kind)
{
    if (kind != SampleKind::Number && kinds.empty())
        kinds.assign(times.size(), SampleKind::Number);
    if (kind != SampleKind::Number || !kinds.empty())
        kinds.push_back(kind);
    if (!texts.empty())
        texts.emplace_back();
    times.push_back(time);
    numbers.push_back(number);
    qualities.push_back(quality);
}

void SampleRun::Add(Timestamp time, double number, Quality quality)
{
    if (std::isfinite(number))
        push(time, number, quality, SampleKind::Number);
    else
        AddGap(time, quality);
}

void SampleRun::AddLogical(Timestamp time, bool value, Quality quality)
{
    push(time, value ? 1 : 0, quality, SampleKind::Logical);
}

void SampleRun::AddText(Timestamp time, std::string text, Quality quality)
{
    push(time, none, quality, SampleKind::Text);
    texts.resize(times.size());
    texts.back() = std::move(text);
}

void SampleRun::AddGap(Timestamp time, Quality quality)
{
    push(time, none, quality == Quality::Stale ? quality : Quality::Bad, SampleKind::Gap);
}

void SampleRun::Add(Timestamp time, const SignalValue &value)
{
    switch (value.GetType()) {
    case enSignalValueType::Bool:
        return AddLogical(time, value.ToBool(), value.GetQuality());
    case enSignalValueType::String:
        return AddText(time, value.ToString(), value.GetQuality());
    case enSignalValueType::Int:
    case enSignalValueType::Double:
    case enSignalValueType::ULong:
        return Add(time, value.ToDouble(), value.GetQuality());
    case enSignalValueType::Result:
    case enSignalValueType::None:
        break;
    }
    AddGap(time, value.GetQuality());
}

void SampleRun::Append(const SampleRun &from, std::size_t begin, std::size_t end)
{
    if (kinds.empty() && !from.kinds.empty())
        kinds.assign(times.size(), SampleKind::Number);
    if (texts.empty() && !from.texts.empty())
        texts.resize(times.size());
    appendPart(times, from.times, begin, end);
    appendPart(numbers, from.numbers, begin, end);
    appendPart(qualities, from.qualities, begin, end);
    if (!from.kinds.empty())
        appendPart(kinds, from.kinds, begin, end);
    else if (!kinds.empty())
        kinds.resize(times.size(), SampleKind::Number);
    if (!from.texts.empty())
        appendPart(texts, from.texts, begin, end);
    else if (!texts.empty())
        texts.resize(times.size());
}

SampleRun SampleRun::Part(Timestamp from, Timestamp to) const
{
    SampleRun part;
    const std::size_t begin = LowerBound(from);
    part.Append(*this, begin, std::max(begin, LowerBound(to + 1)));
    return part;
}

void SampleRun::EraseFront(std::size_t count)
{
    eraseFront(times, count);
    eraseFront(numbers, count);
    eraseFront(qualities, count);
    eraseFront(kinds, count);
    eraseFront(texts, count);
}

void SampleRun::Reserve(std::size_t count)
{
    times.reserve(count);
    numbers.reserve(count);
    qualities.reserve(count);
}

void SampleRun::Clear()
{
    *this = SampleRun();
}

void SampleRun::Sort()
{
    if (IsAscending())
        return;
    std::vector<std::size_t> order(Size());
    std::iota(order.begin(), order.end(), std::size_t(0));
    std::stable_sort(order.begin(), order.end(),
                     [this](std::size_t a, std::size_t b) { return times[a] < times[b]; });
    order.erase(std::unique(order.begin(), order.end(),
                            [this](std::size_t a, std::size_t b) { return times[a] == times[b]; }),
                order.end());
    reorder(times, order);
    reorder(numbers, order);
    reorder(qualities, order);
    reorder(kinds, order);
    reorder(texts, order);
}

std::size_t SampleRun::LowerBound(Timestamp time) const
{
    return std::size_t(std::lower_bound(times.begin(), times.end(), time) - times.begin());
}

std::size_t SampleRun::TextBytes() const
{
    return std::accumulate(texts.begin(), texts.end(), std::size_t(0),
                           [](std::size_t sum, const std::string &t) { return sum + t.size(); });
}

bool SampleRun::operator==(const SampleRun &other) const
{
    if (times != other.times || qualities != other.qualities ||
        !std::equal(numbers.begin(), numbers.end(), other.numbers.begin(), isSame))
        return false;
    for (std::size_t i = 0; i < Size(); ++i) {
        if (KindAt(i) != other.KindAt(i) || TextAt(i) != other.TextAt(i))
            return false;
    }
    return true;
}

} // namespace Nodes
