#pragma once

#include "nodes/model/links/ResourceLink.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/visual/SharedProperties.h"
#include "nodes/visual/elements/BasicFramedWidget.h"

namespace Nodes {

/// A picture of the project, still or animated.
class NODES_EXPORT widgetImage : public BasicFramedWidget
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x15002);
    /// Of everything but the picture itself, which other kinds have otherwise.
    struct LookProp : BasicFramedWidget::Prop, AngleProp
    {
        static constexpr PropertyId<bool> Animated{12251, "animated"};
    };
    struct Prop : LookProp, PictureProp
    {
    };

    static KindInfo Kind();

    /// File shown now; its path is empty when there is none.
    virtual ResourceLink GetCurrentImage() const { return m_image; }
    bool isAnimated() const { return m_isAnimated; }
    /// Degrees, clockwise, about the centre.
    double GetAngle() const { return m_angle; }

protected:
    /// Everything but the picture itself.
    static void DescribeLook(KindBuilder &builder);
    static void Describe(KindBuilder &builder);
    friend class KindBuilder;

private:
    ResourceLink m_image;
    bool m_isAnimated = false;
    double m_angle = 0;
};

} // namespace Nodes
