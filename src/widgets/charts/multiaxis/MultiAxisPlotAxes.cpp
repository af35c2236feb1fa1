// The axis functions of MultiAxisPlot: Qwt's own axis, a further one, or none.
#include "widgets/charts/multiaxis/MultiAxisPlot.h"

#include "widgets/charts/multiaxis/ExtraAxis.h"

#include <qwt_scale_engine.h>
#include <qwt_scale_widget.h>

namespace Widgets {

void MultiAxisPlot::setAxisVisible(QwtAxisId axis, bool on)
{
    if (isFirst(axis)) {
        enableAxis(axis.pos, on);
    } else if (ExtraAxis *further = extraAxis(axis); further && further->isVisible() != on) {
        further->setVisible(on);
        updateLayout();
    }
}

bool MultiAxisPlot::isAxisVisible(QwtAxisId axis) const
{
    const ExtraAxis *further = extraAxis(axis);
    return further ? further->isVisible() : isFirst(axis) && axisEnabled(axis.pos);
}

QwtScaleWidget *MultiAxisPlot::axisWidget(QwtAxisId axis) const
{
    if (isFirst(axis))
        return const_cast<MultiAxisPlot *>(this)->QwtPlot::axisWidget(axis.pos);
    const ExtraAxis *further = extraAxis(axis);
    return further ? further->widget() : nullptr;
}

QwtScaleEngine *MultiAxisPlot::axisScaleEngine(QwtAxisId axis) const
{
    if (isFirst(axis))
        return const_cast<MultiAxisPlot *>(this)->QwtPlot::axisScaleEngine(axis.pos);
    const ExtraAxis *further = extraAxis(axis);
    return further ? further->engine() : nullptr;
}

void MultiAxisPlot::setAxisScaleEngine(QwtAxisId axis, QwtScaleEngine *engine)
{
    if (isFirst(axis)) {
        QwtPlot::setAxisScaleEngine(axis.pos, engine);
    } else if (ExtraAxis *further = extraAxis(axis); further && engine) {
        further->setEngine(engine);
        autoRefresh();
    } else {
        delete engine;
    }
}

void MultiAxisPlot::setAxisAutoScale(QwtAxisId axis, bool on)
{
    if (isFirst(axis)) {
        QwtPlot::setAxisAutoScale(axis.pos, on);
    } else if (ExtraAxis *further = extraAxis(axis); further && further->isAutoScaled() != on) {
        further->setAutoScale(on);
        autoRefresh();
    }
}

bool MultiAxisPlot::axisAutoScale(QwtAxisId axis) const
{
    const ExtraAxis *further = extraAxis(axis);
    return further ? further->isAutoScaled() : isFirst(axis) && QwtPlot::axisAutoScale(axis.pos);
}

void MultiAxisPlot::setAxisScale(QwtAxisId axis, double from, double to, double stepSize)
{
    if (isFirst(axis)) {
        QwtPlot::setAxisScale(axis.pos, from, to, stepSize);
    } else if (ExtraAxis *further = extraAxis(axis)) {
        further->setScale(from, to, stepSize);
        autoRefresh();
    }
}

void MultiAxisPlot::setAxisScaleDiv(QwtAxisId axis, const QwtScaleDiv &division)
{
    if (isFirst(axis)) {
        QwtPlot::setAxisScaleDiv(axis.pos, division);
    } else if (ExtraAxis *further = extraAxis(axis)) {
        further->setScaleDiv(division);
        autoRefresh();
    }
}

const QwtScaleDiv &MultiAxisPlot::axisScaleDiv(QwtAxisId axis) const
{
    if (isFirst(axis))
        return QwtPlot::axisScaleDiv(axis.pos);
    static const QwtScaleDiv none;
    const ExtraAxis *further = extraAxis(axis);
    return further ? further->scaleDiv() : none;
}

QwtInterval MultiAxisPlot::axisInterval(QwtAxisId axis) const
{
    return isAxisValid(axis) ? axisScaleDiv(axis).interval() : QwtInterval();
}

double MultiAxisPlot::axisStepSize(QwtAxisId axis) const
{
    const ExtraAxis *further = extraAxis(axis);
    return further ? further->stepSize() : isFirst(axis) ? QwtPlot::axisStepSize(axis.pos) : 0.0;
}

void MultiAxisPlot::setAxisScaleDraw(QwtAxisId axis, QwtScaleDraw *draw)
{
    if (QwtScaleWidget *scale = axisWidget(axis)) {
        forgetBorders(axis);
        scale->setScaleDraw(draw);
        autoRefresh();
    } else {
        delete draw;
    }
}

/// Other labels need other room beyond the ends of the scale.
void MultiAxisPlot::forgetBorders(QwtAxisId axis)
{
    if (QwtScaleWidget *scale = axisWidget(axis))
        scale->setMinBorderDist(0, 0);
}

QwtScaleDraw *MultiAxisPlot::axisScaleDraw(QwtAxisId axis) const
{
    QwtScaleWidget *scale = axisWidget(axis);
    return scale ? scale->scaleDraw() : nullptr;
}

void MultiAxisPlot::setAxisFont(QwtAxisId axis, const QFont &font)
{
    forgetBorders(axis);
    if (QwtScaleWidget *scale = axisWidget(axis))
        scale->setFont(font);
}

QFont MultiAxisPlot::axisFont(QwtAxisId axis) const
{
    const QwtScaleWidget *scale = axisWidget(axis);
    return scale ? scale->font() : QFont();
}

void MultiAxisPlot::setAxisTitle(QwtAxisId axis, const QString &title)
{
    if (QwtScaleWidget *scale = axisWidget(axis))
        scale->setTitle(title);
}

void MultiAxisPlot::setAxisTitle(QwtAxisId axis, const QwtText &title)
{
    if (QwtScaleWidget *scale = axisWidget(axis))
        scale->setTitle(title);
}

QwtText MultiAxisPlot::axisTitle(QwtAxisId axis) const
{
    const QwtScaleWidget *scale = axisWidget(axis);
    return scale ? scale->title() : QwtText();
}

void MultiAxisPlot::setAxisMaxMajor(QwtAxisId axis, int steps)
{
    if (isFirst(axis)) {
        QwtPlot::setAxisMaxMajor(axis.pos, steps);
    } else if (ExtraAxis *further = extraAxis(axis)) {
        further->setMaxMajor(steps);
        autoRefresh();
    }
}

int MultiAxisPlot::axisMaxMajor(QwtAxisId axis) const
{
    const ExtraAxis *further = extraAxis(axis);
    return further ? further->maxMajor() : isFirst(axis) ? QwtPlot::axisMaxMajor(axis.pos) : 0;
}

void MultiAxisPlot::setAxisMaxMinor(QwtAxisId axis, int steps)
{
    if (isFirst(axis)) {
        QwtPlot::setAxisMaxMinor(axis.pos, steps);
    } else if (ExtraAxis *further = extraAxis(axis)) {
        further->setMaxMinor(steps);
        autoRefresh();
    }
}

int MultiAxisPlot::axisMaxMinor(QwtAxisId axis) const
{
    const ExtraAxis *further = extraAxis(axis);
    return further ? further->maxMinor() : isFirst(axis) ? QwtPlot::axisMaxMinor(axis.pos) : 0;
}

void MultiAxisPlot::setAxisLabelAlignment(QwtAxisId axis, Qt::Alignment alignment)
{
    if (QwtScaleWidget *scale = axisWidget(axis))
        scale->setLabelAlignment(alignment);
}

void MultiAxisPlot::setAxisLabelRotation(QwtAxisId axis, double degrees)
{
    forgetBorders(axis);
    if (QwtScaleWidget *scale = axisWidget(axis))
        scale->setLabelRotation(degrees);
}

} // namespace Widgets
