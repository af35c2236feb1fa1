// How a scene comes to be edited, and what it then hands to its editor.
#include "widgets/charts/menus/TouchMenu.h"
#include "widgets/charts/own/OwnTrend.h"
#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/editing/SceneEditor.h"

#include "nodes/model/properties/PropertyProxy.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/visual/BasicWidget.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QGraphicsSceneContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMetaMethod>
#include <QWidget>

namespace Widgets {

void ProxyScene::setContext(const SceneContext &context)
{
    const Nodes::enWorkMode before = m_context->mode();
    *m_context = context;
    m_context->setPreview(!m_isEditable);
    if (m_context->mode() != before)
        takeContext();
}

void ProxyScene::setMode(std::optional<Nodes::enWorkMode> mode)
{
    SceneContext changed = *m_context;
    changed.setMode(mode);
    setContext(changed);
}

void ProxyScene::setEditingMode(bool on)
{
    m_isEditable = on;
    setContext(SceneContext(*m_context));
}

bool ProxyScene::isEditing() const
{
    return m_isEditable && !m_context->isRuntime();
}

void ProxyScene::takeContext()
{
    clearSelection();
    if (!isEditing())
        m_editor.reset();
    for (ProxyLayer *layer : m_layers.all()) {
        layer->setEnabledItems(true);
        const QList<ProxyWidget *> hosts = layer->getWidgets();
        for (ProxyWidget *host : hosts)
            host->takeContext();
    }
    updateZOrder();
    emit modeChanged();
}

SceneEditor *ProxyScene::editor()
{
    if (!isEditing())
        return nullptr;
    if (!m_editor)
        makeEditor();
    return m_editor.get();
}

void ProxyScene::makeEditor()
{
    m_editor = std::make_unique<SceneEditor>(*this, *this, m_layers, getNode());
    const SceneEditor *made = m_editor.get();
    connect(made, &SceneEditor::actionsChanged, this, &ProxyScene::actionsChanged);
    connect(made, &SceneEditor::currentWidgetChange, this, &ProxyScene::currentWidgetChange);
    connect(made, &SceneEditor::openWizardWindow, this, &ProxyScene::openWizardWindow);
    connect(made, &SceneEditor::addWidgetFromPanel, this, &ProxyScene::addWidgetFromPanel);
    connect(made, &SceneEditor::pasted, this, &ProxyScene::pasted);
    connect(made, &SceneEditor::removalAsked, this, &ProxyScene::removeWidget);
    connect(made, &SceneEditor::selectionSettled, this, &ProxyScene::onSelectionChanged);
}

QPointF ProxyScene::pastePosition() const
{
    return m_editor ? m_editor->pastePosition() : QPointF();
}

void ProxyScene::setPastePosition(QPointF position)
{
    if (SceneEditor *tool = editor())
        tool->setPastePosition(position);
}

QMenu *ProxyScene::addWidgetMenu() const
{
    return m_editor ? m_editor->addMenu() : nullptr;
}

void ProxyScene::removeWidget()
{
    SceneEditor *tool = editor();
    std::vector<Nodes::NodeLink> links = tool ? tool->selection().links() : Nodes::NodeLinks();
    if (links.empty())
        return;
    // Where nobody looks after references to the nodes, nobody else is going to delete them.
    if (isSignalConnected(QMetaMethod::fromSignal(&ProxyScene::signalCheckLink)))
        emit signalCheckLink(links);
    else
        slotWidgetDelete(links);
}

void ProxyScene::slotWidgetDelete(std::vector<Nodes::NodeLink> links)
{
    if (SceneEditor *tool = editor())
        tool->edits().remove(links);
}

void ProxyScene::onCopyToBuffer()
{
    if (const SceneEditor *tool = editor())
        tool->copy();
}

void ProxyScene::onCutToBuffer()
{
    if (SceneEditor *tool = editor())
        tool->cut();
}

void ProxyScene::onPasteFromBuffer(QPointF point)
{
    if (SceneEditor *tool = editor())
        tool->paste(point);
}

void ProxyScene::onMoveFinished()
{
    if (SceneEditor *tool = editor())
        tool->commitGeometry();
}

void ProxyScene::takeScale()
{
    if (m_editor)
        m_editor->takeScale();
}

void ProxyScene::takeSelected(ProxyWidget &host, bool on)
{
    if (m_editor)
        m_editor->selection().takeSelected(host, on);
}

void ProxyScene::takePressed(ProxyWidget &host)
{
    if (m_editor)
        m_editor->selection().setKey(host);
}

void ProxyScene::takePicked(ProxyWidget &host)
{
    if (m_editor)
        m_editor->groups().follow(host);
}

void ProxyScene::takeEntered(ProxyWidget &host)
{
    if (m_editor)
        m_editor->groups().enter(host);
    emit elementEntered(host.getNodeLink());
}

void ProxyScene::takePlaced(ProxyWidget &host)
{
    if (m_editor && host.isSelected())
        m_editor->refreshMarksSoon();
}

void ProxyScene::takeRegrouped(ProxyWidget &host)
{
    if (m_editor && host.isSelected())
        m_editor->showSelectionSoon();
}

bool ProxyScene::hasGrabbers(const ProxyWidget &host) const
{
    return m_editor && m_editor->hasGrabbers(host);
}

void ProxyScene::drag(const DragMotion &motion)
{
    if (SceneEditor *tool = editor())
        tool->drag().follow(motion);
}

void ProxyScene::finishDrag()
{
    if (m_editor)
        m_editor->drag().finish();
}

void ProxyScene::cancelDrag()
{
    if (m_editor)
        m_editor->cancelDrag();
}

void ProxyScene::onPropertiesChange(ProxyWidget *widget, bool &movable, bool &push)
{
    if (SceneEditor *tool = editor())
        tool->edits().setMovable(*widget, movable, push);
}

// Before the scene itself takes Tab for its chain of focus.
bool ProxyScene::event(QEvent *event)
{
    if (event->type() == QEvent::KeyPress && isEditing()) {
        keyPressEvent(static_cast<QKeyEvent *>(event));
        return event->isAccepted();
    }
    return QGraphicsScene::event(event);
}

void ProxyScene::keyPressEvent(QKeyEvent *event)
{
    SceneEditor *tool = editor();
    if (tool && tool->pressKey(*event))
        event->accept();
    else
        QGraphicsScene::keyPressEvent(event);
}

void ProxyScene::keyReleaseEvent(QKeyEvent *event)
{
    SceneEditor *tool = editor();
    if (!tool) {
        // Elements at run time see the release of a key as one more press; they rely on it.
        QGraphicsScene::keyPressEvent(event);
        return;
    }
    tool->releaseKey(*event);
    QGraphicsScene::keyReleaseEvent(event);
}

void ProxyScene::contextMenuEvent(QGraphicsSceneContextMenuEvent *event)
{
    SceneEditor *tool = editor();
    if (!tool) {
        event->setAccepted(openRuntimeMenu(*event));
        return;
    }
    tool->openMenu(*event);
    event->accept();
}

// That of the widget under the pointer, or what an operator may want of a value that has none. The
// scene itself asks only the widget that has the focus.
bool ProxyScene::openRuntimeMenu(const QGraphicsSceneContextMenuEvent &event)
{
    const QList<QGraphicsItem *> met = items(event.scenePos());
    for (QGraphicsItem *item : met) {
        auto *element = dynamic_cast<ProxyWidget *>(item);
        const Nodes::BasicWidget *node = element ? element->getNode() : nullptr;
        if (!node)
            continue;
        if (QWidget *widget = element->widget()) {
            const QPoint place = element->mapFromScene(event.scenePos()).toPoint();
            QWidget *child = widget->childAt(place);
            QWidget *asked = child ? child : widget;
            QContextMenuEvent inside(QContextMenuEvent::Reason(event.reason()),
                                     asked->mapFrom(widget, place), event.screenPos(),
                                     event.modifiers());
            inside.ignore();
            if (QCoreApplication::sendEvent(asked, &inside) && inside.isAccepted())
                return true;
        }
        if (!node->GetSignal() || !SceneContext::process()->isRuntime())
            continue;
        auto *menu = new TouchMenu(event.widget());
        OwnTrend::fillMenu(*menu, node->GetSignal());
        menu->openAt(event.screenPos());
        return true;
    }
    return false;
}

} // namespace Widgets
