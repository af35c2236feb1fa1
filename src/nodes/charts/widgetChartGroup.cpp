#include "nodes/charts/widgetChartGroup.h"

#include "nodes/charts/widgetChartBasicSerie.h"
#include "nodes/charts/widgetChartCorridorSerie.h"
#include "nodes/charts/widgetChartDiscretSerie.h"
#include "nodes/charts/widgetChartHistorySerie.h"
#include "nodes/charts/widgetChartTimeAxis.h"
#include "nodes/charts/widgetChartXYSerie.h"
#include "nodes/charts/widgetChartZone.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"

namespace Nodes {

namespace {

void addStyles(KindBuilder &builder)
{
    builder.Choice(NPen::None, "none", "Нет")
        .Choice(NPen::Solid, "solid", "Сплошная")
        .Choice(NPen::Dash, "dash", "Штриховая")
        .Choice(NPen::Dot, "dot", "Пунктирная")
        .Choice(NPen::DashDot, "dashDot", "Штрихпунктирная");
}

template <class Node> NodeLinks childrenOf(const ConfigNode &parent)
{
    NodeLinks links;
    for (const auto &child : parent.Children()) {
        if (dynamic_cast<const Node *>(child.get()))
            links.push_back(child->GetNodeLink());
    }
    return links;
}

} // namespace

KindInfo widgetChartGroup::Kind()
{
    using Group = widgetChartGroup;
    KindBuilder builder = KindBuilder::For<Group>("chartGroup", "Chart group", "Группа графика");
    builder.Property<&Group::m_backgroundColor>(Prop::Background, "Background", "Цвет фона")
        .Property<&Group::m_majorX>(Prop::MajorX, "Major X lines", "Основная сетка X")
        .Property<&Group::m_majorY>(Prop::MajorY, "Major Y lines", "Основная сетка Y")
        .Property<&Group::m_minorX>(Prop::MinorX, "Minor X lines", "Вспомогательная сетка X")
        .Property<&Group::m_minorY>(Prop::MinorY, "Minor Y lines", "Вспомогательная сетка Y")
        .Property<&Group::m_majorColor>(Prop::MajorColor, "Major colour", "Цвет основной сетки")
        .Property<&Group::m_majorWidth>(Prop::MajorWidth, "Major width", "Толщина основной сетки")
        .Range(0, 16)
        .Property<&Group::m_majorStyle>(Prop::MajorStyle, "Major style", "Линия основной сетки");
    addStyles(builder);
    builder
        .Property<&Group::m_minorColor>(Prop::MinorColor, "Minor colour",
                                        "Цвет вспомогательной сетки")
        .Property<&Group::m_minorWidth>(Prop::MinorWidth, "Minor width",
                                        "Толщина вспомогательной сетки")
        .Range(0, 16)
        .Property<&Group::m_minorStyle>(Prop::MinorStyle, "Minor style",
                                        "Линия вспомогательной сетки");
    addStyles(builder);
    return builder.Children(
        {NodeType(widgetChartAxis::Code), NodeType(widgetChartTimeAxis::Code),
         NodeType(widgetChartHistorySerie::Code), NodeType(widgetChartDiscretSerie::Code),
         NodeType(widgetChartXYSerie::Code), NodeType(widgetChartCorridorSerie::Code),
         NodeType(widgetChartZone::Code)});
}

NodesContainer widgetChartGroup::axes(bool areX) const
{
    NodesContainer found;
    for (const auto &child : Children()) {
        const auto *axis = dynamic_cast<const widgetChartAxis *>(child.get());
        if (axis && axis->IsX() == areX)
            found.Add(axis->GetNodeLink());
    }
    return found;
}

NodeLinks widgetChartGroup::GetSeries() const
{
    return childrenOf<widgetChartBasicSerie>(*this);
}

NodeLinks widgetChartGroup::GetZones() const
{
    return childrenOf<widgetChartZone>(*this);
}

void widgetChartGroup::Validate(ValidationResults &results) const
{
    ConfigNode::Validate(results);
    const auto require = [&](bool isThere, const char *what, const char *told) {
        if (!isThere)
            results.Add(GetNodeLink(), Result(this, Result::NotFound, what),
                        "Группа «" + GetPath() + "»: " + told);
    };
    require(!GetXAxes().empty(), "chartTimeAxis", "нет оси X. Добавьте ось времени или значений.");
    require(!GetYAxes().empty(), "chartAxis", "нет оси Y. Добавьте ось значений.");
}

} // namespace Nodes
