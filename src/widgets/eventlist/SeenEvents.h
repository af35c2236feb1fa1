#pragma once

#include "widgets/WidgetsExport.h"

#include <bitset>
#include <cstddef>
#include <unordered_map>

namespace Widgets {

/// Numbers of the journal's entries that were taken: a bit each, as they lie close together.
class WIDGETS_EXPORT SeenEvents
{
public:
    /// False when it was there already. 0 is no number, and always new.
    bool add(unsigned long id);
    void clear() { m_blocks.clear(); }

private:
    static constexpr std::size_t BlockSize = 4096;

    std::unordered_map<unsigned long, std::bitset<BlockSize>> m_blocks;
};

} // namespace Widgets
