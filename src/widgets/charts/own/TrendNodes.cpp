#include "widgets/charts/own/TrendNodes.h"

#include "widgets/charts/legend/ColorDelegate.h"

#include "nodes/archive/archiverSourceConnector.h"
#include "nodes/charts/widgetChartAxis.h"
#include "nodes/charts/widgetChartGroup.h"
#include "nodes/charts/widgetChartHistory.h"
#include "nodes/charts/widgetChartHistorySerie.h"
#include "nodes/charts/widgetChartTimeAxis.h"
#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/signals/BasicSignal.h"

#include <QLoggingCategory>

#include <map>

namespace Widgets {

namespace {

void set(Nodes::ConfigNode &node, const char *key, const std::string &text)
{
    if (const Nodes::Result result = node.SetPropertyText(key, text); !result)
        qWarning("%s = %s: %s", key, text.c_str(), result.ToString().c_str());
}

} // namespace

TrendNodes::TrendNodes(Nodes::NodesCollection &project, const std::string &name,
                       const Nodes::NodeLinks &shown)
    : m_project(project)
{
    Node chart = make(unsigned(Nodes::widgetChartHistory::Code), name);
    set(*chart, "legendColumns", "visible color name cursor value minimum maximum unit");
    chart->Append(makeGroup(name, shown));
    const Nodes::NodeLink made(chart.get());
    if (project.HoldClone(chart, false))
        m_chart = made;
}

TrendNodes::~TrendNodes()
{
    if (Nodes::NodesCollection *project = m_chart.GetNodesCollection())
        project->TakeClone(m_chart);
}

Nodes::widgetChartHistory *TrendNodes::chart() const
{
    return dynamic_cast<Nodes::widgetChartHistory *>(m_chart.GetNode());
}

TrendNodes::Node TrendNodes::make(unsigned code, const std::string &name) const
{
    const Nodes::NodeType type{Nodes::NodeType::enNodeSubtype(code)};
    Node node = m_project.CreateDetached(*Nodes::KindTable::Instance().Find(type));
    node->SetName(name);
    return node;
}

TrendNodes::Node TrendNodes::makeGroup(const std::string &name, const Nodes::NodeLinks &shown) const
{
    Node group = make(unsigned(Nodes::widgetChartGroup::Code), name);
    Node time = make(unsigned(Nodes::widgetChartTimeAxis::Code), "Время");
    set(*time, "length", "1");
    set(*time, "lengthUnit", "hours");
    group->Append(std::move(time));
    std::map<std::string, unsigned long> axes; // by unit
    unsigned long last = 0;
    for (std::size_t i = 0; i < shown.size(); ++i) {
        const auto *signal = dynamic_cast<const Nodes::BasicSignal *>(shown[i].GetNode());
        if (!signal)
            continue;
        const auto known = axes.find(signal->GetUnit());
        if (known != axes.end()) {
            last = known->second;
        } else if (int(axes.size()) < MaximumAxes) {
            Node axis = make(unsigned(Nodes::widgetChartAxis::Code), signal->GetUnit());
            set(*axis, "axisTitle", signal->GetUnit());
            set(*axis, "autoScale", "true");
            set(*axis, "position", axes.size() % 2 == 0 ? "left" : "right");
            last = axis->GetId();
            axes.emplace(signal->GetUnit(), last);
            group->Append(std::move(axis));
        }
        addSerie(*group, *signal, last, i);
    }
    return group;
}

void TrendNodes::addSerie(Nodes::ConfigNode &group, const Nodes::BasicSignal &signal,
                          unsigned long axis, std::size_t number) const
{
    // Says whose history it is, also of a signal that is archived with a whole group of others.
    // Never started: it keeps nothing itself.
    Node source = make(unsigned(Nodes::archiverSourceConnector::Code), signal.GetName());
    set(*source, "signal", std::to_string(signal.GetId()));
    Node serie = make(unsigned(Nodes::widgetChartHistorySerie::Code), signal.GetName());
    const auto &colors = ColorDelegate::palette();
    set(*serie, "source", std::to_string(source->GetId()));
    set(*serie, "signal", std::to_string(signal.GetId()));
    set(*serie, "axisY", std::to_string(axis));
    set(*serie, "color", colors[number % colors.size()].name().toStdString());
    if (signal.GetValueType() == Nodes::enSignalValueType::Bool)
        set(*serie, "style", "steps");
    group.Append(std::move(source));
    group.Append(std::move(serie));
}

} // namespace Widgets
