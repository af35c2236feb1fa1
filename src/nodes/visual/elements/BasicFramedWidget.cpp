#include "nodes/visual/elements/BasicFramedWidget.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

void BasicFramedWidget::DescribeFrame(KindBuilder &builder)
{
    builder
        .Property<&BasicFramedWidget::m_backgroundColor>(Prop::Background, "Background",
                                                         "Цвет фона")
        .Property<&BasicFramedWidget::m_borderColor>(Prop::BorderColor, "Border colour",
                                                     "Цвет рамки")
        .Property<&BasicFramedWidget::m_borderWidth>(Prop::BorderWidth, "Border width",
                                                     "Толщина рамки")
        .Range(0, 64);
}

void BasicFramedWidget::Describe(KindBuilder &builder)
{
    builder.Inherit<BasicWidget>();
    DescribeFrame(builder);
}

} // namespace Nodes
