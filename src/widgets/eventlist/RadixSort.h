#pragma once

#include <array>
#include <cstdint>
#include <utility>
#include <vector>

namespace Widgets {

/// Sorts a great many rows by a key of 64 bits, `keyOf(row)`; those of the same key keep their
/// order. Time grows with the rows alone; digits that all keys share cost nothing.
template <class KeyOf> void RadixSort(std::vector<std::uint32_t> &rows, KeyOf keyOf)
{
    constexpr int digitBits = 11;
    constexpr std::size_t digits = std::size_t(1) << digitBits;
    struct Keyed
    {
        std::uint64_t key;
        std::uint32_t row;
    };
    std::vector<Keyed> from(rows.size());
    std::uint64_t all = ~std::uint64_t(0);
    std::uint64_t any = 0;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        // So that negative numbers stand before the others.
        from[i] = {keyOf(rows[i]) ^ (std::uint64_t(1) << 63), rows[i]};
        all &= from[i].key;
        any |= from[i].key;
    }
    std::vector<Keyed> to(rows.size());
    for (int shift = 0; shift < 64; shift += digitBits) {
        if ((((all ^ any) >> shift) & (digits - 1)) == 0)
            continue;
        std::array<std::size_t, digits> begins{};
        for (const Keyed &keyed : from)
            ++begins[(keyed.key >> shift) & (digits - 1)];
        std::size_t begin = 0;
        for (std::size_t &count : begins)
            begin += std::exchange(count, begin);
        for (const Keyed &keyed : from)
            to[begins[(keyed.key >> shift) & (digits - 1)]++] = keyed;
        from.swap(to);
    }
    for (std::size_t i = 0; i < rows.size(); ++i)
        rows[i] = from[i].row;
}

} // namespace Widgets
