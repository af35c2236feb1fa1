#include "editor/review/ReviewScreen.h"

#include "nodes/visual/windows/BasicComposition.h"
#include "nodes/visual/windows/BasicLayer.h"
#include "nodes/visual/windows/BasicWindow.h"
#include "nodes/visual/windows/windowComposed.h"
#include "utils/convert/ValueConversions.h"

#include <algorithm>

namespace Editor {

using Nodes::ConfigNode;

namespace {

void collect(const ConfigNode &node, Nodes::NodeLinks &screens)
{
    if (ReviewScreen::isScreen(node))
        screens.push_back(Nodes::NodeLink(&node));
    for (const auto &child : node.Children())
        collect(*child, screens);
}

} // namespace

bool ReviewScreen::isScreen(const ConfigNode &node)
{
    return dynamic_cast<const Nodes::BasicComposition *>(&node) ||
           (dynamic_cast<const Nodes::BasicWindow *>(&node) &&
            !dynamic_cast<const Nodes::windowComposed *>(&node));
}

Nodes::NodeLinks ReviewScreen::screensBelow(const ConfigNode &root)
{
    Nodes::NodeLinks screens;
    collect(root, screens);
    return screens;
}

ReviewScreen::ReviewScreen(const ConfigNode &screen)
    : m_node(screen), m_background(Utils::NColorToQColor(Nodes::BasicWindow().GetBackgroundColor()))
{
    using Prop = Nodes::BasicWindow::Prop;
    m_size =
        QSize(valueOf(screen, Prop::Width).value_or(0), valueOf(screen, Prop::Height).value_or(0));
    if (const auto background = valueOf(screen, Prop::Background))
        m_background = Utils::NColorToQColor(*background);
    addElements(screen);
    std::vector<const Nodes::BasicLayer *> layers;
    for (const auto &child : screen.Children()) {
        const auto *layer = dynamic_cast<const Nodes::BasicLayer *>(child.get());
        if (layer && layer->isVisible())
            layers.push_back(layer);
    }
    std::stable_sort(layers.begin(), layers.end(),
                     [](const auto *a, const auto *b) { return a->GetZOrder() < b->GetZOrder(); });
    for (const Nodes::BasicLayer *layer : layers)
        addElements(*layer);
}

void ReviewScreen::addElements(const ConfigNode &owner)
{
    const int first = m_elements.size();
    for (const auto &child : owner.Children()) {
        const auto *element = dynamic_cast<const Nodes::BasicWidget *>(child.get());
        if (element && element->isVisible())
            m_elements.append({element, Utils::NRectToQRect(element->GetGeometry())});
    }
    std::stable_sort(m_elements.begin() + first, m_elements.end(),
                     [](const ReviewElement &a, const ReviewElement &b) {
                         return a.node->GetZOrder() < b.node->GetZOrder();
                     });
}

QColor ReviewScreen::surfaceOf(int element) const
{
    const QPoint middle = m_elements[element].rect.center();
    for (int i = element; i >= 0; --i) {
        if (!m_elements[i].rect.contains(middle))
            continue;
        const auto background = valueOf(*m_elements[i].node, Nodes::BackgroundProp::Background);
        if (background && background->alpha > 127)
            return QColor(background->red, background->green, background->blue);
    }
    return m_background;
}

} // namespace Editor
