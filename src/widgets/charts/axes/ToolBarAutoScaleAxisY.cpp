#include "widgets/charts/axes/ToolBarAutoScaleAxisY.h"

namespace Widgets {

ToolBarAutoScaleAxisY::ToolBarAutoScaleAxisY(Nodes::widgetChart *chart, QWidget *parent)
    : ToolBarAutoScale(chart, QStringLiteral(":/icons/autoscaleY.png"),
                       tr("Автомасштаб по вертикали"), parent)
{
}

} // namespace Widgets
