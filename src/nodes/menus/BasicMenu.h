#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/links/ResourceLink.h"

namespace Nodes {

/// A menu for operators: its children, items and nested menus, are the entries, in order.
class NODES_EXPORT BasicMenu : public ConfigNode
{
public:
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
