#pragma once

#include <cstddef>

namespace Nodes {

/// Asks the system to back memory that is about to be filled with large pages where it can: fresh
/// memory costs a fault a page. Only whole large pages within [begin, begin + bytes) are asked for,
/// so a small range is left as it is. Of no other effect; any thread.
void PreferLargePages(const void *begin, std::size_t bytes);

} // namespace Nodes
