#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/charts/multiaxis/QwtAxisId.h"

#include <QObject>

#include <memory>
#include <vector>

namespace Nodes {
class widgetChartAxis;
class widgetChartGroup;
class widgetChartZone;
} // namespace Nodes

namespace Widgets {

class EditedZone;
class MultiAxisPlot;

/// Zones of one value axis of a plot: bands behind the curves, with handles at those limits that
/// the current user may move. A limit follows the hand with its number beside it; letting go writes
/// it, Escape takes it back. GUI thread.
class WIDGETS_EXPORT IntervalEditorManager : public QObject
{
    Q_OBJECT

public:
    /// The plot outlives it, or is being destroyed with it.
    IntervalEditorManager(MultiAxisPlot *plot, const QwtAxisId &axis,
                          const std::vector<Nodes::widgetChartZone *> &zones);
    ~IntervalEditorManager() override;

    /// For the zones of `group` that belong to that axis node, which is `axis` on the plot; null
    /// without any. The caller owns it. Zones that name no axis belong to the first value axis.
    static IntervalEditorManager *make(MultiAxisPlot *plot, const QwtAxisId &axis,
                                       const Nodes::widgetChartAxis *node,
                                       const Nodes::widgetChartGroup *group);

    /// Whether limits may be taken hold of; the bands are always there.
    void setEnable(bool isEnabled);
    bool isEnabled() const { return m_isEnabled; }
    const std::vector<std::unique_ptr<EditedZone>> &zones() const { return m_zones; }

public slots:
    /// Places bands and handles anew: after a change of scale, size, limits or rights.
    void updateProperties();

private:
    std::vector<std::unique_ptr<EditedZone>> m_zones;
    bool m_isEnabled = true;
};

} // namespace Widgets
