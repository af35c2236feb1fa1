#include "widgets/eventlist/EventTextOrder.h"

#include <algorithm>

namespace Widgets {

namespace {

constexpr std::size_t headSize = 8;
constexpr std::ptrdiff_t few = 24;

std::uint64_t headOf(std::string_view key, std::size_t offset)
{
    std::uint64_t head = 0;
    for (std::size_t i = 0; i < headSize; ++i) {
        const bool isIn = offset + i < key.size();
        head = (head << 8) | (isIn ? static_cast<unsigned char>(key[offset + i]) : 0);
    }
    return head;
}

} // namespace

std::vector<std::uint32_t> EventTextOrder::placesOf(const std::vector<std::string_view> &keys)
{
    std::vector<Entry> entries(keys.size());
    for (std::size_t i = 0; i < keys.size(); ++i)
        entries[i] = {0, std::uint32_t(i)};
    EventTextOrder(keys).sort(entries.begin(), entries.end(), 0);
    std::vector<std::uint32_t> places(keys.size());
    std::uint32_t place = 0;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (i > 0 && keys[entries[i].number] != keys[entries[i - 1].number])
            place = std::uint32_t(i);
        places[entries[i].number] = place;
    }
    return places;
}

// Texts of one kind of event begin alike: what they share need not be compared.
std::size_t EventTextOrder::sharedBegin(Iterator first, Iterator last, std::size_t offset) const
{
    const std::string_view model = m_keys[first->number].substr(offset);
    std::size_t shared = model.size();
    for (Iterator entry = first + 1; entry != last && shared > 0; ++entry) {
        const std::string_view key = m_keys[entry->number].substr(offset);
        shared = std::min(shared, key.size());
        if (key.substr(0, shared) != model.substr(0, shared))
            shared = std::size_t(
                std::mismatch(model.begin(), model.begin() + shared, key.begin()).first -
                model.begin());
    }
    return offset + shared;
}

void EventTextOrder::sortFew(Iterator first, Iterator last, std::size_t offset)
{
    std::sort(first, last, [this, offset](const Entry &left, const Entry &right) {
        return m_keys[left.number].substr(offset) < m_keys[right.number].substr(offset);
    });
}

void EventTextOrder::sort(Iterator first, Iterator last, std::size_t offset)
{
    if (last - first <= few)
        return sortFew(first, last, offset);
    const std::size_t begin = sharedBegin(first, last, offset);
    for (Iterator entry = first; entry != last; ++entry)
        entry->head = headOf(m_keys[entry->number], begin);
    // Those of one head by their numbers, as they lie in memory.
    std::sort(first, last, [](const Entry &left, const Entry &right) {
        return left.head != right.head ? left.head < right.head : left.number < right.number;
    });
    for (Iterator group = first; group != last;) {
        const std::uint64_t head = group->head;
        const Iterator end =
            std::find_if(group, last, [head](const Entry &entry) { return entry.head != head; });
        // A head that ends with 0 is the end of its keys: they are equal.
        if (end - group > 1 && (head & 0xff) != 0)
            sort(group, end, begin + headSize);
        group = end;
    }
}

} // namespace Widgets
