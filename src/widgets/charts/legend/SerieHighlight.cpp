#include "widgets/charts/legend/SerieHighlight.h"

#include "widgets/charts/multiaxis/MultiAxisAttached.h"
#include "widgets/charts/multiaxis/MultiAxisPlot.h"
#include "widgets/charts/series/ISerie.h"

#include "nodes/charts/widgetChartBasicSerie.h"

#include <QPen>

#include <qwt_plot_curve.h>
#include <qwt_plot_intervalcurve.h>
#include <qwt_scale_draw.h>
#include <qwt_scale_widget.h>
#include <qwt_text.h>

namespace Widgets {

namespace {

constexpr double extraWidth = 2; // pixels
constexpr double zRaised = 5;
constexpr double zUsual = 2;

double penWidth(const ISerie *serie)
{
    if (const auto *curve = dynamic_cast<const QwtPlotCurve *>(serie))
        return curve->pen().widthF();
    if (const auto *tube = dynamic_cast<const QwtPlotIntervalCurve *>(serie))
        return tube->pen().widthF();
    return 0;
}

template <class Curve> bool setWidth(ISerie *serie, double width)
{
    auto *curve = dynamic_cast<Curve *>(serie);
    if (!curve)
        return false;
    QPen pen = curve->pen();
    pen.setWidthF(width);
    curve->setPen(pen);
    return true;
}

void setPenWidth(ISerie *serie, double width)
{
    (void)(setWidth<QwtPlotCurve>(serie, width) || setWidth<QwtPlotIntervalCurve>(serie, width));
}

} // namespace

SerieHighlight::~SerieHighlight() = default;

ISerie *SerieHighlight::serie() const
{
    return m_serie;
}

void SerieHighlight::set(ISerie *serie)
{
    if (m_serie == serie)
        return;
    takeBack();
    m_serie = serie;
    raise();
}

void SerieHighlight::raise()
{
    if (!m_serie)
        return;
    m_width = penWidth(m_serie);
    setPenWidth(m_serie, m_width + extraWidth);
    m_serie->setZOrder(zRaised);
    connect(m_serie, &ISerie::propertyChanged, this, &SerieHighlight::thickenAgain);
    const auto *attached = dynamic_cast<const MultiAxisAttached *>(m_serie.data());
    const auto *plot = dynamic_cast<const MultiAxisPlot *>(m_serie->plot());
    m_axis = attached && plot ? plot->axisWidget(attached->attachedYAxis()) : nullptr;
    markAxis(true);
}

void SerieHighlight::takeBack()
{
    markAxis(false);
    m_axis.clear();
    if (!m_serie)
        return;
    m_serie->disconnect(this);
    setPenWidth(m_serie, m_width);
    m_serie->setZOrder(zUsual);
}

void SerieHighlight::thickenAgain()
{
    if (!m_serie)
        return;
    m_width = penWidth(m_serie);
    setPenWidth(m_serie, m_width + extraWidth);
}

void SerieHighlight::markAxis(bool isMarked)
{
    if (!m_axis)
        return;
    QwtText title = m_axis->title();
    QFont font = title.usedFont(m_axis->font());
    font.setBold(isMarked);
    title.setFont(font);
    m_axis->setTitle(title);
    m_axis->scaleDraw()->setPenWidth(isMarked ? 3 : 1);
    m_axis->update();
}

} // namespace Widgets
