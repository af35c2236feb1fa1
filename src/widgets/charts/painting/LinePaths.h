#pragma once

#include <QPen>
#include <QPolygonF>
#include <QRectF>

#include <vector>

class QPainter;

namespace Widgets {

/// A line collected as polylines for the painter itself: for paper, for antialiasing, and for
/// points that go back in x. The same calls as ColumnSpans.
class LinePaths
{
public:
    /// `clip` in the painter's coordinates; what lies outside is left out.
    explicit LinePaths(const QRectF &clip) : m_clip(clip) {}

    void moveTo(double x, double y);
    void lineTo(double x, double y, bool isDoubtful);
    void spread(double xLow, double low, double xHigh, double high, double x, double y,
                bool isDoubtful);
    void stick(double x, double from, double to, bool isDoubtful);

    /// Doubtful pieces in short dots of the same pen.
    void paint(QPainter &painter, const QPen &pen);

private:
    void add(const QPointF &from, const QPointF &to, bool isDoubtful);
    void endPath();

    QRectF m_clip;
    QPointF m_at;
    QPolygonF m_path;
    bool m_pathIsDoubtful = false;
    std::vector<QPolygonF> m_good;
    std::vector<QPolygonF> m_doubtful;
};

} // namespace Widgets
