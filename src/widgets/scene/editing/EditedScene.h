#pragma once

#include "widgets/scene/editing/Corner.h"

#include <QPointF>

class QUndoCommand;

namespace Widgets {

class ProxyWidget;

/// A motion of the mouse with the button down. Scene pixels.
struct DragMotion
{
    ProxyWidget *host = nullptr; ///< what the button was pressed on; null for a grabber of a group
    Corner corner = NoCorner;    ///< the grabber of it; none: the element as a whole
    QPointF from;                ///< where it was pressed
    QPointF to;
};

/// What the host of an element asks of the scene that it is edited in. GUI thread.
class EditedScene
{
public:
    virtual ~EditedScene() = default;

    /// The element was selected; or it is not any more, or leaves the scene.
    virtual void takeSelected(ProxyWidget &host, bool on) = 0;
    /// The element was pressed: of the selected ones it is the key element.
    virtual void takePressed(ProxyWidget &host) = 0;
    /// The press, or its release, changed what is selected of the element's group.
    virtual void takePicked(ProxyWidget &host) = 0;
    /// The element was pressed twice: goes into its group.
    virtual void takeEntered(ProxyWidget &host) = 0;
    /// The element has another place or size than before.
    virtual void takePlaced(ProxyWidget &host) = 0;
    /// The element may belong to another group than before.
    virtual void takeRegrouped(ProxyWidget &host) = 0;
    /// Whether the element has grabbers when it is selected: of very many only the key one has.
    virtual bool hasGrabbers(const ProxyWidget &host) const = 0;
    /// Moves the selected elements with the pointer, or resizes that one, or all as a group.
    virtual void drag(const DragMotion &motion) = 0;
    /// The button was let go: what was dragged stays where it is.
    virtual void finishDrag() = 0;
    /// The pointer was lost before the button was let go: what was dragged goes back.
    virtual void cancelDrag() = 0;
    /// What is dragged over the element is not taken by it: it hears nothing of its going away.
    virtual void takeRefused(ProxyWidget &host) = 0;
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
