#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/alarms/statistics/AlarmFigures.h"
#include "nodes/values/Timestamp.h"

#include <QString>

namespace Widgets {

/// The period of the alarm health page: so many days up to the present, or from a moment to
/// another.
struct WIDGETS_EXPORT HealthPeriod
{
    enum Kind { Day = 1, Week = 2, Month = 3, Free = 4 };

    Kind kind = Week;
    Nodes::Timestamp from = 0; ///< of a free one
    Nodes::Timestamp to = 0;

    bool reachesPresent() const { return kind != Free; }
    /// On whole ten minutes where it follows the present: a refresh counts in the same ones.
    Nodes::Timestamp begin(Nodes::Timestamp now) const;
    /// Not after the present.
    Nodes::Timestamp end(Nodes::Timestamp now) const;
};

} // namespace Widgets
