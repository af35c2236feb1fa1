#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/model/links/NodeLink.h"

#include <Qt>

#include <memory>
#include <vector>

namespace Nodes {
class ConfigNode;
}

namespace Widgets {

/// A node in the tree of sources, with those below it that can be sources too. Owns its children.
class WIDGETS_EXPORT FilterItem
{
public:
    using Children = std::vector<std::unique_ptr<FilterItem>>;

    explicit FilterItem(Nodes::NodeLink link = {}, FilterItem *parent = nullptr);
    ~FilterItem();

    /// The item of that node with all that are below it; null for a node that is no source and has
    /// none below it.
    static std::unique_ptr<FilterItem> createItem(const Nodes::NodeLink &link);

    const Nodes::NodeLink &getNodeLink() const { return m_link; }
    /// Null when it is gone.
    Nodes::ConfigNode *node() const { return m_link.GetNode(); }
    FilterItem *parent() const { return m_parent; }
    const Children &getChildren() const { return m_children; }
    FilterItem *child(int row) const { return m_children[std::size_t(row)].get(); }
    int childCount() const { return int(m_children.size()); }
    /// Place among the parent's children; 0 without a parent.
    int row() const;
    FilterItem *appendChild(std::unique_ptr<FilterItem> child);
    void removeChild(int row);
    /// This item or the one below it that stands for that node; null without one.
    FilterItem *find(unsigned long nodeId);

    Qt::CheckState checkState() const { return m_checkState; }
    void setCheckState(Qt::CheckState state) { m_checkState = state; }

    /// Its node is gone, but still is in the filter: the item goes when it is unticked.
    bool getSpecialDelete() const { return m_isSpecialDelete; }
    void setSpecialDelete(bool on) { m_isSpecialDelete = on; }

private:
    Nodes::NodeLink m_link;
    FilterItem *m_parent;
    Children m_children;
    Qt::CheckState m_checkState = Qt::Unchecked;
    bool m_isSpecialDelete = false;
};

} // namespace Widgets
