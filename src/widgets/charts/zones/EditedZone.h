#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/charts/multiaxis/QwtAxisId.h"

#include "nodes/charts/widgetChartZone.h"
#include "nodes/values/Connection.h"
#include "utils/relay/QueueRelay.h"
#include "utils/relay/WatchedNode.h"

#include <QObject>
#include <QPointer>

#include <optional>

namespace Nodes {
class BasicSignal;
}

namespace Widgets {

class MultiAxisPlot;
class PlotHost;
class ZoneHandle;
class ZoneItem;

/// One zone on a plot: its band, and a handle at each limit that lives in a signal which the
/// current user may write. GUI thread.
class WIDGETS_EXPORT EditedZone : public QObject
{
    Q_OBJECT

public:
    EditedZone(MultiAxisPlot &plot, const QwtAxisId &axis, Nodes::widgetChartZone &zone);
    ~EditedZone() override;

    /// Band and handles as they have to be now.
    void update(bool isEnabled);
    /// Null where that limit is fixed.
    ZoneHandle *handle(bool isUpper) const;

private:
    struct Limit
    {
        QPointer<ZoneHandle> handle;
        Nodes::ScopedConnection connection;
        std::optional<double> dragged;
    };

    void connectLimit(bool isUpper);
    Nodes::BasicSignal *signal(bool isUpper) const;
    /// Null for a plot that is in no chart.
    PlotHost *host() const;
    /// Nothing while the signal of that limit does not say.
    std::optional<double> value(bool isUpper) const;
    bool mayMove(bool isUpper) const;
    void onDragged(bool isUpper, double y);
    void onDropped(bool isUpper);
    void onCancelled();
    /// To what can be written: the decimals and the range of the signal, and not past the other
    /// limit.
    double permitted(bool isUpper, double value) const;
    void refresh();
    void redraw();
    void placeHandle(bool isUpper);

    QPointer<MultiAxisPlot> m_plot;
    QwtAxisId m_axis;
    Utils::WatchedNode<Nodes::widgetChartZone> m_zone;
    ZoneItem *m_item; // the plot deletes it if it goes first
    Limit m_limits[2];
    Utils::QueueRelay<char> m_changes; // of limits; one waits at most
    bool m_isEnabled = false;
};

} // namespace Widgets
