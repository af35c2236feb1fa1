#pragma once

#include "widgets/charts/painting/DashPattern.h"

#include <QRect>
#include <QVector>

#include <vector>

class QPainter;

namespace Widgets {

/// A line that never goes back in x, kept as one span of rows per pixel column: however many points
/// it has, painting it fills a rectangle a column. The pixels are those of the line drawn piece by
/// piece without antialiasing, give or take one.
class ColumnSpans
{
public:
    /// Pixels of the device; `penWidth` at least 1.
    ColumnSpans(const QRect &clip, int penWidth, DashPattern pen, DashPattern doubtful);

    /// Ends the line before and begins another one.
    void moveTo(double x, double y);
    void lineTo(double x, double y, bool isDoubtful);
    /// Draws on over all rows between two extremes to the end of a bucket, which is at most a
    /// column wide.
    void spread(double xLow, double low, double xHigh, double high, double x, double y,
                bool isDoubtful);
    /// Draws on to a column next to the last one or the same, over its extremes, to its last point.
    void columnTo(int column, double low, double high, double last, bool isDoubtful);
    /// A line of its own, upright.
    void stick(double x, double from, double to, bool isDoubtful);

    /// Ends the last line and fills everything, whatever the painter's transformation is.
    void paint(QPainter &painter, const QColor &color);

private:
    struct Span
    {
        int low;
        int high;
        bool isDoubtful;
    };
    [[nodiscard]] int row(double y) const;
    [[nodiscard]] int column(double x) const;
    void cover(int column, int from, int to, bool isDoubtful);
    void endLine();
    [[nodiscard]] Span widened(int column) const;
    void emitSpan(int column, const Span &span);
    void emitDashed(int column, const Span &span, const DashPattern &pattern);
    void addRect(int column, int low, int high);

    QRect m_clip;
    int m_before; // pixels of the pen left of and above the line
    int m_after;
    DashPattern m_pen;
    DashPattern m_doubtful;
    double m_leftmost; // outside of the picture: what lies further is as good as there
    double m_rightmost;
    double m_topmost;
    double m_lowest;
    int m_base;                // column of the first span
    std::vector<Span> m_spans; // of the line that is being drawn
    int m_first;
    int m_last;
    double m_x = 0;
    double m_y = 0;
    QVector<QRect> m_rects;
};

} // namespace Widgets
