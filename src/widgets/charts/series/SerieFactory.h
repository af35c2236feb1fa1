#pragma once

#include "widgets/WidgetsExport.h"

#include <vector>

class QObject;

namespace Nodes {
class widgetChartBasicSerie;
}

namespace Widgets {

class ISerie;

/// The kinds of series: one row each by the code of their node.
class WIDGETS_EXPORT SerieFactory
{
public:
    /// Owned by `parent`; null for no node and for a kind that nothing draws.
    static ISerie *create(Nodes::widgetChartBasicSerie *node, QObject *parent);
    /// Kinds of nodes that are drawn.
    static std::vector<unsigned> codes();
};

} // namespace Widgets
