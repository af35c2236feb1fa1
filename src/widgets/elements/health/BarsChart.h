#pragma once

#include "widgets/elements/health/HealthChart.h"

#include <QString>

#include <vector>

namespace Widgets {

/// Some lying bars with their names and figures; a bar may have a mark at what is recommended. A
/// press on one tells its number.
class WIDGETS_EXPORT BarsChart : public HealthChart
{
    Q_OBJECT

public:
    struct Bar
    {
        QString name;
        QString figure;
        double length = 0;  ///< 0 to 1
        double target = -1; ///< place of the mark; below 0: none
        bool isAbnormal = false;
    };

    using HealthChart::HealthChart;

    void setBars(std::vector<Bar> bars);
    /// Of the chart's width, what names take.
    void setNameShare(double share) { m_nameShare = share; }
    QSize sizeHint() const override;

signals:
    void pressed(int bar);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    bool event(QEvent *event) override;

private:
    int barAt(int y) const;
    QRect rowOf(int bar) const;
    void drawBar(QPainter &painter, const Bar &bar, const QRect &row) const;

    std::vector<Bar> m_bars;
    double m_nameShare = 0.45;
};

} // namespace Widgets
