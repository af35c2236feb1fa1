// What an edited scene does at the mouse, at keys and at drops.
#include "widgets/scene/editing/SceneEditor.h"

#include "widgets/dialogs/PlainMessageBox.h"
#include "widgets/scene/LayerStack.h"
#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/editing/ElementClipboard.h"
#include "widgets/scene/editing/SceneMenu.h"
#include "widgets/scene/editing/drops/DroppedElements.h"

#include "nodes/model/NodesCollection.h"
#include "utils/undo/UndoGate.h"

#include <QAction>
#include <QCursor>
#include <QGraphicsSceneContextMenuEvent>
#include <QGraphicsSceneDragDropEvent>
#include <QGraphicsSceneMouseEvent>
#include <QGraphicsView>
#include <QKeyEvent>
#include <QMimeData>

#include <algorithm>
#include <utility>

namespace Widgets {

namespace {

void tell(QMessageBox::Icon icon, const QString &text)
{
    PlainMessageBox::ask(icon, QStringLiteral("Внимание"), text);
}

bool isArrow(int key)
{
    return key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Up || key == Qt::Key_Down;
}

QRectF arrowDelta(const QKeyEvent &event)
{
    const int key = event.key();
    const QPointF step(key == Qt::Key_Right  ? 1
                       : key == Qt::Key_Left ? -1
                                             : 0,
                       key == Qt::Key_Down ? 1
                       : key == Qt::Key_Up ? -1
                                           : 0);
    return event.modifiers() == Qt::ShiftModifier ? QRectF(0, 0, step.x(), step.y())
                                                  : QRectF(step.x(), step.y(), 0, 0);
}

} // namespace

bool SceneEditor::pressMouse(const QGraphicsSceneMouseEvent &event)
{
    if (event.button() != Qt::LeftButton || event.modifiers() != Qt::AltModifier)
        return false;
    // While a grabber is dragged Alt suspends snapping.
    if (m_grabbers->hasGrabber(event.scenePos()))
        return false;
    m_picked = m_groups.pick(event.scenePos());
    return m_picked;
}

bool SceneEditor::moveMouse(const QGraphicsSceneMouseEvent &event)
{
    if (!m_picked || !(m_picked->flags() & QGraphicsItem::ItemIsMovable))
        return m_picked;
    m_drag.follow({m_picked, NoCorner, event.buttonDownScenePos(Qt::LeftButton), event.scenePos()});
    return true;
}

bool SceneEditor::releaseMouse()
{
    const bool isPicked = m_picked;
    m_picked.clear();
    if (isPicked)
        commitGeometry();
    return isPicked;
}

void SceneEditor::pasteAtPointer()
{
    if (const QGraphicsView *view = m_scene.views().value(0))
        m_pastePosition = view->mapToScene(view->viewport()->mapFromGlobal(QCursor::pos()));
    m_pasteAction->trigger();
}

bool SceneEditor::pressKey(const QKeyEvent &event)
{
    if (pressSelecting(event)) {
        return true;
    } else if (isArrow(event.key())) {
        moveByArrow(event);
    } else if (event.key() == Qt::Key_Escape) {
        pressEscape();
    } else if (event.key() == Qt::Key_Delete) {
        emit removalAsked();
    } else if (event.matches(QKeySequence::Copy) && m_copyAction) {
        m_copyAction->trigger();
    } else if (event.matches(QKeySequence::Cut)) {
        cut();
    } else if (event.matches(QKeySequence::Paste) && m_pasteAction) {
        pasteAtPointer();
    } else {
        return false;
    }
    return true;
}

// Not what the mouse has hold of.
void SceneEditor::moveByArrow(const QKeyEvent &event)
{
    if (m_drag.isActive())
        return;
    m_heldArrow.press(event);
    for (ProxyLayer *layer : m_layers.all())
        layer->keyMove(arrowDelta(event));
    refreshMarks();
}

void SceneEditor::releaseKey(const QKeyEvent &event)
{
    if (!isArrow(event.key()) || event.isAutoRepeat() || m_drag.isActive())
        return;
    m_edits.commitGeometry(m_heldArrow.interaction());
    m_heldArrow.release(event);
}

bool SceneEditor::pressSelecting(const QKeyEvent &event)
{
    if (event.matches(QKeySequence::SelectAll))
        m_selection.selectAll();
    else if (event.key() == Qt::Key_Backtab)
        m_groups.selectNext(false);
    else if (event.key() == Qt::Key_Tab && event.modifiers() == Qt::NoModifier)
        m_groups.selectNext(true);
    else
        return false;
    return true;
}

void SceneEditor::pressEscape()
{
    m_picked.clear();
    if (!m_drag.cancel() && !m_edits.takeBackMove()) {
        if (!m_groups.leave())
            m_selection.clear();
        return;
    }
    // The button may still be down: the rest of the drag moves nothing.
    if (QGraphicsItem *dragged = m_scene.mouseGrabberItem())
        dragged->ungrabMouse();
}

void SceneEditor::openMenu(const QGraphicsSceneContextMenuEvent &event)
{
    QList<ProxyWidget *> hosts;
    for (QGraphicsItem *item : m_scene.items(event.scenePos())) {
        auto *host = dynamic_cast<ProxyWidget *>(item);
        if (host && host->getNode())
            hosts.append(host);
    }
    selectUnderMouse(hosts, event.modifiers());
    const int selected = m_selection.count();
    if (selected == 0) {
        m_pastePosition = event.scenePos();
        Nodes::NodesCollection *project = m_node ? m_node->GetNodesCollection() : nullptr;
        m_menu->fillForCanvas(addMenu(), project && ElementClipboard::hasElements(*project));
    } else {
        // What was selected otherwise than by the mouse has no focus.
        const auto *focused = dynamic_cast<ProxyWidget *>(m_scene.focusItem());
        m_menu->fillForSelection(selected, focused ? focused : m_selection.key());
        m_tableEdits.fillMenu(m_menu->addArranging());
    }
    m_menu->addItems(hosts);
    m_menu->show(event.screenPos());
}

void SceneEditor::selectUnderMouse(const QList<ProxyWidget *> &hosts,
                                   Qt::KeyboardModifiers modifiers)
{
    const auto topmost = std::find_if(hosts.begin(), hosts.end(), [](const ProxyWidget *host) {
        return host->flags() & QGraphicsItem::ItemIsSelectable;
    });
    if (topmost == hosts.end())
        return;
    m_selection.setKey(**topmost);
    if ((*topmost)->isSelected())
        return;
    if (modifiers != Qt::ControlModifier)
        m_scene.clearSelection();
    (*topmost)->setSelected(true);
    m_groups.follow(**topmost);
    m_scene.setFocusItem(*topmost);
}

Nodes::NodesCollection *SceneEditor::project() const
{
    return m_node ? m_node->GetNodesCollection() : nullptr;
}

bool SceneEditor::takesDrag(const QMimeData &data) const
{
    return project() && DroppedElements::isIn(data, *project());
}

void SceneEditor::followDrop(const QGraphicsSceneDragDropEvent &event)
{
    m_dropPreview.follow(*event.mimeData(), event.scenePos());
}

bool SceneEditor::drop(const QGraphicsSceneDragDropEvent &event)
{
    if (!takesDrag(*event.mimeData()))
        return false;
    Nodes::ConfigNode *layer = m_layers.topmostNode();
    if (!layer || !Utils::UndoGate::isOpen()) { // before files are copied
        endDrop();
        if (!layer)
            tell(QMessageBox::Critical, QStringLiteral("Отсутствуют слои"));
        return true;
    }
    const DroppedElements dropped = DroppedElements::of(*event.mimeData(), *layer);
    if (!dropped.elements().empty())
        m_selection.clear(); // what is dropped appears selected, alone
    QPointF place = event.scenePos();
    const auto landing = [this](const QRect &box) { return m_dropPreview.landing(box); };
    for (const DroppedElements::Element &element : dropped.elements()) {
        if (m_newElements.add(element.type, layer, place, true, element.properties, landing))
            emit addWidgetFromPanel();
        if (!event.mimeData()->hasFormat(NewElements::typesFormat()))
            place += QPointF(16, 16); // pictures and templates of one size would cover each other
    }
    endDrop();
    // Later: the program that the files come from waits for the end of the drop.
    if (!dropped.refusals().isEmpty())
        QTimer::singleShot(0, this, [text = dropped.refusals().join(QStringLiteral("\n\n"))] {
            tell(QMessageBox::Warning, text);
        });
    return true;
}

} // namespace Widgets
