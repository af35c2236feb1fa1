#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace Widgets {

/// The order of a great many keys.
class EventTextOrder
{
public:
    /// For each key its place among all, from 0 on; equal ones have the same place.
    static std::vector<std::uint32_t> placesOf(const std::vector<std::string_view> &keys);

private:
    /// Eight bytes of a key, so that most comparisons look no further.
    struct Entry
    {
        std::uint64_t head;
        std::uint32_t number;
    };
    using Iterator = std::vector<Entry>::iterator;

    explicit EventTextOrder(const std::vector<std::string_view> &keys) : m_keys(keys) {}
    std::size_t sharedBegin(Iterator first, Iterator last, std::size_t offset) const;
    void sort(Iterator first, Iterator last, std::size_t offset);
    void sortFew(Iterator first, Iterator last, std::size_t offset);

    const std::vector<std::string_view> &m_keys;
};

} // namespace Widgets
