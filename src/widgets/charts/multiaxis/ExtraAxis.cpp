#include "widgets/charts/multiaxis/ExtraAxis.h"

#include <qwt_plot.h>
#include <qwt_scale_engine.h>
#include <qwt_scale_map.h>
#include <qwt_scale_widget.h>

#include <algorithm>

namespace Widgets {

namespace {

QwtScaleDraw::Alignment alignmentOf(int position)
{
    switch (position) {
    case QwtAxis::yRight:
        return QwtScaleDraw::RightScale;
    case QwtAxis::xBottom:
        return QwtScaleDraw::BottomScale;
    case QwtAxis::xTop:
        return QwtScaleDraw::TopScale;
    default:
        return QwtScaleDraw::LeftScale;
    }
}

} // namespace

ExtraAxis::ExtraAxis(QwtAxisId id, QwtPlot *plot)
    : m_id(id),
      m_widget(new QwtScaleWidget(alignmentOf(id.pos), plot)),
      m_engine(new QwtLinearScaleEngine)
{
    // Looks like the first axis of its side until told otherwise.
    const QwtScaleWidget *first = plot->axisWidget(id.pos);
    m_widget->setTransformation(m_engine->transformation());
    m_widget->setFont(first->font());
    m_widget->setMargin(first->margin());
    QwtText title = m_widget->title();
    title.setFont(first->title().font());
    m_widget->setTitle(title);
    m_widget->hide();
}

ExtraAxis::~ExtraAxis()
{
    delete m_widget;
}

QwtScaleWidget *ExtraAxis::widget() const
{
    return m_widget;
}

QwtScaleMap ExtraAxis::mapOn(const QwtScaleMap &side) const
{
    QwtScaleMap map;
    map.setPaintInterval(side.p1(), side.p2());
    map.setTransformation(m_engine->transformation());
    map.setScaleInterval(m_scaleDiv.lowerBound(), m_scaleDiv.upperBound());
    return map;
}

void ExtraAxis::setEngine(QwtScaleEngine *engine)
{
    m_engine.reset(engine);
    m_widget->setTransformation(engine->transformation());
    m_divisionValid = false;
}

void ExtraAxis::setScale(double from, double to, double stepSize)
{
    m_autoScale = false;
    m_divisionValid = false;
    m_from = from;
    m_to = to;
    m_stepSize = stepSize;
}

void ExtraAxis::setScaleDiv(const QwtScaleDiv &division)
{
    m_autoScale = false;
    m_divisionValid = true;
    m_scaleDiv = division;
}

void ExtraAxis::setMaxMajor(int steps)
{
    steps = std::clamp(steps, 1, 10000);
    m_divisionValid = m_divisionValid && steps == m_maxMajor;
    m_maxMajor = steps;
}

void ExtraAxis::setMaxMinor(int steps)
{
    steps = std::clamp(steps, 0, 100);
    m_divisionValid = m_divisionValid && steps == m_maxMinor;
    m_maxMinor = steps;
}

void ExtraAxis::update(const QwtInterval &data)
{
    double step = m_stepSize;
    if (m_autoScale && data.isValid()) {
        m_from = data.minValue();
        m_to = data.maxValue();
        m_engine->autoScale(m_maxMajor, m_from, m_to, step);
        m_divisionValid = false;
    }
    if (!m_divisionValid) {
        m_scaleDiv = m_engine->divideScale(m_from, m_to, m_maxMajor, m_maxMinor, step);
        m_divisionValid = true;
    }
    m_widget->setScaleDiv(m_scaleDiv);
    int start = 0;
    int end = 0;
    m_widget->getBorderDistHint(start, end);
    m_widget->setBorderDist(start, end);
}

} // namespace Widgets
