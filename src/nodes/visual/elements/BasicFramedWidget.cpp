#include "nodes/visual/elements/BasicFramedWidget.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

void BasicFramedWidget::DescribeFrame(KindBuilder &builder)
{
    builder
        .Property<&BasicFramedWidget::m_backgroundColor>(12231, "background", "Background",
                                                         "Цвет фона")
        .Property<&BasicFramedWidget::m_borderColor>(12232, "borderColor", "Border colour",
                                                     "Цвет рамки")
        .Property<&BasicFramedWidget::m_borderWidth>(12233, "borderWidth", "Border width",
                                                     "Толщина рамки")
        .Range(0, 64);
}

void BasicFramedWidget::Describe(KindBuilder &builder)
{
    builder.Inherit<BasicWidget>();
    DescribeFrame(builder);
}

} // namespace Nodes
