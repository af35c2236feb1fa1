#include "widgets/charts/zones/IntervalEditorManager.h"

#include "widgets/charts/multiaxis/MultiAxisPlot.h"
#include "widgets/charts/zones/EditedZone.h"

#include "nodes/charts/widgetChart.h"
#include "nodes/charts/widgetChartAxis.h"
#include "nodes/charts/widgetChartGroup.h"
#include "nodes/charts/widgetChartZone.h"

#include <qwt_scale_widget.h>

namespace Widgets {

IntervalEditorManager::IntervalEditorManager(MultiAxisPlot *plot, const QwtAxisId &axis,
                                             const std::vector<Nodes::widgetChartZone *> &zones)
{
    for (Nodes::widgetChartZone *zone : zones)
        m_zones.push_back(std::make_unique<EditedZone>(*plot, axis, *zone));
    if (const QwtScaleWidget *scale = plot->axisWidget(axis))
        connect(scale, &QwtScaleWidget::scaleDivChanged, this,
                &IntervalEditorManager::updateProperties);
    updateProperties();
}

IntervalEditorManager::~IntervalEditorManager() = default;

IntervalEditorManager *IntervalEditorManager::make(MultiAxisPlot *plot, const QwtAxisId &axis,
                                                   const Nodes::widgetChartAxis *node,
                                                   const Nodes::widgetChartGroup *group)
{
    if (!plot || !node || !group)
        return nullptr;
    const Nodes::NodesContainer axes = group->GetYAxes();
    const bool isFirst = !axes.empty() && axes.begin()->GetNode() == node;
    std::vector<Nodes::widgetChartZone *> own;
    for (const Nodes::NodeLink &link : group->GetZones()) {
        auto *zone = dynamic_cast<Nodes::widgetChartZone *>(link.GetNode());
        const Nodes::widgetChartAxis *wanted = zone ? zone->GetAxis() : nullptr;
        if (zone && (wanted ? wanted == node : isFirst))
            own.push_back(zone);
    }
    return own.empty() ? nullptr : new IntervalEditorManager(plot, axis, own);
}

void IntervalEditorManager::setEnable(bool isEnabled)
{
    m_isEnabled = isEnabled;
    updateProperties();
}

void IntervalEditorManager::updateProperties()
{
    for (const auto &zone : m_zones)
        zone->update(m_isEnabled);
}

} // namespace Widgets
