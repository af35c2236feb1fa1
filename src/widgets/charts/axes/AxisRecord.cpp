#include "widgets/charts/axes/AxisRecord.h"

#include "widgets/charts/axes/AxisPlaces.h"
#include "widgets/charts/axes/DiscretScaleEngine.h"
#include "widgets/charts/axes/DiscretStack.h"
#include "widgets/charts/axes/DiscretValueScaleDraw.h"
#include "widgets/charts/axes/SpanScaleEngine.h"
#include "widgets/charts/axes/TimeScaleDraw.h"
#include "widgets/charts/axes/TimeScaleEngine.h"
#include "widgets/charts/axes/ValueScaleDraw.h"
#include "widgets/charts/multiaxis/AxisGestures.h"
#include "widgets/charts/multiaxis/MultiAxisPlot.h"
#include "widgets/charts/time/ChartTime.h"

#include "nodes/charts/widgetChartAxis.h"
#include "nodes/model/NodesContainer.h"
#include "utils/convert/ValueConversions.h"

#include <QEvent>
#include <qwt_scale_engine.h>
#include <qwt_scale_widget.h>
#include <qwt_text.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace Widgets {

namespace {

using Axis = Nodes::widgetChartAxis;

constexpr int fewestTicks = 2;
constexpr int mostTicks = 12;
constexpr int mostMinorTicks = 5;
constexpr double defaultWindow = 10 * 60 * 1000; // ms
constexpr double earliest = 366.0 * 86400000;    // X of a scale that was never set lies before

/// A sensible scale where a project gives none.
std::pair<double, double> rangeOf(const Axis &axis)
{
    const double from = axis.GetMinimum();
    const double to = axis.GetMaximum();
    const bool isRange = std::isfinite(from) && std::isfinite(to) && from < to;
    if (!isRange && axis.IsLogarithmic())
        return {1, 1000};
    if (!isRange)
        return std::isfinite(from) ? std::pair(from - 0.5, from + 0.5) : std::pair(0.0, 1.0);
    if (axis.IsLogarithmic() && from <= 0)
        return {to > 0 ? to / 1000 : 1, to > 0 ? to : 1000};
    return {from, to};
}

/// A range that nobody gave says nothing of the signals.
double leastSpan(const Axis &axis)
{
    const Axis untold;
    const bool isTold =
        axis.GetMinimum() != untold.GetMinimum() || axis.GetMaximum() != untold.GetMaximum();
    return isTold ? (axis.GetMaximum() - axis.GetMinimum()) * SpanScaleEngine::LeastShare : 0;
}

/// Those of a plot, made with its first axes.
AxisGestures *gesturesOf(MultiAxisPlot &plot)
{
    auto *present = plot.findChild<AxisGestures *>(QString(), Qt::FindDirectChildrenOnly);
    return present ? present : new AxisGestures(&plot);
}

} // namespace

std::vector<std::unique_ptr<AxisRecord>> AxisRecord::make(MultiAxisPlot &plot,
                                                          const Nodes::NodesContainer &yAxes,
                                                          const Nodes::NodesContainer &xAxes)
{
    std::vector<std::pair<Axis *, QwtAxisId>> placed;
    std::array<int, QwtAxis::PosCount> counts{};
    const AxisPlaces::Use note = [&](Axis &axis, QwtAxisId id) {
        placed.emplace_back(&axis, id);
        ++counts[std::size_t(id.pos)];
    };
    AxisPlaces::forEach(yAxes, note);
    if (placed.empty())
        placed.emplace_back(nullptr, QwtAxisId(QwtAxis::yLeft));
    const std::size_t vertical = placed.size();
    AxisPlaces::forEach(xAxes, note);
    if (placed.size() == vertical)
        placed.emplace_back(nullptr, QwtAxisId(QwtAxis::xBottom));
    for (int side = 0; side < QwtAxis::PosCount; ++side) {
        plot.setAxesCount(side, std::max(counts[std::size_t(side)], 1));
        plot.setAxisVisible(side, false);
    }
    AxisGestures *gestures = gesturesOf(plot);
    std::vector<std::unique_ptr<AxisRecord>> records;
    for (const auto &[axis, id] : placed) {
        records.push_back(std::make_unique<AxisRecord>(plot, id, axis));
        connect(gestures, &AxisGestures::axisReleased, records.back().get(),
                &AxisRecord::onReleased);
    }
    // What they show now is asked before the next replot, and the room of labels goes by it.
    plot.updateAxes();
    for (const auto &record : records)
        record->fitTicks();
    return records;
}

AxisRecord::AxisRecord(MultiAxisPlot &plot, QwtAxisId axis, Nodes::widgetChartAxis *node)
    : m_plot(&plot),
      m_axis(axis),
      m_node(node ? node->GetNodeLink() : Nodes::NodeLink()),
      m_isTime(node ? AxisPlaces::isTime(*node) : axis.isXAxis())
{
    plot.axisWidget(axis)->installEventFilter(this);
    if (m_isTime)
        connect(plot.axisWidget(axis), &QwtScaleWidget::scaleDivChanged, this,
                &AxisRecord::tellDates);
    apply();
}

AxisRecord::~AxisRecord() = default;

Axis *AxisRecord::node() const
{
    return dynamic_cast<Axis *>(m_node.GetNode());
}

void AxisRecord::apply()
{
    if (!m_plot)
        return;
    const Axis *described = node();
    const Axis defaults;
    m_isDiscret = described && DiscretStack::isOn(*described);
    applyLook(described ? *described : defaults);
    if (m_isDiscret)
        applyDiscret();
    else if (m_isTime)
        applyTime(described
                      ? Axis::Milliseconds(described->GetRangeLength(), described->GetRangeUnit())
                      : defaultWindow);
    else if (described)
        applyScale(*described);
    else
        m_plot->setAxisAutoScale(m_axis, true);
    fitTicks();
    emit scaleDrawChanged(m_axis, m_plot->axisScaleDraw(m_axis));
}

void AxisRecord::onReleased(QwtAxisId axis)
{
    if (axis != m_axis)
        return;
    apply();
    if (m_plot)
        m_plot->replot();
}

void AxisRecord::applyDiscret()
{
    m_plot->setAxisScaleEngine(m_axis, new DiscretScaleEngine);
    m_plot->setAxisScaleDraw(m_axis,
                             new DiscretValueScaleDraw(Utils::NColorToQColor(node()->GetColor())));
    m_plot->setAxisAutoScale(m_axis, true);
}

void AxisRecord::applyScale(const Axis &node)
{
    if (node.IsLogarithmic())
        m_plot->setAxisScaleEngine(m_axis, new QwtLogScaleEngine);
    else
        m_plot->setAxisScaleEngine(m_axis, new SpanScaleEngine(leastSpan(node)));
    const auto [from, to] = rangeOf(node);
    m_plot->setAxisScale(m_axis, from, to);
    m_plot->setAxisAutoScale(m_axis, node.IsAutoScale());
}

void AxisRecord::applyTime(double length)
{
    const QwtInterval shown = m_plot->axisInterval(m_axis);
    m_plot->setAxisScaleEngine(m_axis, new TimeScaleEngine);
    const double end = shown.maxValue() > earliest ? shown.maxValue() : ChartTime::now();
    const double width = std::isfinite(length) && length > 0 ? length : defaultWindow;
    m_plot->setAxisScale(m_axis, end - width, end);
}

void AxisRecord::applyLook(const Axis &node)
{
    const QColor color = Utils::NColorToQColor(node.GetColor());
    QFont font = m_plot->font();
    font.setPixelSize(std::clamp(node.GetFontSize(), 6, 96));
    if (m_isTime)
        m_plot->setAxisScaleDraw(m_axis, new TimeScaleDraw(color, node.GetFormat()));
    else
        m_plot->setAxisScaleDraw(m_axis, new ValueScaleDraw(color, node.GetFormat()));
    m_plot->setAxisFont(m_axis, font);
    QwtText title(QString::fromStdString(node.GetTitle()), QwtText::PlainText);
    title.setColor(color);
    font.setBold(true);
    title.setFont(font);
    m_plot->setAxisTitle(m_axis, title);
    QwtScaleWidget *scale = m_plot->axisWidget(m_axis);
    QPalette palette = scale->palette();
    palette.setColor(QPalette::WindowText, color); // line and ticks
    palette.setColor(QPalette::Text, color);
    scale->setPalette(palette);
    scale->setMargin(0);
    m_plot->setAxisVisible(m_axis, node.isVisible());
}

int AxisRecord::roomPerTick() const
{
    const QwtScaleWidget *scale = m_plot->axisWidget(m_axis);
    const QwtScaleDraw *draw = m_plot->axisScaleDraw(m_axis);
    if (!draw)
        return 1;
    const QwtInterval shown = m_plot->axisInterval(m_axis);
    double room = 1;
    for (const double value : {shown.minValue(), shown.maxValue()}) {
        const QSizeF label = draw->label(value).textSize(scale->font());
        room = std::max(room, m_axis.isXAxis() ? label.width() * 1.4 : label.height() * 2.2);
    }
    return int(room);
}

void AxisRecord::tellDates()
{
    auto *draw = m_plot ? dynamic_cast<TimeScaleDraw *>(m_plot->axisScaleDraw(m_axis)) : nullptr;
    if (!draw)
        return;
    const Axis *described = node();
    const QwtInterval shown = m_plot->axisInterval(m_axis);
    const std::string format =
        TimeScaleDraw::formatFor(described ? described->GetFormat() : std::string(),
                                 shown.minValue(), shown.maxValue(), ChartTime::now());
    if (draw->format().toStdString() == format)
        return;
    draw->setFormat(format);
    fitTicks();
    m_plot->updateLayout();
}

void AxisRecord::fitTicks()
{
    const QwtScaleWidget *scale = m_plot ? m_plot->axisWidget(m_axis) : nullptr;
    if (!scale)
        return;
    const int length = m_axis.isXAxis() ? scale->width() : scale->height();
    m_plot->setAxisMaxMajor(m_axis, std::clamp(length / roomPerTick(), fewestTicks, mostTicks));
    m_plot->setAxisMaxMinor(m_axis, mostMinorTicks);
}

bool AxisRecord::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize && m_plot && watched == m_plot->axisWidget(m_axis))
        fitTicks();
    return QObject::eventFilter(watched, event);
}

} // namespace Widgets
