#include "editor/workspace/DocumentView.h"

#include "nodes/model/ConfigNode.h"

namespace Editor {

DocumentView::DocumentView(Workspace &workspace, const Nodes::NodeLink &node, QWidget *parent)
    : QWidget(parent), m_workspace(workspace), m_node(node)
{
}

DocumentView::~DocumentView() = default;

QString DocumentView::title() const
{
    const Nodes::ConfigNode *shown = m_node.GetNode();
    return shown ? QString::fromStdString(shown->GetName()) : QString();
}

QIcon DocumentView::icon() const
{
    return {};
}

bool DocumentView::reveal(const Nodes::NodeLink &)
{
    return false;
}

} // namespace Editor
