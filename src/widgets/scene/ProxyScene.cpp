#include "widgets/scene/ProxyScene.h"

#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/editing/SceneEditor.h"
#include "widgets/scene/marks/AlarmMarks.h"

#include "nodes/model/properties/PropertyProxy.h"
#include "nodes/visual/windows/BasicComposition.h"
#include "nodes/visual/windows/BasicLayer.h"
#include "nodes/visual/windows/BasicWindow.h"
#include "utils/editing/NodeLinkEvent.h"

#include <QGraphicsSceneWheelEvent>

namespace Widgets {

ProxyScene::ProxyScene(Nodes::BasicNode *node, int, QObject *parent, const SceneContext &context)
    : QGraphicsScene(parent),
      Utils::IUndo(this),
      m_context(std::make_shared<SceneContext>(context)),
      m_node(node),
      m_selected(std::make_unique<Nodes::PropertyProxy>())
{
    setItemIndexMethod(NoIndex);
    updateGeometry();
    setObjectName(QStringLiteral("ProxyScene: ") + getNameUndo());
}

ProxyScene::ProxyScene(Nodes::BasicComposition *composition, QObject *parent,
                       const SceneContext &context)
    : ProxyScene(static_cast<Nodes::BasicNode *>(composition), 0, parent, context)
{
    QList<ProxyLayer *> layers;
    for (const Nodes::NodeLink &link : composition->GetNodes()) {
        if (auto *layer = dynamic_cast<Nodes::BasicLayer *>(link.GetNode()))
            layers.append(new ProxyLayer(layer, this, m_context));
    }
    addLayers(layers);
    updateZOrder();
    followLayers(*composition);
}

ProxyScene::ProxyScene(Nodes::BasicLayer *layer, QObject *parent, const SceneContext &context)
    : ProxyScene(static_cast<Nodes::BasicNode *>(layer->GetParent()), 0, parent, context)
{
    addLayers({new ProxyLayer(layer, this, m_context)});
    updateZOrder();
}

ProxyScene::ProxyScene(Nodes::BasicWindow *window, QObject *parent, const SceneContext &context)
    : ProxyScene(static_cast<Nodes::BasicNode *>(window), 0, parent, context)
{
    addLayers({new ProxyLayer(window, this, m_context)});
    updateZOrder();
}

ProxyScene::~ProxyScene()
{
    m_editor.reset();
    clear(); // while the scene is still a scene: the items report selection changes to it
}

// A layer that is taken out empties itself, and fills again when it is put back.
void ProxyScene::followLayers(Nodes::BasicComposition &composition)
{
    Utils::NodeRelay::Handlers handlers;
    handlers.childAdded = [this](const Nodes::NodeLink &link) { onLayerAdded(link); };
    handlers.childRemoved = [this](const Nodes::NodeLink &) { updateZOrder(); };
    m_relay.connect(&composition, std::move(handlers));
}

void ProxyScene::onLayerAdded(const Nodes::NodeLink &link)
{
    auto *layer = dynamic_cast<Nodes::BasicLayer *>(link.GetNode());
    if (!layer)
        return;
    if (!m_layers.has(layer))
        addLayers({new ProxyLayer(layer, this, m_context)});
    updateZOrder();
}

void ProxyScene::addLayers(const QList<ProxyLayer *> &layers)
{
    for (ProxyLayer *layer : layers) {
        if (layer->scene() != this)
            addItem(layer);
        connect(layer, &ProxyLayer::propertyChange, this, &ProxyScene::updateZOrder);
        connect(layer, &ProxyLayer::transparencyChanged, this, &ProxyScene::updateZOrder);
        connect(layer, &ProxyLayer::visibleChanged, this, &ProxyScene::updateZOrder);
        connect(layer, &ProxyLayer::copyWidget, this, &ProxyScene::onCopyToBuffer);
    }
    m_layers.append(layers);
}

void ProxyScene::start()
{
    for (ProxyLayer *layer : m_layers.all())
        layer->start();
    if (!m_context->isRuntime() || m_context->isPreview())
        return;
    if (!m_alarms)
        m_alarms = new AlarmMarks(m_layers, this);
    m_alarms->start();
}

void ProxyScene::stop()
{
    for (ProxyLayer *layer : m_layers.all())
        layer->stop();
    if (m_alarms)
        m_alarms->stop();
}

void ProxyScene::markAlarms(ProxyWidget &element)
{
    if (m_alarms)
        m_alarms->update(element);
}

void ProxyScene::updateGeometry()
{
    if (const auto *composition = dynamic_cast<const Nodes::BasicComposition *>(getNode())) {
        const Nodes::NSize size = composition->GetSize();
        setSceneRect(0, 0, size.width, size.height);
    } else if (const auto *window = dynamic_cast<const Nodes::BasicWindow *>(getNode())) {
        const Nodes::NRect rect = window->GetGeometry();
        setSceneRect(0, 0, rect.width, rect.height);
    }
}

void ProxyScene::onFrameChange(int type)
{
    for (ProxyLayer *layer : m_layers.all())
        layer->setTypeFrame(type);
}

QString ProxyScene::getNameUndo()
{
    return m_node ? QString::fromStdString(m_node->GetName()) : QString();
}

QList<ProxyLayer *> ProxyScene::sortZOrder() const
{
    return m_layers.sorted();
}

void ProxyScene::updateZOrder()
{
    if (SceneEditor *tool = editor())
        tool->takeOrder();
}

void ProxyScene::upZValue()
{
    if (SceneEditor *tool = editor())
        tool->edits().moveOrder(1);
}

void ProxyScene::downZValue()
{
    if (SceneEditor *tool = editor())
        tool->edits().moveOrder(-1);
}

void ProxyScene::onSelectionChanged()
{
    if (!isEditing())
        return;
    const Nodes::NodesArray &nodes = getSelectedItemsProxy()->GetNodes();
    Utils::NodeLinkEvent::SendEventToApp(nodes.GetLinks(), this);
}

Nodes::PropertyProxy *ProxyScene::getSelectedItemsProxy()
{
    m_selected = std::make_unique<Nodes::PropertyProxy>();
    const SceneSelection *selection = m_editor ? &m_editor->selection() : nullptr;
    const ProxyWidget *key = selection ? selection->key() : nullptr;
    if (key && key->getNode())
        m_selected->AddNode(key->getNodeLink());
    for (const ProxyWidget *host : selection ? selection->hosts() : QList<ProxyWidget *>()) {
        if (host != key)
            m_selected->AddNode(host->getNodeLink());
    }
    return m_selected.get();
}

void ProxyScene::focusInEvent(QFocusEvent *event)
{
    if (isEditing())
        QGraphicsScene::focusInEvent(event);
}

// The release of a held arrow goes elsewhere now, and so does the end of a drag.
void ProxyScene::focusOutEvent(QFocusEvent *event)
{
    if (SceneEditor *tool = editor()) {
        tool->cancelDrag();
        tool->commitGeometry();
    }
    QGraphicsScene::focusOutEvent(event);
}

void ProxyScene::wheelEvent(QGraphicsSceneWheelEvent *event)
{
    if (!isEditing())
        QGraphicsScene::wheelEvent(event);
}

void ProxyScene::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    SceneEditor *tool = editor();
    if (tool && tool->pressMouse(*event))
        event->accept();
    else if (m_isEditable)
        QGraphicsScene::mousePressEvent(event);
}

void ProxyScene::mouseMoveEvent(QGraphicsSceneMouseEvent *event)
{
    SceneEditor *tool = editor();
    if (!tool || !tool->moveMouse(*event))
        QGraphicsScene::mouseMoveEvent(event);
}

void ProxyScene::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
    SceneEditor *tool = editor();
    if (!tool || !tool->releaseMouse())
        QGraphicsScene::mouseReleaseEvent(event);
}

// To an item it is one more press.
void ProxyScene::mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event)
{
    if (m_isEditable)
        QGraphicsScene::mouseDoubleClickEvent(event);
}

} // namespace Widgets
