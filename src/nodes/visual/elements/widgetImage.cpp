#include "nodes/visual/elements/widgetImage.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

void widgetImage::DescribeLook(KindBuilder &builder)
{
    builder.Inherit<BasicWidget>().Property<&widgetImage::m_isAnimated>(Prop::Animated, "Animated",
                                                                        "Анимация");
    DescribeFrame(builder);
    builder.Property<&widgetImage::m_angle>(Prop::Angle, "Angle, degrees", "Угол поворота, °")
        .Range(-360, 360)
        .Hint("angle");
}

void widgetImage::Describe(KindBuilder &builder)
{
    DescribeLook(builder);
    builder.Property<&widgetImage::m_image>(Prop::Image, "Picture", "Рисунок");
}

KindInfo widgetImage::Kind()
{
    return KindBuilder::For<widgetImage>("image", "Picture", "Рисунок").Inherit<widgetImage>();
}

} // namespace Nodes
