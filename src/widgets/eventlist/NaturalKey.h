#pragma once

#include "widgets/WidgetsExport.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace Widgets {

/// Keys of EventTextKey in natural order: a number within a text counts by its value ("2" before
/// "10"), however long it is. Any thread.
namespace NaturalKey {

/// Bytes of a key that compare as the keys do.
struct Head
{
    std::uint64_t bytes = 0; ///< the first in front; 0 at the end of the key
    std::uint32_t taken = 0; ///< bytes of the key that are in
    bool isInNumber = false; ///< a number goes on behind them
};

/// Of what is left of a key. With `isInNumber` it begins within a number of known length.
Head headOf(std::string_view key, bool isInNumber);
/// Bytes at the begin of a key that are before its character at `shared`, without the number that
/// this stands in or ends.
std::size_t beforeNumber(std::string_view key, std::size_t shared);
/// Below, at or above 0, whatever zeros stand in front of numbers. Both may begin within numbers
/// that have as many digits left.
int compareValues(std::string_view left, std::string_view right);
/// The same; keys of the same value by the zeros in front of their numbers. 0: the same key.
WIDGETS_EXPORT int compare(std::string_view left, std::string_view right);

} // namespace NaturalKey

} // namespace Widgets
