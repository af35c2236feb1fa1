#pragma once

#include "widgets/charts/axes/ToolBarAutoScale.h"

namespace Widgets {

/// The axes along the bottom and the top.
class WIDGETS_EXPORT ToolBarAutoScaleAxisX : public ToolBarAutoScale
{
    Q_OBJECT

public:
    ToolBarAutoScaleAxisX(Nodes::widgetChart *chart, QWidget *parent);

protected:
    std::vector<Nodes::widgetChartAxis *> axes() const override { return groupAxes(true); }
};

} // namespace Widgets
