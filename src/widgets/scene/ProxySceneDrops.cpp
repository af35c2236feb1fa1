// What is dragged over a scene: for the scene itself or for the element below the pointer.
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/editing/SceneEditor.h"

#include <QGraphicsSceneDragDropEvent>

namespace Widgets {

void ProxyScene::dragEnterEvent(QGraphicsSceneDragDropEvent *event)
{
    if (!isEditing() || !editor())
        return;
    if (editor()->takesDrag(*event->mimeData()))
        event->accept();
    else
        QGraphicsScene::dragEnterEvent(event);
}

void ProxyScene::dragMoveEvent(QGraphicsSceneDragDropEvent *event)
{
    if (!isEditing() || !editor())
        return;
    forgetRefused(); // those still below the pointer are entered anew
    if (editor()->takesDrag(*event->mimeData())) {
        editor()->followDrop(*event);
        event->accept();
    } else {
        QGraphicsScene::dragMoveEvent(event);
    }
}

void ProxyScene::dragLeaveEvent(QGraphicsSceneDragDropEvent *event)
{
    if (SceneEditor *tool = editor())
        tool->endDrop();
    forgetRefused();
    QGraphicsScene::dragLeaveEvent(event);
}

void ProxyScene::takeRefused(ProxyWidget &host)
{
    // It is then offered to those below, which are not what the pointer is on.
    if (m_refused && m_refused != &host)
        host.hideDrop();
    else
        m_refused = &host;
}

void ProxyScene::forgetRefused()
{
    if (m_refused)
        m_refused->hideDrop();
    m_refused.clear();
}

void ProxyScene::dropEvent(QGraphicsSceneDragDropEvent *event)
{
    forgetRefused();
    SceneEditor *tool = editor();
    if (tool && tool->drop(*event))
        event->accept();
    else
        QGraphicsScene::dropEvent(event);
}

} // namespace Widgets
