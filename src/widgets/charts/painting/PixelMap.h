#pragma once

#include <qwt_scale_map.h>

#include <QTransform>

namespace Widgets {

/// Values of one axis to pixels of the paint device, the painter's shift and scale included.
class PixelMap
{
public:
    /// `scale` and `shift` lead from the coordinates of the map to those of the device.
    PixelMap(const QwtScaleMap &map, double scale, double shift)
        : m_map(map), m_isLinear(!map.transformation()), m_scale(scale), m_shift(shift)
    {
        m_origin = map.s1();
        const double first = map.transform(map.s1());
        m_start = first * scale + shift;
        m_factor = map.s2() != map.s1()
                       ? (map.transform(map.s2()) - first) / (map.s2() - map.s1()) * scale
                       : 0;
    }

    /// Linear scales are most of them, and this is asked for every point that is drawn.
    [[nodiscard]] double operator()(double value) const
    {
        // From the start of the scale: times are too large to be multiplied as they are.
        return m_isLinear ? m_start + (value - m_origin) * m_factor
                          : m_map.transform(value) * m_scale + m_shift;
    }
    [[nodiscard]] double valueAt(double pixel) const
    {
        return m_map.invTransform((pixel - m_shift) / m_scale);
    }
    [[nodiscard]] bool isLinear() const { return m_isLinear; }
    /// Of a linear scale: pixels grow with the value.
    [[nodiscard]] bool isRising() const { return m_factor > 0; }
    /// Of a linear scale: units of the value in one pixel.
    [[nodiscard]] double unitsPerPixel() const { return m_factor != 0 ? 1 / qAbs(m_factor) : 0; }

private:
    QwtScaleMap m_map;
    bool m_isLinear;
    double m_scale;
    double m_shift;
    double m_origin = 0;
    double m_start = 0;
    double m_factor = 0;
};

} // namespace Widgets
