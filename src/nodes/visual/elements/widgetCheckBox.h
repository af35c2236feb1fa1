#pragma once

#include "nodes/model/links/ResourceLink.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/visual/elements/BasicFramedWidget.h"

namespace Nodes {

/// A mark that shows and switches an on/off signal.
class NODES_EXPORT widgetCheckBox : public BasicFramedWidget
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x1500F);
    struct Prop : BasicFramedWidget::Prop
    {
        static constexpr PropertyId<ResourceLink> Image{12180, "image"};
    };

    widgetCheckBox();
    static KindInfo Kind();
    void CollectDemands(AccessDemands &demands) const override;

    NColor GetFrameColor() const { return GetBorderColor(); }
    // The name is the interface's.
    NColor GetBackgroudColor() const { return GetBackgroundColor(); }
    /// Picture of the mark; without one a plain check mark is drawn.
    const ResourceLink &GetImage() const { return m_image; }

private:
    ResourceLink m_image;
};

} // namespace Nodes
