#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/model/links/NodeLink.h"

#include <memory>
#include <string>
#include <vector>

namespace Nodes {
class BasicSignal;
class ConfigNode;
class NodesCollection;
class widgetChartHistory;
} // namespace Nodes

namespace Widgets {

/// Nodes of a trend that nobody configured: a chart with a series for each signal and an axis for
/// each unit. They are in no tree and never saved, and go with this object. GUI thread.
class WIDGETS_EXPORT TrendNodes
{
public:
    /// Different units that get axes of their own; the signals of others share the last one.
    static constexpr int MaximumAxes = 4;

    TrendNodes(Nodes::NodesCollection &project, const std::string &name,
               const Nodes::NodeLinks &shown);
    ~TrendNodes();
    TrendNodes(const TrendNodes &) = delete;
    TrendNodes &operator=(const TrendNodes &) = delete;

    /// What operators call a signal: its description, or its name if it has none.
    static std::string NameOf(const Nodes::BasicSignal &signal);

    /// Null when ids run into each other, or once the project has gone.
    Nodes::widgetChartHistory *chart() const;

private:
    using Node = std::unique_ptr<Nodes::ConfigNode>;

    Node make(unsigned code, const std::string &name) const;
    Node makeGroup(const std::string &name, const Nodes::NodeLinks &shown) const;
    /// For signals of one unit.
    Node makeAxis(const std::vector<const Nodes::BasicSignal *> &charted, bool isLeft) const;
    void addSerie(Nodes::ConfigNode &group, const Nodes::BasicSignal &signal, unsigned long axis,
                  std::size_t number) const;

    Nodes::NodesCollection &m_project;
    Nodes::NodeLink m_chart;
};

} // namespace Widgets
