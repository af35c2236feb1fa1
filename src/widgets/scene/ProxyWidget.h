#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/context/SceneContext.h"

#include "nodes/model/NodesArray.h"
#include "nodes/model/links/NodeLink.h"
#include "nodes/model/services/AuthPriv.h"
#include "utils/relay/NodeRelay.h"

#include <QGraphicsProxyWidget>

#include <memory>

class IWidget;
class QMimeData;
class QUndoCommand;

namespace Nodes {
class BasicProperty;
class BasicWidget;
} // namespace Nodes

namespace Widgets {

class CornerGrabber;
class DirectPainting;
class EditedScene;
class ElementEditor;
class Locker;

/// Scene item that hosts one visual element: creates it through the element factory, starts it,
/// and follows its node's place, order, visibility and flags. Owns the element, not the node.
/// GUI thread.
class WIDGETS_EXPORT ProxyWidget : public QGraphicsProxyWidget
{
    Q_OBJECT

public:
    /// Where the editor's border stands.
    enum TypeFrame : int {
        FrameInside = 0,
        FrameOutside = 1,
        FrameNone = 2 ///< any other value is treated as this one
    };

    explicit ProxyWidget(QGraphicsItem *parent = nullptr,
                         Qt::WindowFlags flags = Qt::WindowFlags());
    /// A link that leads to no element, or to one of an unknown kind, gives an empty host.
    explicit ProxyWidget(Nodes::NodeLink link, QGraphicsItem *parent = nullptr,
                         Qt::WindowFlags flags = Qt::WindowFlags(),
                         SceneContextPtr context = SceneContext::process());
    ~ProxyWidget() override;

    /// UserType plus the node's type code, so that the item's type tells the element's.
    int type() const override { return m_type; }
    Nodes::NodeLink getNodeLink() const { return m_link; }
    /// Null when the node is gone or is no element.
    Nodes::BasicWidget *getNode() const;
    /// Null for an empty host.
    IWidget *element() const { return m_element; }
    /// That of the scene.
    const SceneContext &context() const { return *m_context; }
    /// The context's mode is another one than before: makes the element anew.
    void takeContext();

    void start();
    void stop();
    /// Stops it for good, while its node still exists: it waits for its deletion, and hears of the
    /// node, which an undo may bring back before, no more.
    void retire();
    /// Hides or disables the element as the rights of the current user demand.
    void judgeAccess();
    void setTypeFrame(TypeFrame type);
    /// Whether the layer lets the element be selected and moved, as far as its node allows it.
    void setPickable(bool on);
    /// Brings the marks of the editor in line with the item's selection and place.
    void setFrame();
    /// Puts the editor's border around the rectangle; an empty one means the present geometry.
    void setPositionItems(const QRectF &rect);
    /// The same for the grabbers of a selected element. Scene pixels.
    void setCornerPositions(const QRectF &rect);
    /// Place and size while they are dragged, with border and grabbers. Committed as keyMove is.
    void setEditedGeometry(const QRectF &rect);

    /// Moves and grows the element, when selected, by the delta's corner and size (scene pixels;
    /// no smaller than 0). One that is not movable takes changes of the size alone. Nothing is
    /// committed before ProxyScene::onMoveFinished.
    void keyMove(const QRectF &delta);
    /// Has the scene delete this element alone; false when it cannot be selected or is in no
    /// editor.
    bool removeWidget();
    /// Step that gives the node the item's place and size; null when it has them. Owned by the
    /// parent, or else by the caller.
    QUndoCommand *getGeometryChangeCommand(QUndoCommand *parent);
    /// After that step: where it was refused, the item goes back to where its node is.
    void takeRefusal();
    /// Puts the item back to where it was before a move that is not committed; false without one.
    bool takeBackMove();
    /// Step that makes the node movable or not. Without `push` it is done already.
    QUndoCommand *getIsMoviedPropertiesChangeCommand(QUndoCommand *parent, bool &movable,
                                                     bool &push);
    /// Nodes of the element's project that are dragged, by path or by id; absent ones left out.
    Nodes::NodesArray getNaFromMineDate(const QMimeData *mime) const;
    /// Nothing is dragged over it any more.
    void hideDrop();
    /// Null outside the editor.
    Locker *locker() const;

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option,
               QWidget *widget = nullptr) override;

signals:
    /// Asks to have the selection copied.
    void copyWidget();
    void propertyUpdated(Nodes::BasicProperty *property);
    void positionChanged(QPointF position);
    void selectedChanged(bool value);
    /// The item was dragged and let go.
    void movedFinished();

protected:
    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override;
    void resizeEvent(QGraphicsSceneResizeEvent *event) override;
    void hoverEnterEvent(QGraphicsSceneHoverEvent *event) override;
    void hoverLeaveEvent(QGraphicsSceneHoverEvent *event) override;
    void wheelEvent(QGraphicsSceneWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void ungrabMouseEvent(QEvent *event) override;
    bool sceneEventFilter(QGraphicsItem *watched, QEvent *event) override;
    void dragEnterEvent(QGraphicsSceneDragDropEvent *event) override;
    void dragLeaveEvent(QGraphicsSceneDragDropEvent *event) override;
    void dragMoveEvent(QGraphicsSceneDragDropEvent *event) override;
    void dropEvent(QGraphicsSceneDragDropEvent *event) override;

private:
    void build();
    void host(Nodes::BasicWidget &node);
    void dropElement();
    ElementEditor &editor();
    /// Null outside of one.
    EditedScene *editedScene() const;
    void leaveSelection(const QVariant &newScene);
    void commitResize();
    void filterMouse(CornerGrabber &grabber, const QGraphicsSceneMouseEvent &event);
    QWidget *createWidget(Nodes::BasicWidget *node);
    void nameElement(QWidget &widget, const Nodes::BasicWidget &node) const;
    void forgetElement();
    void takeAll();
    void takePlace(const Nodes::BasicWidget &node);
    void takeDisabled(const Nodes::BasicWidget &node);
    void takeFlags(const Nodes::BasicWidget &node);
    void takeMovable(const Nodes::BasicWidget &node);
    void takeSelectable(const Nodes::BasicWidget &node);
    void onPropertyUpdated(Nodes::BasicProperty *property);
    void onMovedFinished();
    void onLockChanged(bool lock);
    void markAlarms();
    void later(void (ProxyWidget::*take)(const Nodes::BasicWidget &));
    void takeVisible(const Nodes::BasicWidget &node);
    void forwardToView(QGraphicsSceneMouseEvent *event);

    SceneContextPtr m_context = SceneContext::process();
    Nodes::enAccessDeniedAction m_denial = Nodes::AccessDeniedRefuse; // what is shown accords to it
    Nodes::NodeLink m_link;
    int m_type = UserType;
    IWidget *m_element = nullptr;
    DirectPainting *m_direct = nullptr; // the element, when it paints without a widget's machinery
    std::unique_ptr<ElementEditor> m_editor; // null at run time
    TypeFrame m_frameType = FrameOutside;
    bool m_isPickable = true;
    Utils::NodeRelay m_relay;
};

} // namespace Widgets
