#pragma once

#include "widgets/charts/painting/CurveWalk.h"
#include "widgets/charts/painting/PixelMap.h"

#include <QPen>
#include <QRectF>

class QPainter;

namespace Widgets {

class CurveData;

/// Draws one curve: decides what of it is visible and how much of that makes a difference.
class CurvePainter
{
public:
    enum class Style { Lines, Sticks, Dots };

    struct Look
    {
        Style style = Style::Lines;
        CurveJoin join = CurveJoin::Straight;
        double baseline = 0; ///< value at which sticks stand
        QPen pen;
    };

    /// The maps lead to the painter's coordinates, `canvas` is what may be painted in these.
    CurvePainter(QPainter &painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
                 const QRectF &canvas);

    /// Points from..to, both included.
    void draw(const CurveData &data, const Look &look, std::size_t from, std::size_t to);
    /// The marks of bad stretches, bars in the given row at the lower edge.
    void markBad(const CurveData &data, const QPen &pen, int row);

    /// Narrows from..to to the points in view and one beyond on each side; false when none is left.
    [[nodiscard]] bool limitToView(const CurveData &data, std::size_t &from, std::size_t &to) const;

private:
    template <class Line>
    void lead(const CurveData &data, const Look &look, std::size_t from, std::size_t to,
              const PixelMap &x, const PixelMap &y, Line &line) const;
    template <class Line>
    void leadSticks(const CurveData &data, double baseline, std::size_t from, std::size_t to,
                    const PixelMap &x, const PixelMap &y, Line &line) const;
    void drawSpans(const CurveData &data, const Look &look, std::size_t from, std::size_t to);
    void drawPaths(const CurveData &data, const Look &look, std::size_t from, std::size_t to);
    void drawDots(const CurveData &data, const Look &look, std::size_t from, std::size_t to);
    void markEnds(const CurveData &data, double from, double to);
    [[nodiscard]] bool canFillColumns(const CurveData &data, const QPen &pen) const;

    QPainter &m_painter;
    const QwtScaleMap &m_xMap;
    const QwtScaleMap &m_yMap;
    QRectF m_visible; // painter's coordinates
    double m_bottom;
    double m_left = 0; // values of x at the edges
    double m_right = 0;
};

} // namespace Widgets
