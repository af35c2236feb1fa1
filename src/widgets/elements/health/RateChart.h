#pragma once

#include "widgets/elements/health/HealthChart.h"

#include "nodes/values/Timestamp.h"

#include <cstdint>
#include <vector>

namespace Widgets {

/// Alarms in each ten minutes of a period, as bars over time, with the line of ten above which
/// operators cannot follow. Where the bars are narrower than pixels each pixel shows the most.
class WIDGETS_EXPORT RateChart : public HealthChart
{
    Q_OBJECT

public:
    using HealthChart::HealthChart;

    static constexpr std::uint32_t Limit = 10;

    /// Bars of `step` microseconds each from `begin` on.
    void setBars(Nodes::Timestamp begin, Nodes::Timestamp step, std::vector<std::uint32_t> bars);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;

private:
    QRect plotArea() const;
    std::uint32_t top() const;
    std::uint32_t mostIn(int column, int columns) const;
    int yOf(double count) const;
    void drawScale(QPainter &painter) const;
    void drawTimes(QPainter &painter) const;
    void drawBars(QPainter &painter) const;
    void drawLimit(QPainter &painter) const;

    Nodes::Timestamp m_begin = 0;
    Nodes::Timestamp m_step = 1;
    std::vector<std::uint32_t> m_bars;
};

} // namespace Widgets
