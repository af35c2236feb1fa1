#include "widgets/charts/axes/ToolBarAutoScaleAxisX.h"

namespace Widgets {

ToolBarAutoScaleAxisX::ToolBarAutoScaleAxisX(Nodes::widgetChart *chart, QWidget *parent)
    : ToolBarAutoScale(chart, QStringLiteral(":/icons/autoscaleX.png"),
                       tr("Автомасштаб по горизонтали"), parent)
{
}

} // namespace Widgets
