#pragma once

#include "nodes/values/Result.h"

#include <functional>
#include <string>

namespace Nodes {

/// What opening a store has to say, and what it found.
struct StoreOpening
{
    std::function<void()> onStep; ///< called now and then while it takes long; may be empty
    std::string setAside;         ///< where what was damaged is now; "" when nothing was
    bool isRestored = false;      ///< what was removed or replaced meanwhile stands there again
    bool isReplaced = false;      ///< something else stands in its place, and is used from now on
};

/// A place where something is kept over restarts, named by its location: a file, or whatever the
/// implementation understands. Any call may take as long as the disk or the network does. One
/// thread at a time.
///
/// An implementation promises:
/// - what a later version of the program wrote is refused with StorageError and left as it is;
/// - what an earlier version wrote is brought up to date completely or not at all;
/// - after a failure that only another Open can mend (a lost connection, damage) it counts as
///   closed. Damage is set aside by that Open, never deleted, and something new is begun.
class BasicStore
{
public:
    virtual ~BasicStore() = default;

    virtual const std::string &GetLocation() const = 0;
    /// Makes what is missing. After a failure nothing is open, and it may be tried again.
    [[nodiscard]] virtual Result Open(StoreOpening &opening) = 0;
    /// Whether Open may wait for a network, so that nobody who is in a hurry may call it.
    virtual bool IsDistant() const { return false; }
    virtual void Close() = 0;
    virtual bool IsOpen() const = 0;
    /// True, and the store then counts as closed, when what was opened is not what the next start
    /// would find: it was removed or replaced. The next Open saves what it can of it.
    virtual bool NoticeMove() = 0;
};

} // namespace Nodes
