#pragma once

#include "nodes/model/NodesCollection.h"

#include <mutex>

namespace Nodes {

/// The answer of a search through a project's tree, kept until a node enters or leaves the tree.
/// Any thread; the node found lives as long as it would without.
template <class Node> class TreeAnswer
{
public:
    /// `search` is called without a lock. Its answer may depend on nothing but the tree; what it
    /// does depend on besides calls for Forget.
    template <class Search> Node *Get(const NodesCollection &project, Search search) const
    {
        // Read first: an answer that was overtaken by a change is then an old one.
        const Key key{project.GetToken(), project.GetRevision(), true};
        {
            const std::lock_guard lock(m_mutex);
            if (key == m_key)
                return m_found;
        }
        Node *found = search();
        const std::lock_guard lock(m_mutex);
        m_key = key;
        m_found = found;
        return found;
    }
    void Forget()
    {
        const std::lock_guard lock(m_mutex);
        m_key = {};
    }

private:
    struct Key
    {
        unsigned long project = 0;
        unsigned long revision = 0;
        bool isKnown = false;

        bool operator==(const Key &o) const
        {
            return project == o.project && revision == o.revision && isKnown == o.isKnown;
        }
    };

    mutable std::mutex m_mutex;
    mutable Key m_key;
    mutable Node *m_found = nullptr;
};

} // namespace Nodes
