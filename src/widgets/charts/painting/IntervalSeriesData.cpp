#include "widgets/charts/painting/IntervalSeriesData.h"

#include <cmath>

namespace Widgets {

QRectF IntervalSeriesData::boundingRect() const
{
    if (d_boundingRect.width() < 0) {
        for (const QwtIntervalSample &sample : m_samples)
            extendRect(sample);
    }
    return d_boundingRect;
}

void IntervalSeriesData::forgetRect() const
{
    d_boundingRect = QRectF(0, 0, -1, -1);
}

void IntervalSeriesData::extendRect(const QwtIntervalSample &sample) const
{
    const QwtInterval &interval = sample.interval;
    if (!std::isfinite(sample.value) || !interval.isValid() ||
        !std::isfinite(interval.minValue()) || !std::isfinite(interval.maxValue()))
        return;
    const QPointF low(sample.value, interval.minValue());
    const QPointF high(sample.value, interval.maxValue());
    if (d_boundingRect.width() < 0) {
        d_boundingRect = QRectF(low, high);
        return;
    }
    d_boundingRect.setLeft(qMin(d_boundingRect.left(), low.x()));
    d_boundingRect.setRight(qMax(d_boundingRect.right(), low.x()));
    d_boundingRect.setTop(qMin(d_boundingRect.top(), low.y()));
    d_boundingRect.setBottom(qMax(d_boundingRect.bottom(), high.y()));
}

void IntervalSeriesData::append(const QwtIntervalSample &sample)
{
    // An unknown rectangle of an empty store is the rectangle of none.
    if (d_boundingRect.width() >= 0 || m_samples.empty())
        extendRect(sample);
    m_samples.push_back(sample);
}

QwtIntervalSample IntervalSeriesData::last() const
{
    return m_samples.empty() ? QwtIntervalSample() : m_samples.back();
}

void IntervalSeriesData::replaceLast(const QwtIntervalSample &sample)
{
    if (!m_samples.empty()) {
        m_samples.pop_back();
        forgetRect();
    }
    append(sample);
}

void IntervalSeriesData::clear()
{
    m_samples.clear();
    forgetRect();
}

void IntervalSeriesData::trimFront(std::size_t count)
{
    m_samples.trimFront(count);
    forgetRect();
}

} // namespace Widgets
