#include "nodes/visual/elements/widgetImage.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

void widgetImage::DescribeLook(KindBuilder &builder)
{
    builder.Inherit<BasicWidget>()
        .Property<&widgetImage::m_isAnimated>(12251, "animated", "Animated", "Анимация")
        .Property<&widgetImage::m_backgroundColor>(12231, "background", "Background", "Цвет фона")
        .Property<&widgetImage::m_borderColor>(12232, "borderColor", "Border colour", "Цвет рамки")
        .Property<&widgetImage::m_borderWidth>(12233, "borderWidth", "Border width",
                                               "Толщина рамки")
        .Range(0, 64)
        .Property<&widgetImage::m_angle>(12235, "angle", "Angle, degrees", "Угол поворота, °")
        .Range(-360, 360)
        .Hint("angle");
}

void widgetImage::Describe(KindBuilder &builder)
{
    DescribeLook(builder);
    builder.Property<&widgetImage::m_image>(12250, "image", "Picture", "Рисунок");
}

KindInfo widgetImage::Kind()
{
    return KindBuilder::For<widgetImage>(NodeType::enNodeSubtype(0x15002), "image", "Picture",
                                         "Рисунок")
        .Inherit<widgetImage>();
}

} // namespace Nodes
