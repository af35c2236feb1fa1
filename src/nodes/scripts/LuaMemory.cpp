#include "nodes/scripts/LuaMemory.h"

#include <cstdlib>

namespace Nodes {

void *LuaMemory::Allocate(void *self, void *block, std::size_t oldSize, std::size_t newSize)
{
    auto &memory = *static_cast<LuaMemory *>(self);
    // For a new block Lua passes the kind of object in place of the old size.
    const std::size_t held = block ? oldSize : 0;
    if (newSize == 0) {
        std::free(block);
        memory.m_used -= held;
        return nullptr;
    }
    const bool isTooMuch = newSize > held && memory.m_used + (newSize - held) > memory.m_limit;
    if (memory.m_isEnforced && isTooMuch)
        return nullptr;
    void *moved = std::realloc(block, newSize);
    if (moved)
        memory.m_used += newSize - held;
    return moved;
}

} // namespace Nodes
