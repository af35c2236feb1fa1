#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/visual/AlarmMark.h"

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
    /// The same for an active alarm; `normal` for every other.
    static QColor color(const Nodes::AlarmMark &mark, const QColor &normal);
    /// Ground and pattern of a zone on a scale; muted unless the value is in it.
    static QColor ground(Zone zone, bool isActive);
    static QBrush pattern(Zone zone, bool isActive);
    /// Width to height of the badge.
    static constexpr double BadgeAspect = 1.7;
    /// A box for alarms, a pointed one for warnings, with the mark's token. Filled and in a second
    /// frame: active, not acknowledged. On white: acknowledged. Dashed: gone, not acknowledged.
    /// Grey and struck through: shelved, suppressed or out of service.
    static void drawBadge(QPainter &painter, const QRectF &rect, const Nodes::AlarmMark &mark);
};

} // namespace Widgets
