#pragma once

#include "nodes/values/Result.h"
#include "nodes/values/Timestamp.h"

#include <string>

namespace Nodes {
class systemCore;
}

namespace Station {

/// Makes up a past for the archived signals of a project, so that a newcomer sees trends at once.
/// Only what the archive knows nothing of is filled. GUI thread.
class GeneratedHistory
{
public:
    /// The core is not running yet.
    explicit GeneratedHistory(const Nodes::systemCore &core) : m_core(core) {}

    /// Up to now. What it did is told on stdout, what hinders it by the result.
    [[nodiscard]] Nodes::Result make(Nodes::Timestamp span);
    /// Tells the journal, once the core runs; nothing when nothing was made.
    void enter() const;

private:
    const Nodes::systemCore &m_core;
    std::string m_entry; // of the journal, in Russian
};

} // namespace Station
