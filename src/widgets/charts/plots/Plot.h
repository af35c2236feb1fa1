#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/charts/multiaxis/MultiAxisPlot.h"
#include "widgets/charts/plots/PlotHost.h"
#include "widgets/context/SceneContext.h"

#include "nodes/charts/widgetChart.h"
#include "nodes/values/SignalValue.h"
#include "utils/relay/WatchedNode.h"

#include <QList>
#include <QPixmap>
#include <QPointer>
#include <QTimer>

#include <qwt_interval.h>

#include <map>
#include <memory>
#include <optional>
#include <vector>

class QwtPlotDirectPainter;
class QwtPlotGrid;
class QwtPlotItem;
class QwtScaleDraw;

namespace Nodes {
class BasicProperty;
class NodesContainer;
class widgetChartAxis;
class widgetChartGroup;
} // namespace Nodes

Q_DECLARE_METATYPE(std::vector<Nodes::SignalValue>)

namespace Widgets {

class AxisRecord;
class ChartGroupManager;
class ISerie;
class IPickerCanvas;
class IntervalEditorManager;
class LiveFeed;
class PlotCanvas;
class PlotNote;
class PlotPanner;
class WaitBox;

/// Plot of a chart: the series of the current group that belong to it, on the axes of that group.
/// Live values reach it through appendPointsSignal and are drawn at most every 300 ms. What is
/// beyond live values, kinds of plots add. X values are those of ChartTime. GUI thread.
class WIDGETS_EXPORT Plot : public MultiAxisPlot, public PlotHost
{
    Q_OBJECT

public:
    static constexpr int LayoutDelay = 100; ///< ms
    static constexpr int ReplotDelay = 300; ///< ms
    static constexpr double Margin = 0.1;   ///< of the window's width, kept beyond either edge
    static constexpr int SerieRtti = 1003;  ///< of the plot items that are series

    /// `number` selects the series that belong to this plot. The node is not owned.
    Plot(Nodes::widgetChart *chart, int number, QWidget *parent);
    ~Plot() override;

    Nodes::widgetChart *chart() const { return m_chart.get(); }
    int number() const { return m_number; }
    PlotCanvas *plotCanvas() const { return m_canvas; }
    QwtPlotGrid *grid() const { return m_grid; }
    /// Null while presses are for the panner.
    IPickerCanvas *picker() const;
    /// Null while there is none: without an archive, and while the picker is there.
    PlotPanner *panner() const;
    WaitBox *waitBox() const { return m_waitBox; }
    QwtPlotDirectPainter *directPainter() const { return m_directPainter; }

    /// Of the scene; the process's until it is told.
    void setContext(SceneContextPtr context);
    const SceneContext &context() const override { return *m_context; }
    /// Values and history come: run time, and not a preview.
    bool isAtWork() const override;

    /// Not owned, may be null.
    void setGroupManager(ChartGroupManager *manager);
    ChartGroupManager *groupManager() const;
    Nodes::widgetChartGroup *group() const;
    /// Series of the current group that this plot shows.
    QList<ISerie *> series() const;
    /// Connects the live values of these, or disconnects all that are connected.
    void HandleConnections(bool disconnect);
    /// True: nothing of the group can be asked of an archive, so there is no panning either.
    bool hasNoArchive() const { return m_hasNoArchive; }

    /// Lower and upper end of the time axis, as they are or will be with the next replot.
    QwtInterval window() const;
    /// On which axis of this plot a node's scale stands; no axis for one of another group.
    QwtAxisId axisOf(const Nodes::widgetChartAxis *node) const;
    const std::vector<std::unique_ptr<AxisRecord>> &axisRecords() const { return m_axes; }
    using MultiAxisPlot::axisOf;

    /// Replaces the panner: presses are for the cursor.
    virtual void createPicker();
    /// Replaces the picker; nothing without an archive.
    void createPanner();

    void setVisibleToolBar(bool isVisible);
    void setAutoscale(bool on);
    void setTracking(bool on);
    bool tracking() const;
    /// Follows the present from the start, without asking for what is asked for anyway.
    void beginTracking();
    void updateIntervalEditorManagers();
    /// Ends its loop as answered, and gives the plot back to the operator.
    void closeWaitBox();
    /// A line that stands over the curves until the next one; "" takes it away.
    void setNote(const QString &text);
    QString note() const;
    /// Draws within 300 ms.
    void scheduleReplot() override;
    void replot() override;
    /// What was drawn by the last replot: whatever has come since waits for the next one, also
    /// when the canvas is painted anew in part.
    void drawCanvas(QPainter *painter) override;

public slots:
    virtual void onUpdateProperties();
    /// Makes the axes of both containers anew.
    virtual void setAxes(const Nodes::NodesContainer &yAxes, const Nodes::NodesContainer &xAxes);
    virtual void onTrackingChanged(bool on) = 0;
    virtual void onActionPeriodPrev() = 0;
    virtual void onActionPeriodNext() = 0;
    virtual void onActionLengthX() = 0;
    virtual void onPanned();
    virtual void updateGroup();
    /// Moves all scales by that many pixels, as a hand would.
    virtual void moveCanvas(int dx, int dy);
    virtual void appendPoints(std::vector<Nodes::SignalValue> values, Widgets::ISerie *serie);
    void onSetSymbol(int type);
    /// The element is seen from now on, or no more.
    virtual void onActive(bool) {}
    /// Another user: what he may not view goes, what he may comes.
    virtual void onUserChanged();

signals:
    void appendPointsSignal(std::vector<Nodes::SignalValue> values, Widgets::ISerie *serie);
    void axisScaleChanged(QwtAxisId axis, double lower, double upper, double step);
    /// The axis has this scale draw now, the one before is gone; null: so is the axis.
    void axisScaleDrawChanged(QwtAxisId axis, QwtScaleDraw *draw);
    void changeVisibleLegend(bool isVisible);
    void panned(int dx, int dy);
    void trackingChanged(bool on);
    void updateProperty(Nodes::BasicProperty *property);
    void actionPeriodNext();
    void actionPeriodPrev();
    /// What the new user may not view has gone from the series.
    void userChanged();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void updatePropertyCanvas();
    void clearIntervalEditorManagers();
    void setGrid(const Nodes::widgetChartGroup &group);
    void setNoArchive(bool on) { m_hasNoArchive = on; }
    void deletePanner();
    /// Left button to the panner or not, the plot usable or not: for the time of a request.
    void setWaiting(bool isWaiting);
    /// Values that came live lately, for what an archive does not have yet.
    LiveFeed &feed() const { return *m_feed; }
    /// Nothing for an empty one. Taken over by the next replot.
    void setWindow(double lower, double upper);
    /// With tracking on, moves the window so that `x` is its right end when it lies beyond that.
    void follow(double x);
    /// What was left out is in the curves again: they have no gap there.
    void forgetLeftOut();
    /// Forgets what has left the window.
    void trim(ISerie &serie);
    /// The curves, which are about to go or to be replaced, are no longer this plot's.
    virtual void forgetSeries();
    /// What the series of the current group consist of, lowest first.
    QList<QwtPlotItem *> serieItems() const;
    /// What createPicker() makes; a child of this plot.
    virtual IPickerCanvas *makePicker();
    /// More live values came than could be collected.
    virtual void onValuesLost();

private:
    void connectChannels();
    void onVizir(bool on);
    void raiseFlags();
    bool takes(double x, const QwtInterval &window) const;
    void append(ISerie &serie, double x, const Nodes::SignalValue &value);

    QTimer m_layoutTimer;
    std::vector<std::unique_ptr<AxisRecord>> m_axes;
    Utils::WatchedNode<Nodes::widgetChart> m_chart;
    std::vector<std::unique_ptr<IntervalEditorManager>> m_intervalEditors;
    std::unique_ptr<LiveFeed> m_feed;
    QPointer<ChartGroupManager> m_manager;
    int m_number;
    PlotCanvas *m_canvas;
    QwtPlotGrid *m_grid;
    QPointer<IPickerCanvas> m_picker;
    bool m_hasNoArchive = true;
    QwtPlotDirectPainter *m_directPainter;
    QTimer m_replotTimer;
    WaitBox *m_waitBox;
    QPointer<PlotPanner> m_panner;
    PlotNote *m_note;
    QList<QwtPlotItem *> m_attached;            // of the current group
    std::map<const ISerie *, double> m_leftOut; // since when, and still
    std::optional<QwtInterval> m_nextWindow;    // until it or another one is taken over
    QwtInterval m_windowBefore;
    QPixmap m_picture; // of the items; null: to be drawn
    SceneContextPtr m_context = SceneContext::process();
};

} // namespace Widgets
