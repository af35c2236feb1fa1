#pragma once

#include <QPointF>
#include <QRectF>
#include <Qt>

namespace Widgets {

struct Guides;
class SceneSelection;

/// Has a say in where a drag goes: snapping, a grid, an axis that is kept. GUI thread.
class DragAdjuster
{
public:
    virtual ~DragAdjuster() = default;

    /// A drag begins. What moves is `moving`, the others stand still until `end`: the time to
    /// collect what to stick to.
    virtual void begin(const SceneSelection &moving) { Q_UNUSED(moving) }
    /// `moved` is the rectangle around what is dragged as it would stand after `delta`, counted
    /// from where the drag began; of a resize, that of the element after it. `movingEdges` are the
    /// edges that follow the pointer: all four in a move. Scene pixels. Returns the delta to be
    /// used; what led to it is added to `shown`, which is not null.
    virtual QPointF adjust(const QRectF &moved, QPointF delta, Qt::Edges movingEdges,
                           Guides *shown) = 0;
    /// The drag is over, whichever way.
    virtual void end() {}
};

} // namespace Widgets
