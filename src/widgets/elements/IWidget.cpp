#include "widgets/elements/IWidget.h"

#include "nodes/visual/BasicWidget.h"

#include <utility>

IWidget::IWidget(Nodes::BasicWidget *node, Widgets::SceneContextPtr context)
    : m_node(node), m_context(std::move(context))
{
}

IWidget::~IWidget() = default;

void IWidget::setActive(bool on)
{
    if (on == m_isActive)
        return;
    m_isActive = on;
    isActiveChanged(on);
    // An element shows what its node can give, whether or not the node could start.
    if (Nodes::BasicWidget *node = m_node.unchecked())
        (void)(on ? node->Start() : node->Stop());
    onActive(on);
}
