#pragma once

#include "widgets/elements/health/HealthChart.h"
#include "widgets/elements/health/TrialVariant.h"

#include <vector>

namespace Widgets {

/// Where the alarms of several settings fall: a lane each over one time axis, bars as high as there
/// were alarms at a time. GUI thread.
class WIDGETS_EXPORT TrialChart : public HealthChart
{
    Q_OBJECT

public:
    using HealthChart::HealthChart;

    void setVariants(const std::vector<TrialVariant> &variants);
    void setCurrent(int lane);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    struct Lane
    {
        QString name;
        std::vector<std::uint32_t> bars;
        bool isKnown = false;
    };

    QRect laneArea(int lane) const;
    std::vector<std::uint32_t> sumsOf(const Lane &lane) const;
    std::uint32_t mostOfAll() const;
    void drawLane(QPainter &painter, int lane) const;
    void drawTimes(QPainter &painter) const;

    std::vector<Lane> m_lanes;
    int m_current = -1;
    Nodes::Timestamp m_begin = 0;
    Nodes::Timestamp m_end = 0;
};

} // namespace Widgets
