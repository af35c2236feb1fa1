#pragma once

#include "widgets/tools/problems/Problem.h"

#include <QString>

#include <vector>

class QUndoCommand;

namespace Editor {

/// Puts right what a check of the project found, where nobody has to think for it: links that lead
/// nowhere are cleared, repeated names told apart, attributes that do nothing removed. GUI thread.
namespace ProblemMend {

/// Russian: what would be done; "" for a problem that its finder has to put right.
QString describe(const Widgets::Problem &problem);
/// One step of the history; null when none of them is there any more. The caller owns it.
QUndoCommand *make(const std::vector<Widgets::Problem> &problems);

} // namespace ProblemMend

} // namespace Editor
