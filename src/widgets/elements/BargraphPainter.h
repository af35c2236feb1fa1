#pragma once

#include "widgets/elements/ScaleTicks.h"

#include "nodes/values/Quality.h"
#include "nodes/visual/AlarmMark.h"

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QString>

#include <optional>

class QPainter;

namespace Widgets {

/// Everything a bargraph shows at one moment.
struct BargraphLook
{
    QRect box; ///< inside the frame
    bool isVertical = true;
    double minimum = 0;
    double maximum = 0;
    double value = 0; ///< NaN and bad quality draw no bar
    Nodes::Quality quality = Nodes::Quality::Bad;
    Nodes::LimitZones zones;
    Nodes::AlarmMark mark;
    std::optional<double> setPoint;
    bool isSetPointGood = true;
    QString text; ///< of the value; "" for no room reserved
    bool hasScale = true;
    QFont font;
    QColor textColor;
    QColor barColor;

    bool hasBar() const;
    /// -1 below the scale, 1 above it.
    static int overflow(double number, double minimum, double maximum)
    {
        return number < minimum ? -1 : number > maximum ? 1 : 0;
    }
};

/// Draws one bargraph. Places are given by a value along the scale and a depth across it: pixels
/// from the numbers' side. Short-lived, on the stack of a paint.
class BargraphPainter
{
public:
    BargraphPainter(QPainter &painter, const BargraphLook &look);
    void draw();

private:
    void layOut();
    double along(double value) const;
    QPointF point(double position, double depth) const;
    QRectF area(double from, double to, double depth, double thickness) const;
    QRectF trough() const;

    void drawScale();
    void drawNumber(double value);
    void drawZone(double from, double to, Nodes::LimitZones::enZone zone);
    void drawZones();
    void drawBar();
    void drawPointer();
    void drawOverflow(int direction, bool isFilled);
    void drawSetPoint();
    void drawBadge(double textWidth);
    void drawText();

    QPainter &m_painter;
    const BargraphLook &m_look;
    ScaleTicks m_ticks;
    QRectF m_axis; ///< scale and bar, without the ends for the arrows
    QRectF m_textRow;
    double m_tickDepth = 0; ///< where ticks begin; before it stand the numbers
    double m_zoneDepth = 0;
    double m_barDepth = 0;
    double m_markDepth = 0; ///< end of the bar: pointer and set-point
};

} // namespace Widgets
