#include "nodes/visual/elements/widgetImage.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

void widgetImage::DescribeLook(KindBuilder &builder)
{
    builder.Inherit<BasicWidget>()
        .Property<&widgetImage::m_isAnimated>(Prop::Animated, "Animated", "Анимация")
        .Property<&widgetImage::m_backgroundColor>(Prop::Background, "Background", "Цвет фона")
        .Property<&widgetImage::m_borderColor>(Prop::BorderColor, "Border colour", "Цвет рамки")
        .Property<&widgetImage::m_borderWidth>(Prop::BorderWidth, "Border width", "Толщина рамки")
        .Range(0, 64)
        .Property<&widgetImage::m_angle>(Prop::Angle, "Angle, degrees", "Угол поворота, °")
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
