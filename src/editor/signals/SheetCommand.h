#pragma once

class QString;
class QUndoCommand;

namespace Nodes {
struct SheetPlan;
} // namespace Nodes

namespace Editor {

/// What the plan says as one step of the history; null for an empty plan. GUI thread.
QUndoCommand *makeSheetCommand(const Nodes::SheetPlan &plan, const QString &text);

} // namespace Editor
