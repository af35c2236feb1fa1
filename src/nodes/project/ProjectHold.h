#pragma once

#include "nodes/NodesExport.h"
#include "nodes/project/ProjectHolder.h"
#include "nodes/values/Result.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

namespace Nodes {

/// Keeps a project for whoever edits it: a file beside it says who that is. The kernel locks that
/// file for as long as the process lives and drops the lock however that ends. To other machines,
/// where the directory is shared and locks may not reach, the file's time tells: it is renewed
/// while the project is held. What a process that is gone has left behind is taken over. One
/// thread; a thread of its own renews the time, so that no slow disk is waited for.
class NODES_EXPORT ProjectHold
{
public:
    static constexpr std::chrono::milliseconds DefaultBeat = std::chrono::seconds(10);
    /// A file of another machine that has not been renewed for that many beats is left behind: by
    /// the clock of the disk or, as that may have been set, for as long as this object sees it.
    static constexpr int StaleBeats = 6;

    explicit ProjectHold(std::chrono::milliseconds beat = DefaultBeat) : m_beat(beat) {}
    ~ProjectHold();
    ProjectHold(const ProjectHold &) = delete;
    ProjectHold &operator=(const ProjectHold &) = delete;

    /// Refused while somebody else holds it, see GetHolder; StorageError where no file can be made,
    /// such as in a directory that is read only. Lets go of what was held before.
    [[nodiscard]] Result Take(const std::string &projectFile);
    /// Removes the file, unless it is somebody else's by now.
    void Release();

    bool IsHeld() const { return m_state != nullptr; }
    /// Held, but the file was removed or taken over by somebody: it tells nobody any more. Any
    /// thread.
    bool IsLost() const;
    /// Who held it when Take was refused.
    const ProjectHolder &GetHolder() const { return m_holder; }

    /// Whether a process of this machine other than this one edits it; takes nothing.
    static bool IsHeldNearby(const std::string &projectFile);
    /// The file that holds a project.
    static std::string FileOf(const std::string &projectFile) { return projectFile + ".lock"; }

private:
    struct State;

    bool isHeldElsewhere(const State &state, const ProjectHolder &found);
    bool isRenewed(std::int64_t time);

    const std::chrono::milliseconds m_beat;
    std::shared_ptr<State> m_state; // shared with its thread, which a disk may hold
    ProjectHolder m_holder;
    std::int64_t m_seenTime = 0; // of another machine's file, as last found
    std::chrono::steady_clock::time_point m_seenSince;
};

} // namespace Nodes
