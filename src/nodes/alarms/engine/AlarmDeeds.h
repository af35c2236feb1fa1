#pragma once

#include "nodes/alarms/AlarmTuning.h"
#include "nodes/values/Timestamp.h"

#include <string>
#include <tuple>

namespace Nodes {

/// Who did something to an alarm, and why.
struct AlarmDeed
{
    std::string by;
    std::string reason;

    bool operator==(const AlarmDeed &o) const { return by == o.by && reason == o.reason; }
};

/// What people did to an alarm and said about it, as far as it still counts.
struct AlarmDeeds
{
    AlarmDeed shelved;
    AlarmDeed suppressed;
    AlarmDeed outOfService;
    std::string acknowledgedBy; ///< of the occurrence
    std::string comment;        ///< that came with it
    AlarmTuning tuning;         ///< what deviates from the project
    AlarmTuning project; ///< what the project said of the same numbers when they were changed
    std::string tunedBy;
    Timestamp tunedAt = 0;

    bool operator==(const AlarmDeeds &o) const { return fields() == o.fields(); }
    bool isEmpty() const { return *this == AlarmDeeds(); }

private:
    std::tuple<const AlarmDeed &, const AlarmDeed &, const AlarmDeed &, const std::string &,
               const std::string &, const AlarmTuning &, const AlarmTuning &, const std::string &,
               const Timestamp &>
    fields() const
    {
        return {shelved, suppressed, outOfService, acknowledgedBy, comment,
                tuning,  project,    tunedBy,      tunedAt};
    }
};

} // namespace Nodes
