#include "widgets/elements/IWidget.h"

#include "widgets/elements/binding/PropertyBindings.h"

#include "nodes/visual/elements/BasicFramedWidget.h"
#include "utils/convert/ValueConversions.h"

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

const Widgets::PropertyBindings &IWidget::bindings() const
{
    return Widgets::PropertyBindings::ofEveryElement;
}

bool IWidget::takeOver(const Nodes::BasicWidget &node, const Nodes::BasicProperty *property)
{
    const Widgets::Then then = bindings().take(*this, node, property);
    if (then == Widgets::Then::Value)
        onValueUpdated(Nodes::SignalValue());
    return then != Widgets::Then::Nothing;
}

void IWidget::takeBorder(const Nodes::BasicFramedWidget &node)
{
    m_borderWidth = node.GetBorderWidth();
    m_borderColor = Utils::NColorToQColor(node.GetBorderColor());
}

void IWidget::takeBackground(const Nodes::BasicFramedWidget &node)
{
    m_backgroundColor = Utils::NColorToQColor(node.GetBackgroundColor());
}
