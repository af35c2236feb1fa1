#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/events/BasicEvent.h"

#include <QColor>
#include <QPixmap>

namespace Widgets {

/// How an alarm's state and priority look in lists: filled while it waits for acknowledgement, the
/// priority by number and shape as well as by colour.
struct WIDGETS_EXPORT AlarmSigns
{
    QColor ground;
    QColor text;

    /// Ground of the list itself.
    static QColor listGround();
    static AlarmSigns of(Nodes::AlarmState state, int priority);
    /// Badge with the priority's number and shape: square, triangle, diamond, circle. GUI thread.
    static QPixmap badge(Nodes::AlarmState state, int priority, int height);
};

} // namespace Widgets
