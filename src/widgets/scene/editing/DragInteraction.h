#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/scene/editing/EditedScene.h"

#include <QObject>
#include <QPointF>
#include <QPointer>
#include <QRectF>

#include <vector>

namespace Widgets {

class DragAdjuster;
class EditOverlay;
class ProxyWidget;
class SceneSelection;

/// One drag of the mouse: all selected elements that may move follow the pointer by one delta, or
/// an edge or corner of one element follows it, or one of the rectangle around a group, in which
/// all of it is scaled. It moves items only; the nodes hear of it when the
/// drag is let go (SelectionEdits::commitGeometry). GUI thread.
class WIDGETS_EXPORT DragInteraction : public QObject
{
    Q_OBJECT

public:
    /// Both outlive it.
    DragInteraction(SceneSelection &selection, EditOverlay &overlay);
    ~DragInteraction() override;

    /// In the order in which they are asked, each of what the one before left; they outlive it.
    void addAdjuster(DragAdjuster &adjuster);
    void removeAdjuster(DragAdjuster &adjuster);

    bool isActive() const { return m_isActive; }
    /// The pointer is at `motion.to`: begins the drag, or goes on with it. One that was cancelled
    /// moves nothing until the next press.
    void follow(const DragMotion &motion);
    /// The elements stay where they are.
    void finish();
    /// The elements go back to where the drag began; false when there is none.
    bool cancel();

signals:
    void started();
    /// The elements are elsewhere than before.
    void moved();
    void finished();

private:
    struct Moved
    {
        QPointer<ProxyWidget> host;
        QRectF from;
    };

    void begin(const DragMotion &motion);
    void collect(const DragMotion &motion);
    QPointF adjusted(QPointF delta);
    void apply(QPointF delta);
    QRectF placed(const QRectF &from, QPointF delta) const;
    void place(const Moved &moved, const QRectF &rect) const;
    void end();

    SceneSelection &m_selection;
    EditOverlay &m_overlay;
    std::vector<DragAdjuster *> m_adjusters;
    std::vector<Moved> m_moved;
    QRectF m_from; ///< around all of them
    QPointF m_delta;
    Qt::Edges m_edges;      ///< that follow the pointer
    bool m_isMove = false;  ///< all of them, of all that is selected
    bool m_isScale = false; ///< of the rectangle around all that is selected
    bool m_isActive = false;
};

} // namespace Widgets
