#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace Nodes {

/// A row's number and hash: proves the row and all before it.
struct JournalLink
{
    std::uint64_t id = 0;
    std::string hash; ///< HashBytes binary bytes

    static constexpr std::size_t HashBytes = 32;
};

} // namespace Nodes
