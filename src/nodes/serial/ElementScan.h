#pragma once

#include "nodes/serial/LoadLimits.h"

#include <pugixml.hpp>

#include <optional>
#include <string_view>
#include <unordered_map>

namespace Nodes {

/// Largest id a file may use: reads back exactly everywhere. Fresh ones stay well below.
constexpr unsigned long MaximumId = 1ul << 53;

/// Id attribute as a number; nothing when it is missing, zero, too large or no number.
std::optional<unsigned long> ParseNodeId(std::string_view text);
/// Whether an attribute of the root element tells of the file or the project as a whole.
bool IsHeaderKey(std::string_view key);
/// Whether a kind of node is written as such an element; others are kept as they stand.
bool IsRegisteredElement(const pugi::xml_node &element);

/// First walk over parsed elements, before any node is made: counts and checks them and finds ids
/// used twice. Does not recurse.
class ElementScan
{
public:
    explicit ElementScan(const pugi::xml_node &root) : m_root(root) {}

    /// First element deeper than allowed; empty when there is none.
    pugi::xml_node Run(int maximumDepth);

    std::size_t GetCount() const { return m_count; }
    /// Of those that fresh ids have to keep clear of.
    unsigned long GetHighestId() const { return m_highestId; }
    /// Offset of the element that used this element's id before it; nothing when the id is its own.
    std::optional<std::ptrdiff_t> GetEarlier(const pugi::xml_node &element) const;

private:
    void note(const pugi::xml_node &element, bool isForeign);

    pugi::xml_node m_root;
    std::size_t m_count = 0;
    unsigned long m_highestId = 0;
    std::unordered_map<unsigned long, std::ptrdiff_t> m_owners; // offsets: elements go while read
};

} // namespace Nodes
