// How a host changes between editing and run time, what it leaves to its editor and what it asks of
// the scene that it is edited in.
#include "widgets/elements/IWidget.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/editing/EditedScene.h"
#include "widgets/scene/editing/ElementEditor.h"
#include "widgets/scene/editing/Locker.h"

#include "nodes/visual/BasicWidget.h"

#include <QGraphicsScene>
#include <QUndoCommand>
#include <QWidget>

namespace Widgets {

void ProxyWidget::takeContext()
{
    const bool wasActive = m_element && m_element->isActive();
    if (QObject *gestures = m_context->gestures())
        removeEventFilter(gestures);
    stop();
    dropElement();
    m_editor.reset();
    build();
    if (wasActive)
        start();
}

// Later: one of its handlers may be under way.
void ProxyWidget::dropElement()
{
    QWidget *dropped = widget();
    if (!dropped)
        return;
    disconnect(dropped, &QObject::destroyed, this, &ProxyWidget::forgetElement);
    forgetElement();
    dropped->hide();
    setWidget(nullptr);
    dropped->deleteLater();
}

ElementEditor &ProxyWidget::editor()
{
    if (!m_editor) {
        m_editor = std::make_unique<ElementEditor>(*this, m_link, m_context->isEditor());
        m_editor->setTypeFrame(m_frameType);
        m_editor->rememberGeometry();
        connect(m_editor.get(), &ElementEditor::lockChanged, this, &ProxyWidget::onLockChanged);
        connect(this, &ProxyWidget::movedFinished, this, &ProxyWidget::onMovedFinished,
                Qt::UniqueConnection);
    }
    return *m_editor;
}

Locker *ProxyWidget::locker() const
{
    return m_editor ? m_editor->locker() : nullptr;
}

void ProxyWidget::setTypeFrame(TypeFrame type)
{
    m_frameType = type;
    if (m_editor)
        m_editor->setTypeFrame(type);
}

EditedScene *ProxyWidget::editedScene() const
{
    return dynamic_cast<EditedScene *>(scene());
}

void ProxyWidget::leaveSelection(const QVariant &newScene)
{
    if (newScene.value<QGraphicsScene *>() || !isSelected())
        return;
    if (EditedScene *edited = editedScene())
        edited->takeSelected(*this, false);
}

void ProxyWidget::setFrame()
{
    const EditedScene *edited = editedScene();
    if (m_editor)
        m_editor->showSelected(isSelected(), !edited || edited->hasGrabbers(*this));
    setPositionItems(geometry());
}

void ProxyWidget::setCornerPositions(const QRectF &rect)
{
    if (m_editor)
        m_editor->placeGrabbers(rect);
}

void ProxyWidget::setEditedGeometry(const QRectF &rect)
{
    setGeometry(rect);
    setCornerPositions(geometry());
    setPositionItems(geometry());
}

void ProxyWidget::setPositionItems(const QRectF &rect)
{
    if (m_editor)
        m_editor->place(rect);
}

void ProxyWidget::keyMove(const QRectF &delta)
{
    editor().keyMove(delta);
}

QUndoCommand *ProxyWidget::getGeometryChangeCommand(QUndoCommand *parent)
{
    return editor().geometryChange(parent);
}

void ProxyWidget::setPickable(bool on)
{
    const Nodes::BasicWidget *node = getNode();
    m_isPickable = on;
    if (on && !node)
        return;
    setFlag(ItemIsSelectable, on && node->isSelectable());
    setFlag(ItemIsMovable, on && node->isMovable());
}

void ProxyWidget::takeRefusal()
{
    editor().takeRefusal();
}

bool ProxyWidget::takeBackMove()
{
    return editor().takeBackMove();
}

QUndoCommand *ProxyWidget::getIsMoviedPropertiesChangeCommand(QUndoCommand *parent, bool &movable,
                                                              bool &push)
{
    return editor().movableChange(parent, movable, push);
}

void ProxyWidget::onMovedFinished()
{
    EditedScene *edited = editedScene();
    // All that is selected follows the element that is dragged, and makes one step with it.
    if (edited && isSelected()) {
        edited->onMoveFinished();
        return;
    }
    std::unique_ptr<QUndoCommand> command(getGeometryChangeCommand(nullptr));
    if (edited)
        edited->commit(command.release());
    else if (command)
        command->redo();
    takeRefusal();
}

void ProxyWidget::onLockChanged(bool lock)
{
    const Nodes::BasicWidget *node = getNode();
    EditedScene *edited = editedScene();
    bool movable = !lock;
    bool push = true;
    if (!node || !edited || node->isMovable() == movable)
        return;
    edited->onPropertiesChange(this, movable, push);
    editor().takeMovable(node->isMovable()); // the change may be refused
}

bool ProxyWidget::removeWidget()
{
    EditedScene *edited = editedScene();
    if (!edited || !getNode())
        return false;
    scene()->clearSelection();
    setSelected(true);
    if (isSelected())
        edited->removeWidget();
    return isSelected() || !scene();
}

} // namespace Widgets
