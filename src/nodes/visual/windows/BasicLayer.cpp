#include "nodes/visual/windows/BasicLayer.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo BasicLayer::Kind()
{
    return KindBuilder::For<BasicLayer>(NodeType::SubtypeLayer, "layer", "Layer", "Слой")
        .Property<&BasicLayer::m_mode>(13001, "mode", "Mode", "Режим")
        .Choice(ModeOpaque, "opaque", "Непрозрачный")
        .Choice(ModeTransparent, "transparent", "Прозрачный")
        .Property<&BasicLayer::m_zOrder>(13002, "zOrder", "Z-order", "Порядок")
        .Property<&BasicLayer::m_isVisible>(13003, "visible", "Visible", "Видимый")
        .Children({NodeType::TypeWidget});
}

NodesArray BasicLayer::GetWidgets() const
{
    NodesArray widgets;
    for (const ConfigNode *widget : GetObjects(NodeType::TypeWidget))
        widgets.push_back(widget);
    return widgets;
}

} // namespace Nodes
