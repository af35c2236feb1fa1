#include "widgets/scene/LayerStack.h"

#include "widgets/scene/ProxyLayer.h"

#include <algorithm>
#include <iterator>

namespace Widgets {

bool LayerStack::has(const Nodes::ConfigNode *node) const
{
    return std::any_of(m_layers.begin(), m_layers.end(),
                       [node](const ProxyLayer *layer) { return layer->getNode() == node; });
}

QList<ProxyLayer *> LayerStack::sorted() const
{
    QList<ProxyLayer *> visible;
    std::copy_if(m_layers.begin(), m_layers.end(), std::back_inserter(visible),
                 [](const ProxyLayer *layer) { return layer->isVisible() && layer->isHome(); });
    std::stable_sort(visible.begin(), visible.end(),
                     [](const ProxyLayer *a, const ProxyLayer *b) { return *a < *b; });
    return visible;
}

Nodes::ConfigNode *LayerStack::topmostNode() const
{
    const QList<ProxyLayer *> visible = sorted();
    return visible.isEmpty() ? nullptr : visible.last()->getNode();
}

// Which of several equal layers remain depends on their order in the list: after a removal the
// next layer slides into the place just looked at and is passed over. Pasting relies on it.
QList<ProxyLayer *> LayerStack::highest() const
{
    QList<ProxyLayer *> top;
    std::copy_if(m_layers.begin(), m_layers.end(), std::back_inserter(top),
                 [](const ProxyLayer *layer) { return layer->isHome(); });
    if (top.isEmpty())
        return top;
    ProxyLayer *maximum = top.first();
    for (int i = 0; i < top.size(); ++i) {
        ProxyLayer *layer = top.at(i);
        if (*layer < *maximum) {
            top.removeAt(i);
        } else if (*layer > *maximum) {
            top.removeOne(maximum);
            maximum = layer;
        }
    }
    return top;
}

} // namespace Widgets
