#pragma once

#include "nodes/alarms/AlarmTuning.h"
#include "nodes/alarms/statistics/AlarmFigures.h"

#include <QString>

#include <optional>

namespace Widgets {

/// A row of "what if": settings of an alarm, and what they would have done. Plain value.
struct TrialVariant
{
    QString name;
    /// Absent: what the journal has.
    std::optional<Nodes::AlarmTuning> tuning;
    std::optional<Nodes::AlarmFigures> figures; ///< absent: not computed, or changed since
};

} // namespace Widgets
