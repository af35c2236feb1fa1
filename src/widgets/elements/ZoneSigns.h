#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/visual/LimitZones.h"

#include <QBrush>
#include <QColor>

class QPainter;
class QRectF;

namespace Widgets {

/// How warning and alarm zones look everywhere: told apart by shape, text and pattern as well as
/// by colour.
class WIDGETS_EXPORT ZoneSigns
{
public:
    using Zone = Nodes::LimitZones::enZone;

    /// Colour of what is in the zone now; `normal` for none.
    static QColor color(Zone zone, const QColor &normal);
    /// Ground and pattern of a zone on a scale; muted unless the value is in it.
    static QColor ground(Zone zone, bool isActive);
    static QBrush pattern(Zone zone, bool isActive);
    /// Width to height of the badge.
    static constexpr double BadgeAspect = 1.7;
    /// A box with "HH" or "LL" for alarms, a pointed one with "H" or "L" for warnings; nothing for
    /// the normal zone.
    static void drawBadge(QPainter &painter, const QRectF &rect, Zone zone);
};

} // namespace Widgets
