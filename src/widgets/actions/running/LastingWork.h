#pragma once

namespace Widgets {

/// Work that an action began and that goes on after its run. The station waits for it when it ends.
/// GUI thread.
class LastingWork
{
public:
    virtual ~LastingWork() = default;

    /// Nothing goes on.
    virtual bool isIdle() const = 0;
    /// Ends what goes on: the station waits no longer.
    virtual void abandon() = 0;
};

} // namespace Widgets
