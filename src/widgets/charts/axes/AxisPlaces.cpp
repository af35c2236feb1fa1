#include "widgets/charts/axes/AxisPlaces.h"

#include "nodes/charts/widgetChartAxis.h"
#include "nodes/charts/widgetChartGroup.h"
#include "nodes/charts/widgetChartTimeAxis.h"
#include "nodes/model/NodesContainer.h"

#include <algorithm>
#include <array>

namespace Widgets::AxisPlaces {

namespace {

using Axis = Nodes::widgetChartAxis;

Axis *axisOf(const Nodes::NodeLink &link)
{
    return dynamic_cast<Axis *>(link.GetNode());
}

bool isValueX(const Nodes::NodeLink &link)
{
    const Axis *axis = axisOf(link);
    return axis && axis->IsX() && !isTime(*axis);
}

// The window of a plot is that of its bottom axis, so times always stand there.
int sideOf(const Axis &axis)
{
    if (isTime(axis))
        return QwtAxis::xBottom;
    switch (axis.GetPosition()) {
    case Axis::PositionRight:
        return QwtAxis::yRight;
    case Axis::PositionBottom:
        return QwtAxis::xBottom;
    case Axis::PositionTop:
        return QwtAxis::xTop;
    case Axis::PositionLeft:
        break;
    }
    return QwtAxis::yLeft;
}

} // namespace

bool isTime(const Axis &axis)
{
    return axis.GetNodeType().GetSubtype() == Nodes::widgetChartTimeAxis::Code;
}

void forEach(const Nodes::NodesContainer &axes, const Use &use)
{
    std::array<int, QwtAxis::PosCount> counts{};
    const bool isXY = std::any_of(axes.begin(), axes.end(), isValueX);
    for (const Nodes::NodeLink &link : axes) {
        Axis *axis = axisOf(link);
        if (!axis || (isXY && isTime(*axis)))
            continue;
        const int side = sideOf(*axis);
        use(*axis, QwtAxisId(side, counts[std::size_t(side)]++));
    }
}

QwtAxisId idOf(const Nodes::widgetChartGroup *group, const Axis *axis, bool isX)
{
    QwtAxisId first;
    QwtAxisId found;
    if (group) {
        forEach(isX ? group->GetXAxes() : group->GetYAxes(), [&](const Axis &one, QwtAxisId id) {
            if (first.pos < 0)
                first = id;
            if (&one == axis)
                found = id;
        });
    }
    if (found.pos >= 0)
        return found;
    return first.pos >= 0 ? first : QwtAxisId(isX ? QwtAxis::xBottom : QwtAxis::yLeft);
}

Axis *nodeOf(const Nodes::widgetChartGroup *group, QwtAxisId axis)
{
    Axis *node = nullptr;
    if (group) {
        forEach(axis.isXAxis() ? group->GetXAxes() : group->GetYAxes(),
                [&](Axis &one, QwtAxisId id) { node = id == axis ? &one : node; });
    }
    return node;
}

} // namespace Widgets::AxisPlaces
