#pragma once

#include "widgets/scene/editing/GrabberFrame.h"

#include "nodes/model/links/NodeLink.h"

#include <QObject>
#include <QRect>

class QGraphicsProxyWidget;
class QGraphicsSceneMouseEvent;
class QUndoCommand;

namespace Nodes {
class BasicWidget;
}

namespace Widgets {

class Border;
class DragAndDropItem;
class Locker;

/// Editing of one element by its host in a scene: dragging, keys, border and lock, and the steps
/// that bring the host's place into the node. A host at run time has none. GUI thread.
class ElementEditor : public QObject
{
    Q_OBJECT

public:
    /// Border and lock are child items of the host, made only when it is decorated.
    ElementEditor(QGraphicsProxyWidget &host, const Nodes::NodeLink &link, bool isDecorated);
    ~ElementEditor() override;

    /// Null without decoration.
    Locker *locker() const { return m_locker; }
    /// ProxyWidget::TypeFrame.
    void setTypeFrame(int type);
    /// Puts the decoration around the rectangle; an empty one means the present geometry.
    void place(const QRectF &rect);
    /// Shows the host selected or not: by eight grabbers, or where it has none, by the frame that
    /// the scene draws in place of the border.
    void showSelected(bool isSelected, bool hasGrabbers);
    /// As `place`, for the grabbers.
    void placeGrabbers(const QRectF &rect);
    /// Something is dragged over the host, which takes it or not.
    void showDrop(bool isAcceptable);
    /// It is not any more: whether it would have been taken.
    bool hideDrop();
    void takeMovable(bool isMovable);
    void takeSelected(bool isSelected);
    /// The node holds the present geometry: the next step starts from there.
    void rememberGeometry();

    /// Whether that move drags the host.
    bool drags(const QGraphicsSceneMouseEvent &event);
    /// The button was let go: whether a drag ended that is to be committed.
    bool endsDrag();
    /// See ProxyWidget::keyMove.
    void keyMove(const QRectF &delta);

    /// See ProxyWidget::getGeometryChangeCommand, and so on.
    QUndoCommand *geometryChange(QUndoCommand *parent);
    void takeRefusal();
    bool takeBackMove();
    QUndoCommand *movableChange(QUndoCommand *parent, bool movable, bool push) const;

signals:
    /// The operator turned the lock over.
    void lockChanged(bool lock);

private:
    Nodes::BasicWidget *node() const;

    QGraphicsProxyWidget &m_host;
    Nodes::NodeLink m_link;
    Border *m_border = nullptr;
    Locker *m_locker = nullptr;
    DragAndDropItem *m_drop = nullptr; ///< while something is dragged over the host
    GrabberFrame m_grabbers;
    int m_frameType = 1;
    bool m_isMoving = false;
    QRect m_committed;        ///< geometry that the node holds
    bool m_isOffered = false; ///< the same, if the command that was made is not refused
};

} // namespace Widgets
