#include "widgets/charts/series/SerieFactory.h"

#include "widgets/charts/series/qwidgetChartCorridorSerie.h"
#include "widgets/charts/series/qwidgetChartDiscretSerie.h"
#include "widgets/charts/series/qwidgetChartHistorySerie.h"
#include "widgets/charts/series/qwidgetChartXYSerie.h"

#include "nodes/charts/widgetChartCorridorSerie.h"
#include "nodes/charts/widgetChartDiscretSerie.h"
#include "nodes/charts/widgetChartHistorySerie.h"
#include "nodes/charts/widgetChartXYSerie.h"
#include "nodes/kinds/KindRows.h"

namespace Widgets {

namespace {

using Row = Nodes::KindRow<ISerie *(*)(Nodes::widgetChartBasicSerie *, QObject *)>;

template <class Serie, class Node> ISerie *make(Nodes::widgetChartBasicSerie *node, QObject *parent)
{
    auto *typed = dynamic_cast<Node *>(node);
    return typed ? new Serie(typed, parent) : nullptr;
}

template <class Serie, class Node> constexpr Row draws()
{
    return {Node::Code, &make<Serie, Node>};
}

// clang-format off
constexpr Row rows[] = {
    draws<qwidgetChartHistorySerie, Nodes::widgetChartHistorySerie>(),
    draws<qwidgetChartDiscretSerie, Nodes::widgetChartDiscretSerie>(),
    draws<qwidgetChartXYSerie, Nodes::widgetChartXYSerie>(),
    draws<qwidgetChartCorridorSerie, Nodes::widgetChartCorridorSerie>(),
};
// clang-format on
static_assert(Nodes::AreDistinct(rows), "two series for one kind: look at their nodes");

} // namespace

ISerie *SerieFactory::create(Nodes::widgetChartBasicSerie *node, QObject *parent)
{
    const auto creator = node ? Nodes::FindCreator(rows, node->GetNodeType()) : nullptr;
    return creator ? creator(node, parent) : nullptr;
}

std::vector<unsigned> SerieFactory::codes()
{
    std::vector<unsigned> codes;
    for (const Row &row : rows)
        codes.push_back(row.code);
    return codes;
}

} // namespace Widgets
