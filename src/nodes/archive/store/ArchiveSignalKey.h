#pragma once

#include "nodes/storage/RecordSource.h"

#include <string>
#include <tuple>

namespace Nodes {

/// Which signal's samples these are. It is the same signal as long as project, station and node
/// are: node ids are never used again, so a renamed signal keeps its history and that of a deleted
/// one can still be found. Names, path and unit are those of the time, for people.
struct ArchiveSignalKey
{
    RecordSource source; ///< its name is the path of the node
    std::string unit;

private:
    auto identity() const
    {
        return std::tie(source.home.project, source.home.station, source.node);
    }

public:
    bool IsSame(const ArchiveSignalKey &o) const { return identity() == o.identity(); }
    /// By identity alone: what maps and sets want.
    bool operator<(const ArchiveSignalKey &o) const { return identity() < o.identity(); }
    /// Whether what people see of it is the same too.
    bool IsCalledAs(const ArchiveSignalKey &o) const
    {
        return source.name == o.source.name && unit == o.unit &&
               source.home.stationName == o.source.home.stationName;
    }
};

} // namespace Nodes
