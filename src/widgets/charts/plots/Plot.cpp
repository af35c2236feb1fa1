#include "widgets/charts/plots/Plot.h"

#include "widgets/charts/axes/AxisRecord.h"
#include "widgets/charts/axes/ToolBarChart.h"
#include "widgets/charts/painting/PlotGrid.h"
#include "widgets/charts/pickers/PickerCanvas.h"
#include "widgets/charts/plots/ChartGroupManager.h"
#include "widgets/charts/plots/LiveFeed.h"
#include "widgets/charts/plots/PlotCanvas.h"
#include "widgets/charts/plots/PlotNote.h"
#include "widgets/charts/plots/PlotPanner.h"
#include "widgets/charts/plots/SampleLook.h"
#include "widgets/charts/plots/WaitBox.h"
#include "widgets/charts/series/ISerie.h"
#include "widgets/charts/zones/IntervalEditorManager.h"

#include "nodes/charts/widgetChart.h"
#include "nodes/charts/widgetChartBasicSerie.h"
#include "nodes/charts/widgetChartGroup.h"
#include "nodes/charts/widgetChartZone.h"
#include "utils/convert/MetaTypes.h"
#include "utils/convert/ValueConversions.h"

#include <qwt_plot_directpainter.h>
#include <qwt_plot_layout.h>

#include <utility>

namespace Widgets {

Plot::Plot(Nodes::widgetChart *chart, int number, QWidget *parent)
    : MultiAxisPlot(parent),
      m_chart(chart),
      m_feed(std::make_unique<LiveFeed>(
          [this](LiveFeed::Values values, ISerie *serie) {
              emit appendPointsSignal(std::move(values), serie);
          },
          [this] { onValuesLost(); })),
      m_number(number),
      m_canvas(new PlotCanvas(chart, this)),
      m_grid(new PlotGrid),
      m_directPainter(new QwtPlotDirectPainter(this)),
      m_waitBox(new WaitBox(this))
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setContentsMargins(0, 1, 1, 1);
    setMinimumSize(0, 0);
    m_grid->setZ(0); // below the curves
    m_grid->attach(this);
    m_canvas->setPaintAttribute(QwtPlotCanvas::BackingStore, false);
    m_canvas->setPaintAttribute(QwtPlotCanvas::Opaque, false);
    m_canvas->setAttribute(Qt::WA_OpaquePaintEvent, false);
    m_canvas->setAutoFillBackground(true);
    setCanvas(m_canvas);
    plotLayout()->setCanvasMargin(0);
    plotLayout()->setAlignCanvasToScales(true); // the window is what the canvas shows
    m_note = new PlotNote(m_canvas);
    SampleLook::keepLooksWhileDisabled(*this);
    m_layoutTimer.setSingleShot(true);
    m_layoutTimer.setInterval(LayoutDelay);
    m_replotTimer.setSingleShot(true);
    m_replotTimer.setInterval(ReplotDelay);
    connectChannels();
}

// The series are the manager's, which may outlive the plot: a plot deletes what is attached to it.
Plot::~Plot()
{
    Plot::forgetSeries();
    m_intervalEditors.clear();
    for (const auto &record : m_axes)
        emit axisScaleDrawChanged(record->axis(), nullptr);
    m_axes.clear();
}

void Plot::connectChannels()
{
    qRegisterMetaType<std::vector<Nodes::SignalValue>>("std::vector<Nodes::SignalValue>");
    qRegisterMetaType<ISerie *>("Widgets::ISerie*");
    qRegisterMetaType<QwtAxisId>("QwtAxisId");
    connect(this, &Plot::appendPointsSignal, this, &Plot::appendPoints);
    connect(&m_replotTimer, &QTimer::timeout, this, &Plot::replot);
    connect(&m_layoutTimer, &QTimer::timeout, this, &Plot::updateLayout);
    connect(this, &Plot::updateProperty, this, &Plot::onUpdateProperties);
    connect(this, &Plot::panned, this, &Plot::onPanned);
    connect(this, &Plot::trackingChanged, this, &Plot::onTrackingChanged);
    connect(this, &Plot::actionPeriodPrev, this, &Plot::onActionPeriodPrev);
    connect(this, &Plot::actionPeriodNext, this, &Plot::onActionPeriodNext);
    connect(m_canvas->tbChart(), &ToolBarChart::changeVisibleLegend, this,
            &Plot::changeVisibleLegend);
    connect(m_canvas->tbChart(), &ToolBarChart::changeVizir, this, &Plot::onVizir);
}

void Plot::setContext(SceneContextPtr context)
{
    m_context = std::move(context);
}

bool Plot::isAtWork() const
{
    return m_context->isRuntime() && !m_context->isPreview();
}

void Plot::setGroupManager(ChartGroupManager *manager)
{
    if (m_manager)
        m_manager->disconnect(this);
    m_manager = manager;
    if (!manager)
        return;
    connect(manager, &ChartGroupManager::groupChanged, this, &Plot::updateGroup);
    connect(manager, &ChartGroupManager::groupChanged, this, &Plot::onUpdateProperties);
    connect(manager, &ChartGroupManager::groupUpdated, this, &Plot::onUpdateProperties);
    connect(manager, &ChartGroupManager::seriesAboutToGo, this, &Plot::forgetSeries);
}

ChartGroupManager *Plot::groupManager() const
{
    return m_manager;
}

Nodes::widgetChartGroup *Plot::group() const
{
    return m_manager ? m_manager->group() : nullptr;
}

QList<ISerie *> Plot::series() const
{
    return m_manager ? m_manager->seriesOf(m_number) : QList<ISerie *>();
}

IPickerCanvas *Plot::picker() const
{
    return m_picker;
}

PlotPanner *Plot::panner() const
{
    return m_panner;
}

void Plot::HandleConnections(bool disconnect)
{
    if (disconnect)
        return m_feed->disconnectAll();
    if (!isAtWork())
        return;
    const QList<ISerie *> all = series();
    for (ISerie *serie : all) {
        if (serie->isLive())
            m_feed->connect(serie);
    }
}

// What was attached for the last group is found by its absence before: series are several items.
void Plot::updateGroup()
{
    forgetSeries();
    const QwtPlotItemList before = itemList();
    const QList<ISerie *> all = series();
    for (ISerie *serie : all)
        serie->attachToPlot(this);
    const QwtPlotItemList after = itemList();
    for (QwtPlotItem *item : after) {
        if (!before.contains(item))
            m_attached << item;
    }
    raiseFlags();
}

void Plot::forgetSeries()
{
    HandleConnections(true);
    const QList<QwtPlotItem *> items = serieItems();
    for (QwtPlotItem *item : items)
        item->detach();
    m_attached.clear();
    m_leftOut.clear();
}

QList<QwtPlotItem *> Plot::serieItems() const
{
    QList<QwtPlotItem *> items;
    const QwtPlotItemList present = itemList();
    for (QwtPlotItem *item : present) {
        if (m_attached.contains(item))
            items << item;
    }
    return items;
}

void Plot::createPicker()
{
    deletePanner();
    delete m_picker;
    m_picker = makePicker();
    connect(m_picker, &IPickerCanvas::replot, this, &Plot::replot);
}

IPickerCanvas *Plot::makePicker()
{
    return new PickerCanvas(this);
}

void Plot::createPanner()
{
    delete m_picker;
    if (m_hasNoArchive)
        return;
    delete m_panner;
    m_panner = new PlotPanner(m_canvas);
    m_panner->setMouseButton(Qt::LeftButton, Qt::NoModifier);
    connect(m_panner, &QwtPanner::panned, this, &Plot::panned);
}

void Plot::deletePanner()
{
    delete m_panner;
}

void Plot::onVizir(bool on)
{
    if (on)
        createPicker();
    else
        createPanner();
    scheduleReplot();
}

void Plot::onSetSymbol(int type)
{
    const Nodes::widgetChart *chart = m_chart.get();
    const int size = chart ? chart->GetSymbolSize() : 0;
    const QList<ISerie *> all = series();
    for (ISerie *serie : all)
        serie->setSymbol(type, QSize(size, size));
    replot();
}

void Plot::onUpdateProperties()
{
    clearIntervalEditorManagers();
    if (const Nodes::widgetChartGroup *group = this->group()) {
        setGrid(*group);
        setAxes(group->GetYAxes(), group->GetXAxes());
    }
    updatePropertyCanvas();
    if (!isAtWork())
        SampleLook::draw(series(), window());
    onSetSymbol(m_chart ? m_chart->GetTypeSymbol() : int(Nodes::widgetChart::SymbolNone));
}

void Plot::setVisibleToolBar(bool isVisible)
{
    m_canvas->setVisibleToolBar(isVisible);
    for (const auto &manager : m_intervalEditors)
        manager->setEnable(isVisible);
}

void Plot::updateIntervalEditorManagers()
{
    for (const auto &manager : m_intervalEditors)
        manager->updateProperties();
}

void Plot::clearIntervalEditorManagers()
{
    m_intervalEditors.clear();
}

void Plot::setAutoscale(bool on)
{
    m_canvas->setAutoscale(on);
}

void Plot::setTracking(bool on)
{
    m_canvas->setTracking(on);
}

bool Plot::tracking() const
{
    return m_canvas->tracking();
}

void Plot::setWaiting(bool isWaiting)
{
    if (m_panner)
        m_panner->setMouseButton(isWaiting ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
    setEnabled(!isWaiting);
}

void Plot::closeWaitBox()
{
    m_waitBox->accept();
    setWaiting(false);
}

void Plot::setNote(const QString &text)
{
    m_note->tell(text);
}

QString Plot::note() const
{
    return m_note->text();
}

} // namespace Widgets
