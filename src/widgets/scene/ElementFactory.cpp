#include "widgets/scene/ElementFactory.h"

#include "widgets/alarmlist/qwidgetAlarmList.h"
#include "widgets/charts/elements/qwidgetChartCorridor.h"
#include "widgets/charts/elements/qwidgetChartHistory.h"
#include "widgets/charts/elements/qwidgetChartXY.h"
#include "widgets/elements/alarms/qwidgetAlarmBanner.h"
#include "widgets/elements/health/qwidgetAlarmHealth.h"
#include "widgets/elements/qwidgetBargraph.h"
#include "widgets/elements/qwidgetButton.h"
#include "widgets/elements/qwidgetCheckBox.h"
#include "widgets/elements/qwidgetComboBox.h"
#include "widgets/elements/qwidgetEditBox.h"
#include "widgets/elements/qwidgetImage.h"
#include "widgets/elements/qwidgetLabel.h"
#include "widgets/elements/qwidgetMovingImage.h"
#include "widgets/elements/qwidgetMultiImage.h"
#include "widgets/elements/qwidgetMultiLabel.h"
#include "widgets/elements/qwidgetRecorderDigitalDisplay.h"
#include "widgets/elements/symbols/qwidgetSymbol.h"
#include "widgets/eventlist/WidgetEvent.h"
#include "widgets/reports/display/qwidgetReportDisplay.h"
#include "widgets/scene/instances/InstanceElement.h"

#include "nodes/charts/widgetChartCorridor.h"
#include "nodes/charts/widgetChartHistory.h"
#include "nodes/charts/widgetChartXY.h"
#include "nodes/kinds/KindRows.h"
#include "nodes/templates/widgetInstance.h"
#include "nodes/visual/elements/widgetAlarmBanner.h"
#include "nodes/visual/elements/widgetAlarmHealth.h"
#include "nodes/visual/elements/widgetAlarmList.h"
#include "nodes/visual/elements/widgetBargraph.h"
#include "nodes/visual/elements/widgetButton.h"
#include "nodes/visual/elements/widgetCheckBox.h"
#include "nodes/visual/elements/widgetComboBox.h"
#include "nodes/visual/elements/widgetEditBox.h"
#include "nodes/visual/elements/widgetMovingImage.h"
#include "nodes/visual/elements/widgetMultiImage.h"
#include "nodes/visual/elements/widgetMultiLabel.h"
#include "nodes/visual/elements/widgetRecorderDigitalDisplay.h"
#include "nodes/visual/elements/widgetSymbol.h"

#include <type_traits>

namespace Widgets {

namespace {

using Row = Nodes::KindRow<QWidget *(*)(Nodes::BasicWidget *, QGraphicsProxyWidget *,
                                        const SceneContextPtr &)>;

template <class Element, class = void> constexpr bool keepsHost = false;
template <class Element>
constexpr bool keepsHost<Element, std::void_t<decltype(&Element::setProxy)>> = true;

template <class Element>
QWidget *make(Nodes::BasicWidget *node, [[maybe_unused]] QGraphicsProxyWidget *host,
              const SceneContextPtr &context)
{
    auto *typed = dynamic_cast<typename Element::Node *>(node);
    if (!typed)
        return nullptr;
    auto *element = new Element(typed, nullptr, context);
    if constexpr (keepsHost<Element>)
        element->setProxy(host);
    return element;
}

/// Element::Node is the node class that the element shows; its code stands there.
template <class Element> constexpr Row shows()
{
    static_assert(std::is_base_of_v<Nodes::BasicWidget, typename Element::Node>);
    static_assert(std::is_base_of_v<IWidget, Element>);
    return {Element::Node::Code, &make<Element>};
}

// One a line, so that a new one touches no other.
// clang-format off
constexpr Row rows[] = {
    shows<qwidgetLabel>(),
    shows<qwidgetImage>(),
    shows<qwidgetButton>(),
    shows<qwidgetRecorderDigitalDisplay>(),
    shows<qwidgetBargraph>(),
    shows<qwidgetMultiLabel>(),
    shows<qwidgetMultiImage>(),
    shows<qwidgetMovingImage>(),
    shows<qwidgetEditBox>(),
    shows<qwidgetComboBox>(),
    shows<qwidgetCheckBox>(),
    shows<qwidgetChartHistory>(),
    shows<qwidgetChartCorridor>(),
    shows<qwidgetChartXY>(),
    shows<qwidgetAlarmBanner>(),
    shows<qwidgetAlarmList>(),
    shows<qwidgetAlarmHealth>(),
    shows<WidgetEvent>(),
    shows<qwidgetReportDisplay>(),
    shows<qwidgetSymbol>(),
    Row{Nodes::widgetInstance::Code, &makeInstanceElement},
};
// clang-format on
static_assert(Nodes::AreDistinct(rows), "two elements for one kind: look at their Node");

} // namespace

QWidget *ElementFactory::create(Nodes::BasicWidget *node, QGraphicsProxyWidget *host,
                                const SceneContextPtr &context)
{
    const auto creator = node ? Nodes::FindCreator(rows, node->GetNodeType()) : nullptr;
    return creator ? creator(node, host, context) : nullptr;
}

std::vector<unsigned> ElementFactory::codes()
{
    std::vector<unsigned> codes;
    for (const Row &row : rows)
        codes.push_back(row.code);
    return codes;
}

} // namespace Widgets
