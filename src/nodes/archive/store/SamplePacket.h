#pragma once

#include "nodes/NodesExport.h"
#include "nodes/archive/store/ArchiveSignalKey.h"
#include "nodes/archive/store/SampleRun.h"
#include "nodes/storage/records/Record.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Nodes {

/// Samples of several signals on their way into an archive: what one Record of a Recorder holds.
/// A plain value.
struct NODES_EXPORT SamplePacket
{
    struct Part
    {
        ArchiveSignalKey signal;
        SampleRun run;            ///< in any order
        bool isGenerated = false; ///< made up to show something, never measured
    };
    std::vector<Part> parts;

    /// Samples of all parts.
    std::size_t Size() const;
    /// Some five bytes a sample and 20 + name a part. Keep it below MostSamples: the bytes then fit
    /// into a record, unless texts are long.
    std::string Pack() const;
    /// Nothing when these are no packet, or a damaged one. Later versions of the format are not
    /// read either: see Format().
    static std::optional<SamplePacket> Unpack(std::string_view bytes);

    static constexpr std::size_t MostSamples = 500000;
    /// Of records that hold packets.
    static RecordFormat Format() { return {"archive", "samples", 1, {}}; }
};

} // namespace Nodes
