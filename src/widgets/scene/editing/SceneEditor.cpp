#include "widgets/scene/editing/SceneEditor.h"

#include "widgets/dialogs/PlainMessageBox.h"
#include "widgets/scene/LayerStack.h"
#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/editing/ElementClipboard.h"
#include "widgets/scene/editing/SceneMenu.h"
#include "widgets/scene/editing/guides/SnapSettings.h"
#include "widgets/scene/editing/paste/ScenePaste.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/visual/BasicWidget.h"
#include "utils/editing/ActionFactory.h"
#include "utils/undo/IUndo.h"

#include <QAction>
#include <QCursor>
#include <QDataStream>
#include <QGraphicsSceneContextMenuEvent>
#include <QGraphicsSceneDragDropEvent>
#include <QGraphicsSceneMouseEvent>
#include <QGraphicsView>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>

#include <algorithm>

namespace Widgets {

namespace {

constexpr int selectionDelay = 100; // ms

const QString typesFormat = QStringLiteral("application/nodetype");

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

SceneEditor::SceneEditor(QGraphicsScene &scene, Utils::IUndo &undo, const LayerStack &layers,
                         Nodes::BasicNode *node)
    : m_scene(scene),
      m_undo(undo),
      m_layers(layers),
      m_node(node),
      m_selection(scene),
      m_overlay(std::make_unique<EditOverlay>(scene, m_selection)),
      m_snapper(scene, SnapSettings::process()),
      m_drag(m_selection, *m_overlay),
      m_edits(m_selection, undo),
      m_tableEdits(m_selection, undo, node),
      m_newElements(undo)
{
    createActions();
    m_drag.addAdjuster(m_snapper);
    connect(&m_newElements, &NewElements::menuFilled, this, &SceneEditor::actionsChanged);
    connect(&m_newElements, &NewElements::chosen, this, [this](const Nodes::NodeType &type) {
        m_newElements.add(type, m_layers.topmostNode(), m_pastePosition, false);
    });
    m_menu = std::make_unique<SceneMenu>(
        SceneMenu::Actions{m_deleteAction, m_copyAction, m_pasteAction});
    connect(m_menu.get(), &SceneMenu::orderMoved, this,
            [this](int step) { m_edits.moveOrder(step); });
    connect(m_menu.get(), &SceneMenu::currentWidgetChange, this, &SceneEditor::currentWidgetChange);
    connect(m_menu.get(), &SceneMenu::openWizardWindow, this, &SceneEditor::openWizardWindow);
    m_selectionTimer.setInterval(selectionDelay);
    m_selectionTimer.setSingleShot(true);
    followSelection();
}

SceneEditor::~SceneEditor() = default;

void SceneEditor::followSelection()
{
    const auto restart = qOverload<>(&QTimer::start);
    const auto repaint = [this] { m_overlay->refresh(); };
    connect(&m_selection, &SceneSelection::changed, &m_selectionTimer, restart);
    connect(&m_selection, &SceneSelection::keyChanged, &m_selectionTimer, restart);
    connect(&m_selection, &SceneSelection::changed, this, repaint);
    connect(&m_selection, &SceneSelection::keyChanged, this, repaint);
    connect(&m_selectionTimer, &QTimer::timeout, this, &SceneEditor::settleSelection);
}

void SceneEditor::settleSelection()
{
    emit selectionSettled();
    m_overlay->setFramed(m_selection.count() > GrabbersAtMost);
    for (ProxyLayer *layer : m_layers.all())
        layer->updateSelection();
}

bool SceneEditor::hasGrabbers(const ProxyWidget &host) const
{
    return m_selection.count() <= GrabbersAtMost || &host == m_selection.key();
}

void SceneEditor::commitGeometry()
{
    m_drag.finish();
    m_edits.commitGeometry();
}

void SceneEditor::cancelDrag()
{
    m_picked.clear();
    (void)m_drag.cancel();
}

bool SceneEditor::pressMouse(const QGraphicsSceneMouseEvent &event)
{
    if (event.button() != Qt::LeftButton || event.modifiers() != Qt::AltModifier)
        return false;
    m_picked = m_selection.selectBelow(event.scenePos());
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

void SceneEditor::createActions()
{
    const Utils::ActionFactory &factory = Utils::ActionFactory::getInstance();
    m_deleteAction = factory.createAction(Utils::ActionFactory::ActionDelete, this);
    m_copyAction = factory.createAction(Utils::ActionFactory::ActionCopy, this);
    m_pasteAction = factory.createAction(Utils::ActionFactory::ActionPaste, this);
    if (m_deleteAction)
        connect(m_deleteAction, &QAction::triggered, this, &SceneEditor::removalAsked);
    if (m_copyAction)
        connect(m_copyAction, &QAction::triggered, this, &SceneEditor::copy);
    if (m_pasteAction)
        connect(m_pasteAction, &QAction::triggered, this, [this] { paste(m_pastePosition); });
}

void SceneEditor::takeOrder()
{
    for (ProxyLayer *layer : m_layers.all())
        layer->setEnabledItems(false);
    const QList<ProxyLayer *> sorted = m_layers.sorted();
    for (int i = 0; i < sorted.size(); ++i) {
        const bool isTop = i + 1 == sorted.size();
        sorted[i]->setEnabledItems(isTop || sorted[i + 1]->transparency());
    }
    if (!sorted.isEmpty())
        m_newElements.fillMenu(*sorted.last()->getNode());
}

void SceneEditor::copy() const
{
    if (const Nodes::NodesCollection *project = m_node ? m_node->GetNodesCollection() : nullptr)
        ElementClipboard::put(*project, m_selection.links());
}

void SceneEditor::cut()
{
    copy();
    emit removalAsked();
}

void SceneEditor::paste(QPointF point)
{
    const QList<ProxyLayer *> top = m_layers.highest();
    const Nodes::ConfigNode *layer = top.isEmpty() ? nullptr : top.first()->getNode();
    if (!layer)
        return;
    const PasteReport report =
        pasteElements(*layer, QPoint(int(point.x()), int(point.y())), m_selection, m_undo);
    if (!report.isClean())
        emit pasted(report);
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
        for (ProxyLayer *layer : m_layers.all())
            layer->keyMove(arrowDelta(event));
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

void SceneEditor::releaseKey(const QKeyEvent &event)
{
    if (isArrow(event.key()) && !event.isAutoRepeat())
        commitGeometry();
}

bool SceneEditor::pressSelecting(const QKeyEvent &event)
{
    if (event.matches(QKeySequence::SelectAll))
        m_selection.selectAll();
    else if (event.key() == Qt::Key_Backtab)
        m_selection.selectNext(false);
    else if (event.key() == Qt::Key_Tab && event.modifiers() == Qt::NoModifier)
        m_selection.selectNext(true);
    else
        return false;
    return true;
}

void SceneEditor::pressEscape()
{
    m_picked.clear();
    if (!m_drag.cancel() && !m_edits.takeBackMove()) {
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
        m_menu->fillForSelection(selected, dynamic_cast<ProxyWidget *>(m_scene.focusItem()));
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
    if (topmost == hosts.end() || (*topmost)->isSelected())
        return;
    if (modifiers != Qt::ControlModifier)
        m_scene.clearSelection();
    (*topmost)->setSelected(true);
    m_scene.setFocusItem(*topmost);
}

bool SceneEditor::takesDrag(const QMimeData &data)
{
    return data.hasFormat(typesFormat);
}

bool SceneEditor::drop(const QGraphicsSceneDragDropEvent &event)
{
    if (!takesDrag(*event.mimeData()))
        return false;
    const QByteArray bytes = event.mimeData()->data(typesFormat);
    QDataStream stream(bytes);
    while (!stream.atEnd() && stream.status() == QDataStream::Ok) {
        QString text;
        stream >> text;
        const Nodes::NodeType type(text.toStdString());
        if (type.GetFamily() != Nodes::NodeType::TypeWidget)
            continue;
        Nodes::ConfigNode *layer = m_layers.topmostNode();
        if (!layer) {
            PlainMessageBox::ask(QMessageBox::Critical, QStringLiteral("Внимание"),
                                 QStringLiteral("Отсутствуют слои"));
            break;
        }
        if (m_newElements.add(type, layer, event.scenePos(), true,
                              DroppedProperties::of(*event.mimeData())))
            emit addWidgetFromPanel();
    }
    return true;
}

} // namespace Widgets
