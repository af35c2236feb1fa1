#pragma once

#include "nodes/values/Result.h"

#include <memory>
#include <string>

namespace Host {

/// Holds a data directory for this process, as long as the object lives. Once a second a thread of
/// its own looks whether the directory is still there; one that was removed or replaced is made and
/// held again, so that the stores can go on. One thread; only the destructor may wait for the disk,
/// and for a second at most.
class DirectoryHold
{
public:
    DirectoryHold() = default;
    ~DirectoryHold();
    DirectoryHold(const DirectoryHold &) = delete;
    DirectoryHold &operator=(const DirectoryHold &) = delete;

    /// As ProcessLock::take. Once an object.
    [[nodiscard]] Nodes::Result take(const std::string &directory);
    /// What is wrong with the directory, in English; "" when nothing is, or nothing is held.
    std::string trouble() const;

private:
    struct Watch;

    std::shared_ptr<Watch> m_watch; // shared with its thread, which a disk may hold
};

} // namespace Host
