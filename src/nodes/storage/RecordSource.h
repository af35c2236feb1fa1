#pragma once

#include <string>
#include <tuple>

namespace Nodes {

/// Where records come from: the project that a station runs, for good.
struct RecordHome
{
    std::string project;       ///< its UUID; "" when unknown
    unsigned long station = 0; ///< id of the recording station's node; 0: the project has none
    std::string stationName;   ///< at the time, for people

    /// A name may change, which makes no other station of it.
    bool IsSame(const RecordHome &other) const
    {
        return !project.empty() && project == other.project && station == other.station;
    }
};

/// What a record is about, for good: ids mean something within their project only, and what one
/// station recorded is not what another one did. Any record names its source by this.
struct RecordSource
{
    RecordHome home;
    unsigned long node = 0; ///< 0: no node, or one of another project
    std::string name;       ///< path of the node, or whatever the source was called at the time

private:
    auto fields() const
    {
        return std::tie(node, name, home.station, home.project, home.stationName);
    }

public:
    bool operator<(const RecordSource &o) const { return fields() < o.fields(); }
    bool operator==(const RecordSource &o) const { return fields() == o.fields(); }
};

} // namespace Nodes
