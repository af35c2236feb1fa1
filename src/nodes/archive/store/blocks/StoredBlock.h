#pragma once

#include "nodes/archive/store/ArchiveSignalKey.h"
#include "nodes/values/Timestamp.h"

#include <cstdint>
#include <limits>
#include <vector>

namespace Nodes {

/// A signal as a store numbers it.
struct StoredSignal
{
    static constexpr Timestamp Never = std::numeric_limits<Timestamp>::min();

    std::int64_t number = 0; ///< from 1 on, never given again
    ArchiveSignalKey key;
    /// Its samples up to here are in blocks, later ones in the log. Never moves back.
    Timestamp sealedTo = Never;
    Timestamp generatedFrom = 0;
    Timestamp generatedTo = 0;
};

/// A block of a signal's samples (height 0, a chunk), or of aggregates over those below it: of
/// height 1 over one chunk, of height 2 over some of height 1, and so on. Blocks of one height do
/// not overlap. Later ones of a height may have nothing above them yet, and small chunks never do.
struct StoredBlock
{
    std::int64_t id = 0; ///< where the store finds the bytes; 0: not stored yet
    std::int64_t signal = 0;
    int height = 0;
    int bits = 0;        ///< of aggregates: each over 2^bits microseconds of absolute time
    Timestamp first = 0; ///< of its samples
    Timestamp last = 0;
    std::uint64_t samples = 0;
    std::uint64_t bytes = 0; ///< of its content
};

using StoredBlocks = std::vector<StoredBlock>;

} // namespace Nodes
