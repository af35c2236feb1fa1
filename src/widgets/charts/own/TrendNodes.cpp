#include "widgets/charts/own/TrendNodes.h"

#include "widgets/charts/axes/SpanScaleEngine.h"
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
#include "nodes/values/NumberText.h"

#include <QLoggingCategory>

#include <algorithm>
#include <cmath>

namespace Widgets {

namespace {

void set(Nodes::ConfigNode &node, const char *key, const std::string &text)
{
    if (const Nodes::Result result = node.SetPropertyText(key, text); !result)
        qWarning("%s = %s: %s", key, text.c_str(), result.ToString().c_str());
}

constexpr int noiseDigits = 20; // of the last decimal

using Shared = std::vector<const Nodes::BasicSignal *>; // of one axis

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
    std::vector<Shared> shared;
    std::vector<std::size_t> places; // in it, of each signal
    for (const Nodes::NodeLink &link : shown) {
        const auto *signal = dynamic_cast<const Nodes::BasicSignal *>(link.GetNode());
        if (!signal)
            continue;
        const auto known = std::find_if(shared.begin(), shared.end(), [signal](const Shared &axis) {
            return axis.front()->GetUnit() == signal->GetUnit();
        });
        std::size_t place = std::size_t(known - shared.begin());
        if (known == shared.end() && int(shared.size()) == MaximumAxes)
            --place;
        shared.resize(std::max(shared.size(), place + 1));
        shared[place].push_back(signal);
        places.push_back(place);
    }
    std::vector<unsigned long> axes;
    for (const Shared &charted : shared) {
        Node axis = makeAxis(charted, axes.size() % 2 == 0);
        axes.push_back(axis->GetId());
        group->Append(std::move(axis));
    }
    std::vector<std::size_t> next(shared.size());
    for (std::size_t i = 0; i < places.size(); ++i) {
        const std::size_t place = places[i];
        addSerie(*group, *shared[place][next[place]++], axes[place], i);
    }
    return group;
}

// The range of the scale is that of all its signals: it says how far noise may be enlarged. Where
// nobody gave one, the last digits are noise.
TrendNodes::Node TrendNodes::makeAxis(const std::vector<const Nodes::BasicSignal *> &charted,
                                      bool isLeft) const
{
    const std::string &unit = charted.front()->GetUnit();
    std::string title = charted.size() == 1 ? NameOf(*charted.front()) : "Значения";
    if (!unit.empty())
        title += ", " + unit;
    double lower = charted.front()->GetMinimum();
    double upper = charted.front()->GetMaximum();
    int decimals = charted.front()->GetDecimals();
    for (const Nodes::BasicSignal *signal : charted) {
        decimals = std::min(decimals, signal->GetDecimals());
        lower = std::min(lower, signal->GetMinimum());
        upper = std::max(upper, signal->GetMaximum());
    }
    const Nodes::widgetChartAxis untold;
    if (decimals > 0 && lower == untold.GetMinimum() && upper == untold.GetMaximum())
        upper = lower + noiseDigits / SpanScaleEngine::LeastShare * std::pow(10, -decimals);
    Node axis = make(unsigned(Nodes::widgetChartAxis::Code), unit);
    set(*axis, "axisTitle", title);
    set(*axis, "from", Nodes::FormatDouble(lower));
    set(*axis, "to", Nodes::FormatDouble(upper));
    set(*axis, "format", "%." + std::to_string(decimals) + "f");
    set(*axis, "autoScale", "true");
    set(*axis, "position", isLeft ? "left" : "right");
    return axis;
}

std::string TrendNodes::NameOf(const Nodes::BasicSignal &signal)
{
    return signal.GetDescription().empty() ? signal.GetName() : signal.GetDescription();
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
    set(*serie, "text", NameOf(signal));
    set(*serie, "axisY", std::to_string(axis));
    set(*serie, "color", colors[number % colors.size()].name().toStdString());
    if (signal.GetValueType() == Nodes::enSignalValueType::Bool)
        set(*serie, "style", "steps");
    group.Append(std::move(source));
    group.Append(std::move(serie));
}

} // namespace Widgets
