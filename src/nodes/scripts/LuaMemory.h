#pragma once

#include <cstddef>

namespace Nodes {

/// Allocator of a Lua state with an upper limit on what is in use. While not enforced, only the
/// machine's own memory limits it, so that the host's own calls cannot fail half-way.
class LuaMemory
{
public:
    explicit LuaMemory(std::size_t limit) : m_limit(limit) {}

    void SetEnforced(bool isEnforced) { m_isEnforced = isEnforced; }

    /// The function Lua calls, with this object as `self`.
    static void *Allocate(void *self, void *block, std::size_t oldSize, std::size_t newSize);

private:
    std::size_t m_limit;
    std::size_t m_used = 0;
    bool m_isEnforced = false;
};

} // namespace Nodes
