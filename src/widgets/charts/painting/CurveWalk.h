#pragma once

#include "widgets/charts/painting/CurveData.h"
#include "widgets/charts/painting/PixelMap.h"

#include <algorithm>
#include <cmath>

namespace Widgets {

/// How two neighbouring points are joined.
enum class CurveJoin {
    Straight,
    StepAtNext, ///< level until the next point, then up or down
    StepAtOnce  ///< up or down at the point before, then level
};

/// Leads a line (ColumnSpans, LinePaths) along the points of a curve: each drawn point is joined to
/// the one before it unless one that is not drawn stands between them. Only what the view shows is
/// visited, and of many points in a column only those that make a difference.
template <class Line> class CurveWalk
{
public:
    CurveWalk(const CurveData &data, const PixelMap &x, const PixelMap &y, CurveJoin join,
              Line &line)
        : m_data(data), m_x(x), m_y(y), m_join(join), m_line(line)
    {
    }

    /// Points from..to, both included, one by one.
    void points(std::size_t from, std::size_t to)
    {
        for (std::size_t i = from; i <= to; ++i) {
            if (!m_data.isDrawn(i)) {
                m_joined = false;
                continue;
            }
            const QPointF &point = m_data.points()[i];
            step(m_x(point.x()), m_y(point.y()), isDoubtful(m_data.quality(i)));
        }
    }

    /// The buckets that lie between two values of x, and one more on each side.
    void level(const CurveLevel &level, double left, double right)
    {
        const auto &buckets = level.buckets();
        std::size_t i = level.indexAt(left);
        if (i > 0)
            --i;
        for (; i < buckets.size(); ++i) {
            const CurveBucket &bucket = buckets[i];
            m_joined = m_joined && !bucket.startsLine;
            visit(level, bucket);
            if (level.xOf(bucket, 0) > right)
                break;
        }
    }

    /// The same with buckets of one pixel column each, for ColumnSpans: nothing is left to be found
    /// out but the rows.
    void columns(const CurveLevel &level, double left, double right)
    {
        const auto &buckets = level.buckets();
        std::size_t i = level.indexAt(left);
        if (i > 0)
            --i;
        if (i >= buckets.size())
            return;
        const std::int64_t firstKey = level.keyOf(left);
        // The middle of a bucket decides, for all of them alike.
        const int firstColumn =
            int(std::floor(m_x((double(firstKey) + 0.5) * level.width()) + 0.5));
        const std::int64_t lastKey = level.keyOf(right) + 1;
        int before = 0;
        for (; i < buckets.size(); ++i) {
            const CurveBucket &bucket = buckets[i];
            const int column = int(bucket.key - firstKey) + firstColumn;
            m_joined = m_joined && !bucket.startsLine;
            visitColumn(bucket, column, m_joined && column - before <= 1);
            before = column;
            if (bucket.key > lastKey)
                break;
        }
    }

private:
    static bool isDoubtful(Nodes::Quality quality) { return quality != Nodes::Quality::Good; }

    void visit(const CurveLevel &level, const CurveBucket &bucket)
    {
        const bool doubtful = isDoubtful(bucket.quality);
        step(m_x(level.xOf(bucket, bucket.firstX)), m_y(bucket.firstY), doubtful);
        if (bucket.count < 2)
            return;
        m_atX = m_x(level.xOf(bucket, bucket.lastX));
        m_atY = m_y(bucket.lastY);
        m_line.spread(m_x(level.xOf(bucket, bucket.lowX)), m_y(bucket.lowY),
                      m_x(level.xOf(bucket, bucket.highX)), m_y(bucket.highY), m_atX, m_atY,
                      doubtful);
    }

    void visitColumn(const CurveBucket &bucket, int column, bool isNext)
    {
        const bool doubtful = isDoubtful(bucket.quality);
        if (!isNext)
            step(column, m_y(bucket.firstY), doubtful);
        if (isNext || bucket.count > 1) {
            m_atY = m_y(bucket.lastY);
            m_line.columnTo(column, m_y(bucket.lowY), m_y(bucket.highY), m_atY,
                            doubtful || (isNext && m_doubtful));
        }
        m_atX = column;
        m_joined = true;
        m_doubtful = doubtful;
    }

    void step(double x, double y, bool doubtful)
    {
        if (!m_joined) {
            m_line.moveTo(x, y);
        } else {
            const bool either = doubtful || m_doubtful;
            if (m_join == CurveJoin::StepAtNext)
                m_line.lineTo(x, m_atY, either);
            else if (m_join == CurveJoin::StepAtOnce)
                m_line.lineTo(m_atX, y, either);
            m_line.lineTo(x, y, either);
        }
        m_joined = true;
        m_doubtful = doubtful;
        m_atX = x;
        m_atY = y;
    }

    const CurveData &m_data;
    const PixelMap &m_x;
    const PixelMap &m_y;
    CurveJoin m_join;
    Line &m_line;
    bool m_joined = false;
    bool m_doubtful = false;
    double m_atX = 0;
    double m_atY = 0;
};

} // namespace Widgets
