#pragma once

#include "widgets/eventlist/NaturalKey.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace Widgets {

/// The natural order of a great many keys of EventTextKey.
class EventTextOrder
{
public:
    /// For each key its place among all, from 0 on; equal ones have the same place.
    static std::vector<std::uint32_t> placesOf(const std::vector<std::string_view> &keys);

private:
    /// Eight bytes in natural order from somewhere within a key, so that most comparisons look no
    /// further.
    struct Entry
    {
        std::uint64_t head;
        std::uint32_t number;
        std::uint32_t offset; // how far the key was compared
    };
    using Iterator = std::vector<Entry>::iterator;

    explicit EventTextOrder(const std::vector<std::string_view> &keys) : m_keys(keys) {}
    std::string_view rest(const Entry &entry) const
    {
        return m_keys[entry.number].substr(entry.offset);
    }
    std::size_t sharedBegin(Iterator first, Iterator last) const;
    void sort(Iterator first, Iterator last, bool isInNumber);
    /// Entries of one head.
    void sortAlike(Iterator first, Iterator last, bool isInNumber);
    void sortFew(Iterator first, Iterator last);

    const std::vector<std::string_view> &m_keys;
};

} // namespace Widgets
