#include "nodes/visual/windows/BasicLayer.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo BasicLayer::Kind()
{
    return KindBuilder::For<BasicLayer>("layer", "Layer", "Слой")
        .Property<&BasicLayer::m_mode>(Prop::Mode, "Mode", "Режим")
        .Choice(ModeOpaque, "opaque", "Непрозрачный")
        .Choice(ModeTransparent, "transparent", "Прозрачный")
        .Property<&BasicLayer::m_zOrder>(Prop::ZOrder, "Z-order", "Порядок")
        .Range(-1000000, 1000000)
        .Property<&BasicLayer::m_isVisible>(Prop::Visible, "Visible", "Видимый")
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
