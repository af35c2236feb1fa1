#pragma once

class QUndoCommand;

namespace Widgets {

class ProxyWidget;

/// What the host of an element asks of the scene that it is edited in. GUI thread.
class EditedScene
{
public:
    virtual ~EditedScene() = default;

    /// Commits the place and size of the selected elements as one step.
    virtual void onMoveFinished() = 0;
    /// Makes the element movable or not: as a step with `push`, else at once and for good.
    virtual void onPropertiesChange(ProxyWidget *widget, bool &movable, bool &push) = 0;
    /// Asks to delete the selected elements.
    virtual void removeWidget() = 0;
    /// Executes a step of its own; null is ignored.
    virtual void commit(QUndoCommand *command) = 0;
};

} // namespace Widgets
