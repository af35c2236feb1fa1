#include "widgets/scene/editing/NewCharts.h"

#include "nodes/charts/widgetChart.h"
#include "nodes/charts/widgetChartAxis.h"
#include "nodes/charts/widgetChartGroup.h"
#include "nodes/charts/widgetChartTimeAxis.h"
#include "nodes/charts/widgetChartXY.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/NodesCollection.h"

namespace Widgets::NewCharts {

namespace {

template <class Node> Node *add(Nodes::ConfigNode &parent, const char *name)
{
    Nodes::NodesCollection *project = parent.GetNodesCollection();
    auto *node =
        project ? dynamic_cast<Node *>(project->CreateNode(Node::Kind().type, &parent)) : nullptr;
    if (node)
        node->SetName(name);
    return node;
}

} // namespace

void complete(Nodes::ConfigNode &element)
{
    if (!dynamic_cast<Nodes::widgetChart *>(&element))
        return;
    auto *group = add<Nodes::widgetChartGroup>(element, "Группа");
    if (!group)
        return;
    if (dynamic_cast<Nodes::widgetChartXY *>(&element)) {
        if (auto *across = add<Nodes::widgetChartAxis>(*group, "Ось X"))
            (void)across->SetPropertyText("position", "bottom");
    } else {
        (void)add<Nodes::widgetChartTimeAxis>(*group, "Время");
    }
    (void)add<Nodes::widgetChartAxis>(*group, "Ось Y");
}

} // namespace Widgets::NewCharts
