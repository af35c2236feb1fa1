#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/values/Timestamp.h"

#include <QString>

namespace Widgets {

/// Lengths of time as operators read them.
class WIDGETS_EXPORT AlarmSpans
{
public:
    /// Microseconds, not below 0, in the two largest units: "2 ч 05 мин", "3 мин 20 с", "15 с".
    static QString text(Nodes::Timestamp span);
    /// What is left to respond to an alarm raised at `raised`, or how long that has been over; ""
    /// when no time is told (minutes 0) or it is not known when it was raised.
    static QString responseText(Nodes::Timestamp raised, int minutes, Nodes::Timestamp now);
    static bool isOverdue(Nodes::Timestamp raised, int minutes, Nodes::Timestamp now);
};

} // namespace Widgets
