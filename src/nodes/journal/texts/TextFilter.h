#pragma once

#include "nodes/NodesExport.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace Nodes {

/// What a block of texts may hold: a bit for every three letters that stand in a row in one of
/// them, whatever their case. A few hundred bytes say of most words that they are in none of a
/// thousand texts. Of a text that is there it never says so.
class NODES_EXPORT TextFilter
{
public:
    /// What is looked for, made once for many filters.
    class NODES_EXPORT Wanted
    {
    public:
        /// Any case; of less than three letters no filter rules anything out.
        explicit Wanted(std::string_view text);
        bool IsTooShort() const { return m_hashes.empty(); }

    private:
        friend class TextFilter;
        std::vector<std::uint32_t> m_hashes;
    };

    /// One text of the block.
    void Add(std::string_view text);
    /// The filter of what was added, as it is stored.
    std::string Pack() const;

    /// Whether a text with that in it may be among those of the block. Bytes that are no filter
    /// rule nothing out.
    static bool MayHold(std::string_view packed, const Wanted &wanted);

private:
    std::unordered_set<std::string> m_texts; // of which most come again
    std::vector<std::uint32_t> m_hashes;
};

} // namespace Nodes
