#include "editor/wizard/TrendRecipe.h"

#include "editor/wizard/NodeRecipe.h"

#include "nodes/archive/archiverSourceConnector.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/signals/BasicSignal.h"
#include "utils/undo/AddNodeLinkCommand.h"

#include <QVector>

#include <algorithm>
#include <string>

namespace Editor {

namespace {

// Dark enough for thin lines on a light ground, and no colour of an alarm.
constexpr const char *colors[] = {"#2f5f8f", "#8f4f2f", "#3f7a4a", "#7a3f7a",
                                  "#806a10", "#2f7a7a", "#5a4a8f", "#5a5a5a"};

struct Curve
{
    const Nodes::BasicSignal *signal;
    Nodes::NodeLink source;
    int axis;
};

struct Scale
{
    std::string unit;
    double from;
    double to;
    bool hasRange;
};

bool isMeasurement(const Nodes::BasicSignal &signal)
{
    const auto type = signal.GetValueType();
    return type != Nodes::enSignalValueType::Bool && type != Nodes::enSignalValueType::String;
}

/// The scale of the signal's unit, widened to its range; -1 where no further scale has room.
int scaleOf(const Nodes::BasicSignal &signal, QVector<Scale> &scales)
{
    const bool hasRange = signal.GetMinimum() < signal.GetMaximum();
    for (int i = 0; i < scales.size(); ++i) {
        Scale &scale = scales[i];
        if (scale.unit != signal.GetUnit() || scale.hasRange != hasRange)
            continue;
        scale.from = std::min(scale.from, signal.GetMinimum());
        scale.to = std::max(scale.to, signal.GetMaximum());
        return i;
    }
    if (scales.size() == TrendRecipe::AxesAtMost)
        return -1;
    scales.append({signal.GetUnit(), signal.GetMinimum(), signal.GetMaximum(), hasRange});
    return scales.size() - 1;
}

QVector<Curve> archived(const Nodes::NodesCollection &project, QVector<Scale> &scales)
{
    Nodes::NodeLinks sources;
    project.FindNodes(Nodes::NodeType(Nodes::archiverSourceConnector::Code), &sources);
    QVector<Curve> curves;
    for (const Nodes::NodeLink &link : sources) {
        const auto *source = dynamic_cast<const Nodes::archiverSourceConnector *>(link.GetNode());
        const Nodes::BasicSignal *signal =
            source ? dynamic_cast<const Nodes::BasicSignal *>(source->GetSource()) : nullptr;
        if (!signal || !isMeasurement(*signal) || curves.size() == TrendRecipe::SeriesAtMost)
            continue;
        if (const int axis = scaleOf(*signal, scales); axis >= 0)
            curves.append({signal, link, axis});
    }
    return curves;
}

NodeRecipe axisOf(const Scale &scale, int number)
{
    const QString unit = QString::fromStdString(scale.unit);
    NodeRecipe axis(QStringLiteral("chartAxis"),
                    unit.isEmpty() ? QStringLiteral("Ось %1").arg(number + 1) : unit);
    axis.set(QStringLiteral("axisTitle"), unit);
    if (number % 2)
        axis.set(QStringLiteral("position"), QStringLiteral("right"));
    if (scale.hasRange)
        axis.set(QStringLiteral("labelFormat"),
                 scale.to - scale.from < 20 ? QStringLiteral("%.1f") : QStringLiteral("%.0f"))
            .set(QStringLiteral("from"), QString::number(scale.from))
            .set(QStringLiteral("to"), QString::number(scale.to));
    return axis;
}

} // namespace

void TrendRecipe::fill(Nodes::NodesCollection &project, const Nodes::NodeLink &chart,
                       QUndoCommand *group)
{
    const auto add = [&project, group](const NodeRecipe &recipe, const Nodes::NodeLink &parent) {
        const Nodes::NodeLink made = recipe.make(project);
        new Utils::AddNodeLinkCommand(made, parent, group);
        return made;
    };
    QVector<Scale> scales;
    const QVector<Curve> curves = archived(project, scales);
    const Nodes::NodeLink plot =
        add(NodeRecipe(QStringLiteral("chartGroup"), QStringLiteral("Измерения")), chart);
    NodeRecipe time(QStringLiteral("chartTimeAxis"), QStringLiteral("Время"));
    time.set(QStringLiteral("labelFormat"), QStringLiteral("hh:mm:ss"));
    time.set(QStringLiteral("length"), 10)
        .set(QStringLiteral("lengthUnit"), QStringLiteral("minutes"));
    add(time, plot);
    Nodes::NodeLinks axes;
    for (int i = 0; i < std::max(1, scales.size()); ++i)
        axes.push_back(add(axisOf(scales.value(i, {{}, 0, 0, false}), i), plot));
    for (int i = 0; i < curves.size(); ++i) {
        const Curve &curve = curves[i];
        const std::string &text = curve.signal->GetDescription();
        NodeRecipe serie(QStringLiteral("chartSerie"), QStringLiteral("Ряд %1").arg(i + 1));
        serie.set(QStringLiteral("signal"), Nodes::NodeLink(curve.signal))
            .set(QStringLiteral("source"), curve.source)
            .set(QStringLiteral("text"),
                 QString::fromStdString(text.empty() ? curve.signal->GetName() : text))
            .set(QStringLiteral("color"), QLatin1String(colors[i]))
            .set(QStringLiteral("axisY"), axes[std::size_t(curve.axis)]);
        add(serie, plot);
    }
}

} // namespace Editor
