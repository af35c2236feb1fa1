#include "nodes/archive/LargePages.h"

#include <cstdint>

#include <sys/mman.h>

namespace Nodes {

namespace {

constexpr std::uintptr_t pageBytes = std::uintptr_t(2) << 20;

} // namespace

void PreferLargePages(const void *begin, std::size_t bytes)
{
    const auto address = reinterpret_cast<std::uintptr_t>(begin);
    const std::uintptr_t first = (address + pageBytes - 1) & ~(pageBytes - 1);
    const std::uintptr_t end = (address + bytes) & ~(pageBytes - 1);
    if (first < end)
        (void)::madvise(reinterpret_cast<void *>(first), end - first, MADV_HUGEPAGE); // a wish
}

} // namespace Nodes
