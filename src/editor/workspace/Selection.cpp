#include "editor/workspace/Selection.h"

namespace Editor {

void Selection::select(const Nodes::NodeLinks &nodes, QObject *by)
{
    m_by = by;
    if (nodes == m_nodes)
        return;
    m_nodes = nodes;
    const Nodes::NodeLinks told = m_nodes; // a slot may select something else
    emit changed(told, by);
}

} // namespace Editor
