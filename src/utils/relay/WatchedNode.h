#pragma once

#include "nodes/model/ConfigNode.h"

namespace Utils {

/// Pointer to a node that is not owned and may be deleted while it is shown: null from then on,
/// and good again when an undo puts the node back. Nodes outside of any project cannot be watched
/// and must outlive the pointer. GUI thread.
template <class Node> class WatchedNode
{
public:
    WatchedNode(Node *node = nullptr)
        : m_node(node), m_link(node), m_isIndexed(node && m_link.GetNode() == node)
    {
    }

    Node *get() const { return !m_isIndexed || m_link.GetNode() == m_node ? m_node : nullptr; }
    /// Whether or not it is still there: for those who know that it is, as while its removal is
    /// being announced.
    Node *unchecked() const { return m_node; }
    Node *operator->() const { return get(); }
    Node &operator*() const { return *get(); }
    explicit operator bool() const { return get() != nullptr; }

private:
    Node *m_node;
    Nodes::NodeLink m_link;
    bool m_isIndexed;
};

} // namespace Utils
