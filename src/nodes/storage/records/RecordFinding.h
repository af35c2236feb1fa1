#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace Nodes {

/// Something about the places of records that people have to hear of. The owner of the records
/// finds the words.
struct RecordFinding
{
    enum Kind {
        StoreMoved,     ///< `place` was removed or replaced while it was open
        StoreRestored,  ///< what it held stands there again
        StoreReplaced,  ///< something else stands there; records go on in that
        StoreSetAside,  ///< it was damaged; `detail` is where it is now, a new one was begun
        SpillRestored,  ///< the file was deleted; what it held was written again
        SpillTorn,      ///< it ended within a record and was cut; `detail`: a copy, "" without one
        SpillDamaged,   ///< a record of it cannot be read: `detail`
        SpillRefused,   ///< the file must not or cannot be used: `detail`
        UpkeepFailed,   ///< the store's own work could not be done: `detail`
        RecordsRejected ///< `count` records were lost: there was no room
    };

    Kind kind = StoreMoved;
    std::string place; ///< location of the store or name of the file
    std::string detail;
    std::vector<std::string> removed; ///< copies of torn files that had to go, the oldest ones
    std::size_t count = 0;
};

using RecordFindings = std::vector<RecordFinding>;

/// What operators read of a spill file that was cut, whoever's records it holds; Russian.
std::string TornText(const RecordFinding &torn);

} // namespace Nodes
