#pragma once

#include <QMetaType>

// Names as in the multi-axis variant of Qwt, and like there outside any namespace.

/// The four sides of a plot; the numbers are those of QwtPlot::Axis.
namespace QwtAxis {

enum Position { yLeft, yRight, xBottom, xTop };
enum { PosCount = xTop + 1 };

constexpr bool isValid(int position)
{
    return position >= yLeft && position < PosCount;
}
constexpr bool isYAxis(int position)
{
    return position == yLeft || position == yRight;
}
constexpr bool isXAxis(int position)
{
    return position == xBottom || position == xTop;
}

} // namespace QwtAxis

/// One axis of a plot: its side and its index there, 0 the nearest to the canvas.
class QwtAxisId
{
public:
    constexpr QwtAxisId() = default;
    /// Not explicit: a bare side means its first axis, as everywhere in Qwt.
    constexpr QwtAxisId(int position, int index = 0) : pos(position), id(index) {}

    [[nodiscard]] constexpr bool isXAxis() const { return QwtAxis::isXAxis(pos); }
    [[nodiscard]] constexpr bool isYAxis() const { return QwtAxis::isYAxis(pos); }
    constexpr bool operator==(QwtAxisId other) const { return pos == other.pos && id == other.id; }
    constexpr bool operator!=(QwtAxisId other) const { return !(*this == other); }

    int pos = -1; ///< QwtAxis::Position; -1: no axis
    int id = 0;   ///< index on that side, outwards
};

Q_DECLARE_METATYPE(QwtAxisId)

namespace Widgets {

/// Axis in one number, for Qwt classes that keep an axis as int and only ask canvasMap(int)
/// with it (pickers). The first axis of a side keeps the number that Qwt gives it.
constexpr int packedAxis(const QwtAxisId &axis)
{
    return axis.id * QwtAxis::PosCount + axis.pos;
}
constexpr QwtAxisId unpackedAxis(int packed)
{
    return packed < 0 ? QwtAxisId()
                      : QwtAxisId(packed % QwtAxis::PosCount, packed / QwtAxis::PosCount);
}

} // namespace Widgets
