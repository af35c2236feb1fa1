#pragma once

#include <QRectF>

namespace Widgets {

/// Brings rectangles along when the one around them is moved and resized. What touches still does.
class RectScale
{
public:
    RectScale(const QRectF &from, const QRectF &to) : m_from(from), m_to(to) {}

    /// On whole pixels; what had an area keeps at least a pixel of it.
    QRectF mapped(const QRectF &rect) const
    {
        const double left =
            place(rect.left(), m_from.left(), m_from.width(), m_to.left(), m_to.width());
        const double right =
            place(rect.right(), m_from.left(), m_from.width(), m_to.left(), m_to.width());
        const double top =
            place(rect.top(), m_from.top(), m_from.height(), m_to.top(), m_to.height());
        const double bottom =
            place(rect.bottom(), m_from.top(), m_from.height(), m_to.top(), m_to.height());
        return {left, top, qMax(right - left, qMin(1.0, rect.width())),
                qMax(bottom - top, qMin(1.0, rect.height()))};
    }

private:
    static double place(double at, double from, double size, double to, double newSize)
    {
        return qRound(to + (size > 0 ? (at - from) * newSize / size : 0));
    }

    QRectF m_from;
    QRectF m_to;
};

} // namespace Widgets
