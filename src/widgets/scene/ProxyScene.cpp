#include "widgets/scene/ProxyScene.h"

#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyWidget.h"

#include "nodes/model/properties/PropertyProxy.h"
#include "nodes/visual/windows/BasicComposition.h"
#include "nodes/visual/windows/BasicLayer.h"
#include "nodes/visual/windows/BasicWindow.h"
#include "utils/editing/NodeLinkEvent.h"

#include <QGraphicsSceneWheelEvent>
#include <QMenu>

#include <algorithm>

namespace Widgets {

namespace {

constexpr int selectionDelay = 100; // ms

} // namespace

ProxyScene::ProxyScene(Nodes::BasicNode *node, int, QObject *parent, const SceneContext &context)
    : QGraphicsScene(parent),
      Utils::IUndo(this),
      m_context(std::make_shared<SceneContext>(context)),
      m_node(node),
      m_selected(std::make_unique<Nodes::PropertyProxy>())
{
    setItemIndexMethod(NoIndex);
    m_selectionTimer.setInterval(selectionDelay);
    m_selectionTimer.setSingleShot(true);
    if (isEditing()) {
        createActions();
        connect(&m_selectionTimer, &QTimer::timeout, this, &ProxyScene::onSelectionChanged);
        connect(this, &ProxyScene::selectionChanged, &m_selectionTimer,
                qOverload<>(&QTimer::start));
    }
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
    // The items die here, while the scene is still a scene: they report selection changes to it.
    disconnect(this, nullptr, &m_selectionTimer, nullptr);
    clear();
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
    const bool isKnown = std::any_of(m_layers.begin(), m_layers.end(), [layer](const auto *shown) {
        return shown->getNode() == layer;
    });
    if (!isKnown)
        addLayers({new ProxyLayer(layer, this, m_context)});
    updateZOrder();
}

void ProxyScene::addLayers(const QList<ProxyLayer *> &layers)
{
    for (ProxyLayer *layer : layers) {
        if (layer->scene() != this)
            addItem(layer);
        connect(layer, &ProxyLayer::propertyChange, this, &ProxyScene::updateZOrder);
        connect(&m_selectionTimer, &QTimer::timeout, layer, &ProxyLayer::updateSelection);
        connect(layer, &ProxyLayer::copyWidget, this, &ProxyScene::onCopyToBuffer);
    }
    m_layers += layers;
}

void ProxyScene::start()
{
    for (ProxyLayer *layer : qAsConst(m_layers))
        layer->start();
}

void ProxyScene::stop()
{
    for (ProxyLayer *layer : qAsConst(m_layers))
        layer->stop();
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
    for (ProxyLayer *layer : qAsConst(m_layers))
        layer->setTypeFrame(type);
}

void ProxyScene::setEditingMode(bool on)
{
    m_isEditable = on;
}

bool ProxyScene::isEditing() const
{
    return m_isEditable && !m_context->isRuntime();
}

QString ProxyScene::getNameUndo()
{
    return m_node ? QString::fromStdString(m_node->GetName()) : QString();
}

QList<ProxyLayer *> ProxyScene::sortZOrder() const
{
    QList<ProxyLayer *> visible;
    std::copy_if(m_layers.begin(), m_layers.end(), std::back_inserter(visible),
                 [](const ProxyLayer *layer) { return layer->isVisible() && layer->getNode(); });
    std::stable_sort(visible.begin(), visible.end(),
                     [](const ProxyLayer *a, const ProxyLayer *b) { return *a < *b; });
    return visible;
}

// Which of several equal layers remain depends on their order in the list: after a removal the
// next layer slides into the place just looked at and is passed over. Pasting relies on it.
QList<ProxyLayer *> ProxyScene::getMaxZOrder() const
{
    QList<ProxyLayer *> top = m_layers;
    if (top.isEmpty())
        return top;
    ProxyLayer *maximum = top.first();
    for (int i = 0; i < top.size(); ++i) {
        ProxyLayer *layer = top.at(i);
        if (*layer < *maximum) {
            top.removeAt(i);
        } else if (*layer > *maximum) {
            top.removeOne(maximum);
            maximum = layer;
        }
    }
    return top;
}

void ProxyScene::updateZOrder()
{
    if (!isEditing())
        return;
    for (ProxyLayer *layer : qAsConst(m_layers))
        layer->setEnabledItems(false);
    const QList<ProxyLayer *> sorted = sortZOrder();
    for (int i = 0; i < sorted.size(); ++i) {
        const bool isTop = i + 1 == sorted.size();
        sorted[i]->setEnabledItems(isTop || sorted[i + 1]->transparency());
    }
    if (!sorted.isEmpty())
        fillAddMenu(*sorted.last());
}

void ProxyScene::onSelectionChanged()
{
    if (!m_isEditable)
        return;
    const Nodes::NodesArray &nodes = getSelectedItemsProxy()->GetNodes();
    Utils::NodeLinkEvent::SendEventToApp(nodes.GetLinks(), this);
}

Nodes::PropertyProxy *ProxyScene::getSelectedItemsProxy()
{
    m_selected = std::make_unique<Nodes::PropertyProxy>();
    const QList<QGraphicsItem *> items = selectedItems();
    for (QGraphicsItem *item : items) {
        if (const auto *host = dynamic_cast<const ProxyWidget *>(item))
            m_selected->AddNode(host->getNodeLink());
    }
    return m_selected.get();
}

void ProxyScene::focusInEvent(QFocusEvent *event)
{
    if (isEditing())
        QGraphicsScene::focusInEvent(event);
}

void ProxyScene::wheelEvent(QGraphicsSceneWheelEvent *event)
{
    if (!isEditing())
        QGraphicsScene::wheelEvent(event);
}

void ProxyScene::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    if (m_isEditable)
        QGraphicsScene::mousePressEvent(event);
}

} // namespace Widgets
