#include "widgets/charts/painting/ColumnSpans.h"

#include "widgets/charts/painting/SolidFill.h"

#include <algorithm>
#include <limits>

namespace Widgets {

namespace {

constexpr int nowhere = std::numeric_limits<int>::min();

// Larger than any picture: what is cut off after it is added is rounded, also below zero, and that
// without a call for each of the points.
constexpr double middle = 1 << 24;

int rounded(double value)
{
    return int(value + (middle + 0.5)) - int(middle);
}

} // namespace

ColumnSpans::ColumnSpans(const QRect &clip, int penWidth, DashPattern pen, DashPattern doubtful)
    : m_clip(clip),
      m_before(penWidth / 2),
      m_after((penWidth - 1) / 2),
      m_pen(std::move(pen)),
      m_doubtful(std::move(doubtful)),
      m_base(clip.left() - penWidth),
      m_spans(std::size_t(clip.width() + 2 * penWidth), Span{1, 0, false}),
      m_first(nowhere),
      m_last(nowhere)
{
    m_leftmost = m_base - 1;
    m_rightmost = m_base + int(m_spans.size());
    m_topmost = clip.top() - m_after - 2;
    m_lowest = clip.bottom() + m_before + 2;
    m_rects.reserve(clip.width());
}

/// Rows outside are as good as the nearest one that a wide pen still shows nothing of.
int ColumnSpans::row(double y) const
{
    return rounded(std::clamp(y, m_topmost, m_lowest));
}

int ColumnSpans::column(double x) const
{
    return rounded(std::clamp(x, m_leftmost, m_rightmost)) - m_base;
}

void ColumnSpans::cover(int column, int from, int to, bool isDoubtful)
{
    if (column < 0 || column >= int(m_spans.size()))
        return;
    if (from > to)
        std::swap(from, to);
    Span &span = m_spans[std::size_t(column)];
    if (span.low > span.high) {
        span = {from, to, isDoubtful};
    } else {
        span.low = std::min(span.low, from);
        span.high = std::max(span.high, to);
        span.isDoubtful = span.isDoubtful || isDoubtful;
    }
    if (m_first == nowhere)
        m_first = column;
    m_last = column;
}

void ColumnSpans::moveTo(double x, double y)
{
    endLine();
    m_x = x;
    m_y = y;
}

void ColumnSpans::lineTo(double x, double y, bool isDoubtful)
{
    const int first = column(m_x);
    const int last = column(x);
    if (last <= first) {
        cover(first, row(m_y), row(y), isDoubtful);
    } else {
        const double slope = (y - m_y) / (x - m_x);
        const int end = std::min(last, int(m_spans.size()) - 1);
        const auto rowAt = [&](int column) {
            return row(m_y + (m_base + column - 0.5 - m_x) * slope);
        };
        int enters = first >= 0 ? row(m_y) : rowAt(0);
        for (int column = std::max(first, 0); column <= end; ++column) {
            const int leaves = column == last ? row(y) : rowAt(column + 1);
            // The row in which the line crosses over belongs to the next column.
            const int inside =
                column == last || leaves == enters ? leaves : leaves + (leaves < enters ? 1 : -1);
            cover(column, enters, inside, isDoubtful);
            enters = leaves;
        }
    }
    m_x = x;
    m_y = y;
}

void ColumnSpans::spread(double xLow, double low, double xHigh, double high, double x, double y,
                         bool isDoubtful)
{
    const int last = column(x);
    if (last == column(m_x)) {
        cover(last, row(low), row(high), isDoubtful);
        m_x = x;
        m_y = y;
        return;
    }
    if (xLow < xHigh) {
        lineTo(xLow, low, isDoubtful);
        lineTo(xHigh, high, isDoubtful);
    } else {
        lineTo(xHigh, high, isDoubtful);
        lineTo(xLow, low, isDoubtful);
    }
    lineTo(x, y, isDoubtful);
}

void ColumnSpans::columnTo(int column, double low, double high, double last, bool isDoubtful)
{
    cover(column - m_base, row(std::min({low, high, m_y})), row(std::max({low, high, m_y})),
          isDoubtful);
    m_x = column;
    m_y = last;
}

void ColumnSpans::stick(double x, double from, double to, bool isDoubtful)
{
    endLine();
    const int at = column(x) + m_base;
    const DashPattern &pattern = isDoubtful ? m_doubtful : m_pen;
    const int low = std::max(row(std::min(from, to)) - m_before, m_clip.top());
    const int high = std::min(row(std::max(from, to)) + m_after, m_clip.bottom());
    for (int i = at - m_before; i <= at + m_after && low <= high; ++i) {
        if (i < m_clip.left() || i > m_clip.right())
            continue;
        if (pattern.isSolid())
            addRect(i, low, high);
        else
            emitDashed(i, {low, high, isDoubtful}, pattern);
    }
}

void ColumnSpans::endLine()
{
    if (m_first == nowhere)
        return;
    for (int column = m_first - m_before; column <= m_last + m_after; ++column)
        emitSpan(column + m_base, widened(column));
    std::fill(m_spans.begin() + m_first, m_spans.begin() + m_last + 1, Span{1, 0, false});
    m_first = m_last = nowhere;
}

/// What the pen, as wide as it is high, covers in a column.
ColumnSpans::Span ColumnSpans::widened(int column) const
{
    if (m_before == 0)
        return m_spans[std::size_t(column)];
    Span span{std::numeric_limits<int>::max(), std::numeric_limits<int>::lowest(), false};
    for (int i = std::max(m_first, column - m_after); i <= std::min(m_last, column + m_before);
         ++i) {
        const Span &near = m_spans[std::size_t(i)];
        if (near.low > near.high)
            continue;
        span.low = std::min(span.low, near.low - m_before);
        span.high = std::max(span.high, near.high + m_after);
        span.isDoubtful = span.isDoubtful || near.isDoubtful;
    }
    return span;
}

void ColumnSpans::emitSpan(int column, const Span &span)
{
    const int low = std::max(span.low, m_clip.top());
    const int high = std::min(span.high, m_clip.bottom());
    if (low > high || column < m_clip.left() || column > m_clip.right())
        return;
    const DashPattern &pattern = span.isDoubtful ? m_doubtful : m_pen;
    if (pattern.isOn(column))
        addRect(column, low, high);
    else
        emitDashed(column, {low, high, span.isDoubtful}, pattern);
}

/// Where a dashed line rises or oscillates, a gap must not swallow how far it went: there the
/// dashes are cut from the rows.
void ColumnSpans::emitDashed(int column, const Span &span, const DashPattern &pattern)
{
    if (span.high - span.low <= m_before + m_after + 1)
        return;
    int begin = nowhere;
    for (int row = span.low; row <= span.high + 1; ++row) {
        const bool isOn = row <= span.high && pattern.isOn(row);
        if (isOn && begin == nowhere) {
            begin = row;
        } else if (!isOn && begin != nowhere) {
            addRect(column, begin, row - 1);
            begin = nowhere;
        }
    }
}

void ColumnSpans::addRect(int column, int low, int high)
{
    if (!m_rects.isEmpty()) {
        QRect &last = m_rects.last();
        if (last.right() + 1 == column && last.top() == low && last.bottom() == high) {
            last.setRight(column);
            return;
        }
    }
    m_rects.append(QRect(column, low, 1, high - low + 1));
}

void ColumnSpans::paint(QPainter &painter, const QColor &color)
{
    endLine();
    fillSolid(painter, m_rects, color);
    m_rects.clear();
}

} // namespace Widgets
