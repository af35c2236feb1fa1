#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/links/ResourceLink.h"
#include "nodes/model/properties/PropertyId.h"

namespace Nodes {

/// A menu for operators: its children, items and nested menus, are the entries, in order.
class NODES_EXPORT BasicMenu : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0xB001);
    struct Prop
    {
        static constexpr PropertyId<int> EntryWidth{21001, "entryWidth"};
        static constexpr PropertyId<int> EntryHeight{21002, "entryHeight"};
        static constexpr PropertyId<bool> Pictures{21003, "pictures"};
        static constexpr PropertyId<ResourceLink> Picture{21004, "picture"};
    };

    static KindInfo Kind();

    /// Size of each of its entries, pixels.
    int GetEntryWidth() const { return m_entryWidth; }
    int GetEntryHeight() const { return m_entryHeight; }
    /// Whether its entries show their pictures.
    bool ShowsPictures() const { return m_showsPictures; }
    /// Picture of the entry that opens this menu from another one.
    const ResourceLink &GetPicture() const { return m_picture; }

private:
    int m_entryWidth = 280;
    int m_entryHeight = 48;
    bool m_showsPictures = false;
    ResourceLink m_picture;
};

} // namespace Nodes
