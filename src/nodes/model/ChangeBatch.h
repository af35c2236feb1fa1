#pragma once

#include "nodes/NodesExport.h"

namespace Nodes {

/// While one lives, changes of properties are made but not yet told; when the outermost goes, each
/// node tells its subscribers once: of its one property that changed, or of several at once, as
/// "re-read everything". Children that come, go or move are told at once. GUI thread; a batch on
/// another thread or on none changes nothing.
class NODES_EXPORT ChangeBatch
{
public:
    /// A property that changed. Ids only, as the node may leave its project meanwhile.
    struct Change
    {
        unsigned long project; ///< its token
        unsigned long node;
        unsigned valueId; ///< 0: several
    };
    using Tell = void (*)(const Change &);

    ChangeBatch();
    ~ChangeBatch();
    ChangeBatch(const ChangeBatch &) = delete;
    ChangeBatch &operator=(const ChangeBatch &) = delete;

    /// Keeps the change until the batch ends, in the order of the nodes' first changes. False
    /// outside of any batch: it is to be told at once.
    static bool Defer(const Change &change, Tell tell);
};

} // namespace Nodes
