#pragma once

#include "widgets/charts/elements/qwidgetChartBasic.h"

namespace Nodes {
class widgetChartXY;
}

namespace Widgets {

/// Signals over signals: element of a Nodes::widgetChartXY. GUI thread.
class WIDGETS_EXPORT qwidgetChartXY : public qwidgetChartBasic
{
    Q_OBJECT

public:
    using Node = Nodes::widgetChartXY;

    qwidgetChartXY(Nodes::widgetChartXY *node, QWidget *parent,
                   const SceneContextPtr &context = SceneContext::process());
};

} // namespace Widgets
