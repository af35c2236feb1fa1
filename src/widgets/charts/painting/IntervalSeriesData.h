#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/charts/painting/RollingVector.h"

#include <qwt_series_data.h>

namespace Widgets {

/// The samples of an interval curve (a minimum and a maximum at each x). GUI thread only.
class WIDGETS_EXPORT IntervalSeriesData : public QwtSeriesData<QwtIntervalSample>
{
public:
    [[nodiscard]] std::size_t size() const override { return m_samples.size(); }
    [[nodiscard]] QwtIntervalSample sample(std::size_t i) const override { return m_samples[i]; }
    /// x across, minimum to maximum of the valid intervals; QRectF(0, 0, -1, -1) without one.
    [[nodiscard]] QRectF boundingRect() const override;

    void append(const QwtIntervalSample &sample);
    /// An invalid interval at 0 when empty.
    [[nodiscard]] QwtIntervalSample last() const;
    /// Puts another sample in the place of the last one; appends when there is none.
    void replaceLast(const QwtIntervalSample &sample);
    void clear();
    void trimFront(std::size_t count);

private:
    void forgetRect() const;
    void extendRect(const QwtIntervalSample &sample) const;

    RollingVector<QwtIntervalSample> m_samples;
};

} // namespace Widgets
