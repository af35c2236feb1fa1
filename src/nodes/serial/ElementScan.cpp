#include "nodes/serial/ElementScan.h"

#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/values/NumberText.h"

#include <algorithm>

namespace Nodes {

namespace {

pugi::xml_node nextElement(pugi::xml_node node)
{
    while (node && node.type() != pugi::node_element)
        node = node.next_sibling();
    return node;
}

} // namespace

bool IsRegisteredElement(const pugi::xml_node &element)
{
    const KindInfo *kind = KindTable::Instance().FindByKey(element.name());
    return kind && kind->type.GetSubtype() != NodeType::SubtypeUnknown;
}

bool IsHeaderKey(std::string_view key)
{
    return key == "format" || key == "uuid" || key == "lastId";
}

std::optional<unsigned long> ParseNodeId(std::string_view text)
{
    const auto number = ParseInteger(text);
    const bool isUsable = number && *number > 0 && *number <= static_cast<long long>(MaximumId);
    return isUsable ? std::optional<unsigned long>(*number) : std::nullopt;
}

void ElementScan::note(const pugi::xml_node &element, bool isForeign)
{
    ++m_count;
    const auto id = ParseNodeId(element.attribute("id").value());
    if (!id)
        return;
    if (*id < NodesCollection::FreshIdLimit)
        m_highestId = std::max(m_highestId, *id);
    // What stands inside an unknown element is no node here, so it owns no id.
    if (!isForeign)
        m_owners.emplace(*id, element.offset_debug());
}

pugi::xml_node ElementScan::Run(int maximumDepth)
{
    int depth = 1;
    int foreignFrom = 0; // depth of the unknown element the walk is in; 0: in none
    pugi::xml_node at = m_root;
    while (at) {
        if (depth > maximumDepth)
            return at;
        note(at, foreignFrom != 0);
        if (foreignFrom == 0 && !IsRegisteredElement(at))
            foreignFrom = depth;
        pugi::xml_node next = nextElement(at.first_child());
        if (next) {
            ++depth;
            at = next;
            continue;
        }
        while (at && !next) {
            if (foreignFrom == depth)
                foreignFrom = 0;
            if (at == m_root)
                return {};
            next = nextElement(at.next_sibling());
            if (!next) {
                at = at.parent();
                --depth;
            }
        }
        at = next;
    }
    return {};
}

std::optional<std::ptrdiff_t> ElementScan::GetEarlier(const pugi::xml_node &element) const
{
    const auto id = ParseNodeId(element.attribute("id").value());
    const auto owner = id ? m_owners.find(*id) : m_owners.end();
    const bool isEarlier = owner != m_owners.end() && owner->second != element.offset_debug();
    return isEarlier ? std::optional<std::ptrdiff_t>(owner->second) : std::nullopt;
}

} // namespace Nodes
