#pragma once

#include "nodes/values/Result.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace Nodes {
class LoadProgress;
}

namespace Editor {

/// Work that a disk may hold up for long, or for ever. It owns all that it uses: whoever began it
/// may be gone when it ends.
struct DiskJob
{
    QString title;                                   ///< Russian: what is waited for
    std::function<Nodes::Result()> run;              ///< any thread
    std::shared_ptr<Nodes::LoadProgress> progress;   ///< null: it can be left, but not cancelled
    std::function<void(const Nodes::Result &)> late; ///< GUI thread: it ended when nobody waited
};

/// Does a job; nothing when nobody waits for its end any more. GUI thread.
using DiskRunner = std::function<std::optional<Nodes::Result>(const DiskJob &)>;

} // namespace Editor
