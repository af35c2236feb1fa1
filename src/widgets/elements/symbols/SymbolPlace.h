#pragma once

#include <QRectF>
#include <QTransform>

#include <cmath>

namespace Widgets {

/// How a picture stands in the area it is given.
struct SymbolPlace
{
    QSize area;
    double angle = 0; ///< degrees, clockwise
    bool isMirrored = false;
    bool keepsAspect = true;

    /// From the picture, its whole extent being 0 to 1, to the area: turned about the centre and
    /// as large as fits.
    QTransform transform(const QSizeF &picture) const
    {
        const double cosine = std::abs(std::cos(angle * radian));
        const double sine = std::abs(std::sin(angle * radian));
        const bool isLying = sine > 1 - 1e-9; // by a quarter turn: stretched to the other sides
        QSizeF size = keepsAspect ? picture : isLying ? QSizeF(area).transposed() : QSizeF(area);
        const double across = size.width() * cosine + size.height() * sine;
        const double down = size.width() * sine + size.height() * cosine;
        size *= qMin(area.width() / across, area.height() / down);
        return QTransform()
            .translate(area.width() / 2.0, area.height() / 2.0)
            .rotate(angle)
            .scale(isMirrored ? -size.width() : size.width(), size.height())
            .translate(-0.5, -0.5);
    }

    bool operator==(const SymbolPlace &other) const
    {
        return area == other.area && angle == other.angle && isMirrored == other.isMirrored &&
               keepsAspect == other.keepsAspect;
    }

private:
    static constexpr double radian = 3.14159265358979323846 / 180;
};

} // namespace Widgets
