#include "nodes/visual/elements/BasicTextWidget.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

void BasicTextWidget::DescribeFramedText(KindBuilder &builder)
{
    DescribeText(builder);
    DescribeFrame(builder);
}

void BasicTextWidget::Describe(KindBuilder &builder)
{
    builder.Inherit<BasicWidget>();
    DescribeFramedText(builder);
}

} // namespace Nodes
