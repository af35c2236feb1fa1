#pragma once

#include "editor/review/ReviewFinding.h"

class QUndoCommand;

namespace Nodes {
class ConfigNode;
}

namespace Editor {

/// Puts right what a review found, where the rule knows how. GUI thread.
class ReviewMend
{
public:
    /// One step of the history; null when none of them can be put right. What to do is found anew,
    /// so that a project edited since is not set back; findings that no longer hold are left out.
    /// `screens` are those the findings are of, in the same order. The caller owns the command.
    static QUndoCommand *make(const Nodes::NodeLinks &screens, const ReviewFindings &findings);
};

} // namespace Editor
