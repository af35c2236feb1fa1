#pragma once

#include "nodes/NodesExport.h"

#include <boost/date_time/posix_time/posix_time_types.hpp>

#include <string>

namespace Nodes {

/// Period whose boundaries a relative time refers to. Boundaries are those of this machine's local
/// time; weeks begin on Monday.
enum class enRelativeTimeType {
    Now = 0, ///< no period: the present moment
    Minute = 1,
    Hour = 2,
    Day = 3,
    Week = 4,
    Month = 5,
    Year = 6
};

/// Which moment of the present period is meant.
enum class enRelativeTimeAdjust {
    None = 0,  ///< the present moment itself
    Begin = 1, ///< the first moment of the period
    End = 2    ///< the first moment after the period
};

/// A point in time or a duration, absolute or relative to the moment of asking: "08.03.2024 12:00",
/// "the last 20 minutes", "yesterday from midnight". Plain value, any thread.
class NODES_EXPORT NodeTime
{
public:
    using Time = boost::posix_time::ptime;
    using Duration = boost::posix_time::time_duration;

    /// No time: GetTime and GetDuration give not_a_date_time.
    NodeTime() = default;
    /// A point in time, UTC.
    NodeTime(const Time &time) : m_kind(Kind::Point), m_time(time) {}
    /// A span; as a point it means that long after the moment of asking, before it if negative.
    NodeTime(const Duration &duration) : m_kind(Kind::Span), m_duration(duration) {}
    /// `offset` after the chosen moment of the period that holds the moment of asking.
    NodeTime(enRelativeTimeType type, enRelativeTimeAdjust adjust, const Duration &offset)
        : m_kind(Kind::Relative), m_type(type), m_adjust(adjust), m_duration(offset)
    {
    }

    bool isRelative() const { return m_kind == Kind::Span || m_kind == Kind::Relative; }
    /// UTC; relative times are resolved against the installed Clock at each call.
    Time GetTime() const;
    /// The span, or the offset of a relative time; not_a_date_time for a point.
    Duration GetDuration() const { return m_duration; }
    /// Local time in a format of strftime, "%d.%m.%Y %H:%M:%S" for an empty one; "" for no time.
    /// A span is written as [-]hh:mm:ss whatever the format.
    std::string ToString(const std::string &format = std::string()) const;

private:
    enum class Kind { None, Point, Span, Relative };

    Kind m_kind = Kind::None;
    enRelativeTimeType m_type = enRelativeTimeType::Now;
    enRelativeTimeAdjust m_adjust = enRelativeTimeAdjust::None;
    Time m_time{boost::posix_time::not_a_date_time};
    Duration m_duration{boost::posix_time::not_a_date_time};
};

} // namespace Nodes
