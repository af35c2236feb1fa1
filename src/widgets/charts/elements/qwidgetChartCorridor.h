#pragma once

#include "widgets/charts/elements/qwidgetChartBasic.h"

namespace Nodes {
class widgetChartCorridor;
}

namespace Widgets {

/// Trend of tubes: element of a Nodes::widgetChartCorridor. GUI thread.
class WIDGETS_EXPORT qwidgetChartCorridor : public qwidgetChartBasic
{
    Q_OBJECT

public:
    using Node = Nodes::widgetChartCorridor;

    qwidgetChartCorridor(Nodes::widgetChartCorridor *node, QWidget *parent,
                         const SceneContextPtr &context = SceneContext::process());
};

} // namespace Widgets
