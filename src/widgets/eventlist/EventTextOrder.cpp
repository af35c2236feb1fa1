#include "widgets/eventlist/EventTextOrder.h"

#include <algorithm>

namespace Widgets {

namespace {

constexpr std::ptrdiff_t few = 24;

} // namespace

std::vector<std::uint32_t> EventTextOrder::placesOf(const std::vector<std::string_view> &keys)
{
    std::vector<Entry> entries(keys.size());
    for (std::size_t i = 0; i < keys.size(); ++i)
        entries[i] = {0, std::uint32_t(i), 0};
    EventTextOrder(keys).sort(entries.begin(), entries.end(), false);
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
std::size_t EventTextOrder::sharedBegin(Iterator first, Iterator last) const
{
    const std::string_view model = rest(*first);
    std::size_t shared = model.size();
    for (Iterator entry = first + 1; entry != last && shared > 0; ++entry) {
        const std::string_view key = rest(*entry);
        shared = std::min(shared, key.size());
        if (key.substr(0, shared) != model.substr(0, shared))
            shared = std::size_t(
                std::mismatch(model.begin(), model.begin() + shared, key.begin()).first -
                model.begin());
    }
    return NaturalKey::beforeNumber(model, shared);
}

void EventTextOrder::sortFew(Iterator first, Iterator last)
{
    std::sort(first, last, [this](const Entry &left, const Entry &right) {
        const int values = NaturalKey::compareValues(rest(left), rest(right));
        return values != 0 ? values < 0 : m_keys[left.number] < m_keys[right.number];
    });
}

void EventTextOrder::sort(Iterator first, Iterator last, bool isInNumber)
{
    if (last - first <= few)
        return sortFew(first, last);
    const auto shared = std::uint32_t(sharedBegin(first, last));
    const bool isGoingOn = isInNumber && shared == 0;
    for (Iterator entry = first; entry != last; ++entry) {
        entry->offset += shared;
        entry->head = NaturalKey::headOf(rest(*entry), isGoingOn).bytes;
    }
    // Those of one head by their numbers, as they lie in memory.
    std::sort(first, last, [](const Entry &left, const Entry &right) {
        return left.head != right.head ? left.head < right.head : left.number < right.number;
    });
    for (Iterator group = first; group != last;) {
        const Iterator end = std::find_if(
            group, last, [head = group->head](const Entry &entry) { return entry.head != head; });
        if (end - group > 1)
            sortAlike(group, end, isGoingOn);
        group = end;
    }
}

void EventTextOrder::sortAlike(Iterator first, Iterator last, bool isInNumber)
{
    bool isGoingOn = false;
    bool isFarther = true;
    for (Iterator entry = first; entry != last; ++entry) {
        const NaturalKey::Head head = NaturalKey::headOf(rest(*entry), isInNumber);
        entry->offset += head.taken;
        isGoingOn = head.isInNumber;
        isFarther = head.taken > 0;
    }
    // A head that ends with 0 is the end of its keys; one that takes nothing is a number too long
    // for it.
    if (isFarther && (first->head & 0xff) != 0)
        sort(first, last, isGoingOn);
    else
        sortFew(first, last);
}

} // namespace Widgets
