#include "widgets/charts/plots/PlotCanvas.h"

#include "widgets/charts/axes/ToolBarAutoScaleAxisX.h"
#include "widgets/charts/axes/ToolBarAutoScaleAxisY.h"
#include "widgets/charts/axes/ToolBarAxisX.h"
#include "widgets/charts/axes/ToolBarChart.h"
#include "widgets/charts/multiaxis/AxisGestures.h"
#include "widgets/charts/plots/Plot.h"

#include "nodes/charts/widgetChart.h"
#include "nodes/charts/widgetChartGroup.h"

#include <QEvent>
#include <QSignalBlocker>
#include <QToolButton>
#include <QWheelEvent>

namespace Widgets {

namespace {

constexpr int gap = 9; // pixels between the edge of the canvas and its tool bars
constexpr QPoint outOfSight(-1000, -1000);
constexpr int sliceFontSize = 8; // points

Nodes::NodeType::enNodeSubtype kindOf(const Nodes::widgetChart *node)
{
    return node ? node->GetNodeType().GetSubtype() : Nodes::NodeType::SubtypeNone;
}

} // namespace

PlotCanvas::PlotCanvas(Nodes::widgetChart *node, Plot *plot) : QwtPlotCanvas(plot), m_plot(plot)
{
    setCursor(Qt::CrossCursor);
    setFrameStyle(QFrame::NoFrame);
    QPalette colors = palette();
    colors.setBrush(QPalette::Window, QBrush(Qt::white));
    setPalette(colors);
    m_tbChart = new ToolBarChart(node, this);
    switch (kindOf(node)) {
    case Nodes::NodeType::SubtypeChartHistory:
        makeTimeBar(node);
        break;
    case Nodes::NodeType::SubtypeChartCorridor:
        makeTimeBar(node);
        m_slice = new QToolButton;
        m_slice->setText(QStringLiteral("-"));
        m_slice->setEnabled(false);
        m_slice->setStyleSheet(
            QStringLiteral("QToolButton { font-size: %1pt; }").arg(sliceFontSize));
        m_tbAxisX->addWidget(m_slice);
        break;
    case Nodes::NodeType::SubtypeChartXY: {
        auto *bar = new ToolBarAutoScaleAxisX(node, this);
        connect(bar, &ToolBarAutoScale::autoScaleChanged, this, &PlotCanvas::updateAutoScaleX);
        m_tbAxisX = bar;
        break;
    }
    default:
        break;
    }
    auto *values = new ToolBarAutoScaleAxisY(node, this);
    connect(values, &ToolBarAutoScale::autoScaleChanged, this, &PlotCanvas::updateAutoScaleY);
    m_tbAxisY = values;
    for (ToolBar *bar : {m_tbAxisX, m_tbAxisY, static_cast<ToolBar *>(m_tbChart)}) {
        if (bar)
            bar->installEventFilter(this);
    }
}

void PlotCanvas::makeTimeBar(Nodes::widgetChart *node)
{
    auto *bar = new ToolBarAxisX(node, this);
    connect(bar, &ToolBarAxisX::trackingChanged, m_plot, &Plot::trackingChanged);
    connect(bar, &ToolBarAxisX::actionLengthX, m_plot, &Plot::onActionLengthX);
    connect(bar, &ToolBarAxisX::actionPeriodPrev, m_plot, &Plot::actionPeriodPrev);
    connect(bar, &ToolBarAxisX::actionPeriodNext, m_plot, &Plot::actionPeriodNext);
    m_tbAxisX = bar;
}

void PlotCanvas::setTextSlice(const QString &text)
{
    if (!m_slice)
        return;
    m_slice->setText(text);
    m_tbAxisX->adjustSize();
    updateToolBarGeometry();
}

void PlotCanvas::setTracking(bool on)
{
    if (auto *bar = qobject_cast<ToolBarAxisX *>(m_tbAxisX))
        bar->setTracking(on);
}

bool PlotCanvas::tracking() const
{
    const auto *bar = qobject_cast<ToolBarAxisX *>(m_tbAxisX);
    return bar && bar->tracking();
}

void PlotCanvas::setAutoscale(bool on)
{
    for (ToolBar *bar : {m_tbAxisX, m_tbAxisY}) {
        if (auto *automatic = qobject_cast<ToolBarAutoScale *>(bar))
            automatic->setAutoScale(on);
    }
}

void PlotCanvas::setCurrentGroup(Nodes::widgetChartGroup *group)
{
    for (ToolBar *bar : {m_tbAxisX, m_tbAxisY}) {
        if (bar)
            bar->setCurrentGroup(group);
    }
    m_tbChart->setVisir(false);
}

void PlotCanvas::updateAutoScaleX(bool on)
{
    setAutoScale(true, on);
}

void PlotCanvas::updateAutoScaleY(bool on)
{
    setAutoScale(false, on);
}

// Switched off, the scales stay as they are: what is looked at does not jump.
void PlotCanvas::setAutoScale(bool areX, bool on)
{
    for (const QwtAxisId &axis : m_plot->axes()) {
        if (axis.isXAxis() != areX)
            continue;
        const QwtInterval shown = m_plot->axisInterval(axis);
        m_plot->setAxisAutoScale(axis, on);
        if (!on && shown.isValid())
            m_plot->setAxisScale(axis, shown.minValue(), shown.maxValue());
    }
    m_plot->replot();
    m_plot->updateIntervalEditorManagers();
}

void PlotCanvas::showAutoScale(QwtAxisId axis)
{
    auto *bar = qobject_cast<ToolBarAutoScale *>(axis.isXAxis() ? m_tbAxisX : m_tbAxisY);
    if (!bar)
        return;
    bool areAutomatic = true;
    for (const QwtAxisId &one : m_plot->axes()) {
        if (one.isXAxis() == axis.isXAxis() && m_plot->isAxisVisible(one))
            areAutomatic = areAutomatic && m_plot->axisAutoScale(one);
    }
    const QSignalBlocker quiet(bar);
    bar->setAutoScale(areAutomatic);
}

void PlotCanvas::onUpdateProperties()
{
    for (ToolBar *bar : {m_tbAxisX, m_tbAxisY, static_cast<ToolBar *>(m_tbChart)}) {
        if (bar)
            bar->onUpdateProperties();
    }
    updateToolBarGeometry();
    update();
}

void PlotCanvas::setVisibleToolBar(bool isVisible)
{
    m_areToolBarsVisible = isVisible;
    updateToolBarGeometry();
}

void PlotCanvas::updateToolBarGeometry()
{
    if (!m_areToolBarsVisible) {
        for (ToolBar *bar : {m_tbAxisX, m_tbAxisY, static_cast<ToolBar *>(m_tbChart)}) {
            if (bar)
                bar->move(outOfSight);
        }
        return;
    }
    const QRect canvas = rect();
    m_tbChart->move(canvas.right() - m_tbChart->width(), gap);
    int second = 0; // how much lower those of the scales stand where there is no room beside it
    if (m_tbAxisX) {
        const int left = canvas.x() + m_tbAxisX->height();
        if (left + m_tbAxisX->width() > m_tbChart->x())
            second = m_tbChart->height() + gap;
        m_tbAxisX->move(left, gap + second);
    }
    m_tbAxisY->move(canvas.x(), m_tbAxisY->width() + gap + second);
    m_plot->updateIntervalEditorManagers();
}

void PlotCanvas::updateLenghtXTitle()
{
    if (auto *bar = qobject_cast<ToolBarAxisX *>(m_tbAxisX))
        bar->updateLenghtXTitle();
}

// A tool bar takes the room that its keys need, also when these get another font or text.
bool PlotCanvas::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize)
        updateToolBarGeometry();
    return QwtPlotCanvas::eventFilter(watched, event);
}

// Where the operator looks at, not only on the scale below it.
void PlotCanvas::wheelEvent(QWheelEvent *event)
{
    const double notches = event->angleDelta().y() / AxisGestures::WheelUnitsPerNotch;
    auto *gestures = m_plot->findChild<AxisGestures *>(QString(), Qt::FindDirectChildrenOnly);
    if (gestures && notches != 0)
        gestures->zoom(QwtAxis::xBottom, notches, event->position().x());
    else
        event->ignore();
}

void PlotCanvas::resizeEvent(QResizeEvent *event)
{
    QwtPlotCanvas::resizeEvent(event);
    updateToolBarGeometry();
}

} // namespace Widgets
