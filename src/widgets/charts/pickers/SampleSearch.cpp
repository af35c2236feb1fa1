#include "widgets/charts/pickers/SampleSearch.h"

#include "widgets/charts/multiaxis/MultiAxisAttached.h"
#include "widgets/charts/painting/CurveData.h"
#include "widgets/charts/series/ISerie.h"

#include "nodes/charts/widgetChartBasicSerie.h"

#include <QWidget>

#include <algorithm>
#include <cmath>

#include <qwt_plot.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_intervalcurve.h>
#include <qwt_scale_map.h>

namespace Widgets::SampleSearch {

namespace {

/// The samples of a series, a curve's or a tube's, by what both have alike.
class Samples
{
public:
    explicit Samples(const ISerie &serie)
        : m_curve(dynamic_cast<const QwtPlotCurve *>(&serie)),
          m_tube(dynamic_cast<const QwtPlotIntervalCurve *>(&serie)),
          m_data(m_curve ? dynamic_cast<const CurveData *>(m_curve->data()) : nullptr)
    {
    }

    int size() const
    {
        return int(m_curve ? m_curve->dataSize() : m_tube ? m_tube->dataSize() : 0);
    }
    double x(int i) const { return m_curve ? point(i).x() : tube(i).value; }
    double y(int i) const
    {
        return m_curve ? point(i).y() : (tube(i).interval.minValue() + top(i)) / 2;
    }
    double bottom(int i) const { return m_curve ? point(i).y() : tube(i).interval.minValue(); }
    double top(int i) const { return m_curve ? point(i).y() : tube(i).interval.maxValue(); }
    bool isTube() const { return m_tube; }
    bool isDrawn(int i) const
    {
        if (m_data)
            return m_data->isDrawn(std::size_t(i));
        return std::isfinite(x(i)) && std::isfinite(y(i)) &&
               (m_curve || tube(i).interval.isValid());
    }
    Nodes::Quality quality(int i) const
    {
        return m_data ? m_data->quality(std::size_t(i)) : Nodes::Quality::Good;
    }

    /// By bisection where the samples are in order.
    int nearest(double to) const
    {
        if (size() == 0)
            return -1;
        if (m_data && !m_data->isSorted())
            return nearestOfAll(to);
        int low = 0;
        int high = size();
        while (low < high) {
            const int middle = (low + high) / 2;
            if (x(middle) < to)
                low = middle + 1;
            else
                high = middle;
        }
        if (low == size() || (low > 0 && to - x(low - 1) <= x(low) - to))
            --low;
        while (low > 0 && x(low - 1) == x(low))
            --low;
        return low;
    }

private:
    QPointF point(int i) const { return m_curve->sample(i); }
    QwtIntervalSample tube(int i) const { return m_tube->sample(i); }
    int nearestOfAll(double to) const
    {
        int found = -1;
        for (int i = 0; i < size(); ++i)
            if (found < 0 || std::abs(x(i) - to) < std::abs(x(found) - to))
                found = i;
        return found;
    }

    const QwtPlotCurve *m_curve;
    const QwtPlotIntervalCurve *m_tube;
    const CurveData *m_data;
};

QwtScaleMap xMap(const ISerie &serie)
{
    const auto *attached = dynamic_cast<const MultiAxisAttached *>(&serie);
    return serie.plot()->canvasMap(attached ? packedAxis(attached->attachedXAxis())
                                            : int(QwtPlot::xBottom));
}

int columnOf(const QwtScaleMap &map, double x)
{
    return int(std::lround(map.transform(x)));
}

// Of all samples that are painted in the same column of pixels: as an operator sees them.
void gather(const Samples &samples, const QwtScaleMap &map, int index, CursorReading &reading)
{
    const int column = columnOf(map, samples.x(index));
    double bottom = samples.bottom(index);
    double top = samples.top(index);
    int count = 0;
    const auto take = [&](int i) {
        if (!samples.isDrawn(i))
            return;
        bottom = std::min(bottom, samples.bottom(i));
        top = std::max(top, samples.top(i));
        if (samples.quality(i) != Nodes::Quality::Good)
            reading.quality = samples.quality(i);
        ++count;
    };
    for (int i = index; i >= 0 && columnOf(map, samples.x(i)) == column; --i)
        take(i);
    for (int i = index + 1; i < samples.size() && columnOf(map, samples.x(i)) == column; ++i)
        take(i);
    if (samples.isTube() || (count > 1 && bottom < top))
        reading.range = {bottom, top};
}

} // namespace

int nearest(const ISerie &serie, int column)
{
    if (!serie.plot() || !serie.isVisible())
        return -1;
    const Samples samples(serie);
    const QwtScaleMap map = xMap(serie);
    const int index = samples.nearest(map.invTransform(column));
    if (index < 0)
        return -1;
    const int found = columnOf(map, samples.x(index));
    const int last = serie.plot()->canvas()->width() - 1;
    return found < 0 || found > last ? -1 : index;
}

std::optional<CursorReading> at(ISerie &serie, int column)
{
    const int index = nearest(serie, column);
    const Samples samples(serie);
    if (index < 0 || !samples.isDrawn(index))
        return {};
    CursorReading reading;
    reading.serie = &serie;
    reading.point = {samples.x(index), samples.y(index)};
    gather(samples, xMap(serie), index, reading);
    return reading;
}

} // namespace Widgets::SampleSearch
