#pragma once

#include "widgets/charts/axes/ToolBarAutoScale.h"

namespace Widgets {

/// The axes at the left and the right.
class WIDGETS_EXPORT ToolBarAutoScaleAxisY : public ToolBarAutoScale
{
    Q_OBJECT

public:
    ToolBarAutoScaleAxisY(Nodes::widgetChart *chart, QWidget *parent);

protected:
    std::vector<Nodes::widgetChartAxis *> axes() const override { return groupAxes(false); }
};

} // namespace Widgets
