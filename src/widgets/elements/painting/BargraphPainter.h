#pragma once

#include "widgets/elements/painting/BargraphLayout.h"
#include "widgets/elements/painting/BargraphLook.h"

class QPainter;
class QPointF;

namespace Widgets {

/// Draws one bargraph. Places are given by a value along the scale and a depth across it: pixels
/// from the numbers' side. Short-lived, on the stack of a paint.
class BargraphPainter
{
public:
    BargraphPainter(QPainter &painter, const BargraphLook &look);
    void draw();

private:
    double along(double value) const;
    QPointF point(double position, double depth) const;
    QRectF area(double from, double to, double depth, double thickness) const;
    QRectF trough() const;

    void drawScale();
    void drawNumber(double value);
    void drawZone(double from, double to, Nodes::LimitZones::enZone zone);
    void drawZones();
    void drawBar();
    void drawOutline();
    void drawPointer();
    void drawOverflow(int direction, bool isFilled);
    void drawSetPoint();
    QRectF badgeOnBar(double height) const;
    void drawBadge();
    void drawText();

    QPainter &m_painter;
    const BargraphLook &m_look;
    const BargraphLayout m_layout;
};

} // namespace Widgets
