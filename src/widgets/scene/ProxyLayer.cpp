#include "widgets/scene/ProxyLayer.h"

#include "widgets/scene/BulkInsertion.h"
#include "widgets/scene/IdleDeleter.h"
#include "widgets/scene/ProxyWidget.h"

#include "nodes/model/properties/BasicProperty.h"
#include "nodes/visual/BasicWidget.h"
#include "nodes/visual/windows/BasicLayer.h"
#include "nodes/visual/windows/BasicWindow.h"

#include <QGraphicsScene>
#include <QGraphicsView>
#include <QTimer>

#include <utility>

namespace Widgets {

ProxyLayer::ProxyLayer(Nodes::ConfigNode *node, QGraphicsScene *scene, Qt::WindowFlags flags,
                       SceneContextPtr context)
    : QGraphicsProxyWidget(nullptr, flags), m_node(node), m_context(std::move(context))
{
    setObjectName(QStringLiteral("Layer"));
    setFlag(ItemHasNoContents);
    setGeometry(QRectF());
    if (scene)
        scene->addItem(this);
    if (!m_node)
        return;
    connect(this, &ProxyLayer::nodeAdded, this, &ProxyLayer::insertWidget);
    connect(this, &ProxyLayer::nodeRemoved, this, &ProxyLayer::onNodeRemoved);
}

ProxyLayer::ProxyLayer(Nodes::BasicLayer *layer, QGraphicsScene *scene, SceneContextPtr context)
    : ProxyLayer(static_cast<Nodes::ConfigNode *>(layer), scene, Qt::WindowFlags(),
                 std::move(context))
{
    if (!layer)
        return;
    setZValue(layer->GetZOrder());
    setVisible(layer->isVisible());
    connect(this, &ProxyLayer::propertyUpdated, this, &ProxyLayer::onPropertyChange);
    follow(true);
    setTransparency(isModeTransparent());
    addWidgets(layer->GetWidgets().GetLinks());
}

ProxyLayer::ProxyLayer(Nodes::BasicWindow *window, QGraphicsScene *scene, SceneContextPtr context)
    : ProxyLayer(static_cast<Nodes::ConfigNode *>(window), scene, Qt::WindowFlags(),
                 std::move(context))
{
    if (!window)
        return;
    follow(false);
    addWidgets(window->GetNodes());
}

ProxyLayer::~ProxyLayer() = default;

void ProxyLayer::addWidgets(const Nodes::NodeLinks &links)
{
    BulkInsertion insertion(*this);
    for (const Nodes::NodeLink &link : links)
        insertion.inserted(addWidget(link));
    setEnabledItems(true);
    m_isBuilt = true;
}

void ProxyLayer::insertWidget(const Nodes::NodeLink &link)
{
    ProxyWidget *host = addWidget(link);
    if (!host)
        return;
    if (m_burst)
        m_burst->inserted(host);
    else if (m_isBursting)
        m_burst = std::make_unique<BulkInsertion>(*this, host); // Qt has put it at the end
    else
        QTimer::singleShot(0, this, &ProxyLayer::endBurst);
    m_isBursting = true;
}

void ProxyLayer::endBurst()
{
    m_burst.reset();
    m_isBursting = false;
}

void ProxyLayer::follow(bool withProperties)
{
    Utils::NodeRelay::Handlers handlers;
    handlers.childAdded = [this](const Nodes::NodeLink &link) {
        emit nodeAdded(link);
        const Nodes::ConfigNode *node = getNode();
        if (node && node->IndexOf(link.GetNode()) + 1 < node->GetNodeCount())
            restackLater();
    };
    handlers.childMoved = [this] { restackLater(); };
    handlers.childRemoved = [this](const Nodes::NodeLink &link) { emit nodeRemoved(link); };
    if (withProperties)
        handlers.propertyChanged = [this](Nodes::BasicProperty *property) {
            property ? emit propertyUpdated(property) : takeAll();
        };
    m_relay.connect(getNode(), std::move(handlers));
    if (layerNode())
        m_home = Nodes::NodeLink(getNode()->GetParent());
    followAncestors();
}

bool ProxyLayer::isHome() const
{
    const Nodes::ConfigNode *node = getNode();
    return node && (m_home.isEmpty() || m_home == Nodes::NodeLink(node->GetParent()));
}

void ProxyLayer::restackLater()
{
    if (!std::exchange(m_isRestackDue, true))
        QTimer::singleShot(0, this, &ProxyLayer::restack);
}

// Elements of one order lie above each other as their nodes follow one another.
void ProxyLayer::restack()
{
    m_isRestackDue = false;
    const QGraphicsItem *above = nullptr;
    const Nodes::NodeLinks nodes = getNode() ? getNode()->GetNodes() : Nodes::NodeLinks();
    for (auto link = nodes.rbegin(); link != nodes.rend(); ++link) {
        ProxyWidget *host = m_hosts.value(link->GetNodeId());
        if (host && above)
            host->stackBefore(above);
        above = host ? host : above;
    }
}

// A node taken out of the tree tells its parent only; those below it just cease to be found.
void ProxyLayer::followAncestors()
{
    m_ancestors.clear();
    const Nodes::ConfigNode *below = getNode();
    for (Nodes::ConfigNode *above = below->GetParent(); above; above = above->GetParent()) {
        const auto moved = [this, link = Nodes::NodeLink(below)](const Nodes::NodeLink &child) {
            if (child == link)
                onAncestorMoved();
        };
        Utils::NodeRelay::Handlers handlers;
        handlers.childAdded = moved;
        handlers.childRemoved = moved;
        m_ancestors.push_back(std::make_unique<Utils::NodeRelay>());
        m_ancestors.back()->connect(above, std::move(handlers));
        below = above;
    }
}

void ProxyLayer::onAncestorMoved()
{
    if (!getNode()) {
        // Now, while the nodes still exist: started ones would stay so for good.
        const QList<ProxyWidget *> hosts = getWidgets();
        for (ProxyWidget *host : hosts)
            drop(*host);
        m_hosts.clear();
        m_isBuilt = false;
    }
    // Also after a removal: a node that is moved to another place is back a moment later.
    QTimer::singleShot(0, this, &ProxyLayer::comeBack);
}

void ProxyLayer::comeBack()
{
    if (!isHome() || !getWidgets().isEmpty())
        return;
    followAncestors();
    if (layerNode())
        takeAll();
    addWidgets(getNode()->GetNodes());
    emit propertyChange();
}

QList<ProxyWidget *> ProxyLayer::getWidgets() const
{
    QList<ProxyWidget *> hosts;
    const QList<QGraphicsItem *> items = childItems();
    hosts.reserve(items.size());
    for (QGraphicsItem *item : items) {
        if (auto *host = dynamic_cast<ProxyWidget *>(item))
            hosts.append(host);
    }
    return hosts;
}

ProxyWidget *ProxyLayer::addWidget(Nodes::NodeLink link)
{
    if (!dynamic_cast<Nodes::BasicWidget *>(link.GetNode()))
        return nullptr;
    auto *host = new ProxyWidget(link, this, Qt::WindowFlags(), m_context);
    connect(host, &ProxyWidget::copyWidget, this, &ProxyLayer::copyWidget);
    m_hosts.insert(link.GetNodeId(), host);
    host->setPickable(m_isEnabled);
    host->setTypeFrame(static_cast<ProxyWidget::TypeFrame>(m_frameType));
    // An element added while its scene is shown appears selected; those of a scene being built
    // do not.
    if (m_isBuilt)
        host->setSelected(true);
    return host;
}

void ProxyLayer::onNodeRemoved(Nodes::NodeLink link)
{
    const auto hosts = m_hosts.values(link.GetNodeId());
    for (const QPointer<ProxyWidget> &host : hosts) {
        if (!host || host->getNodeLink() != link)
            continue;
        m_hosts.remove(link.GetNodeId(), host);
        drop(*host);
    }
}

// Stopped now, while the node still exists (its link leads nowhere any more); deleted later,
// because the removal may come out of an event of this very item, or out of a dialog that the
// event waits for.
void ProxyLayer::drop(ProxyWidget &host)
{
    host.retire();
    endBurst();
    IdleDeleter *busy = nullptr;
    for (QGraphicsView *shown : host.scene() ? host.scene()->views() : QList<QGraphicsView *>()) {
        auto *view = dynamic_cast<IdleDeleter *>(shown);
        if (view && !view->isIdle())
            busy = view;
    }
    host.setParentItem(nullptr);
    if (host.scene())
        host.scene()->removeItem(&host);
    if (busy)
        busy->deleteWhenIdle(&host);
    else
        host.deleteLater();
}

void ProxyLayer::onPropertyChange(Nodes::BasicProperty *property)
{
    const Nodes::BasicLayer *layer = layerNode();
    if (!property || !layer)
        return;
    switch (property->GetValueId()) {
    case Nodes::BasicLayer::Prop::Mode:
        setTransparency(isModeTransparent());
        break;
    case Nodes::BasicLayer::Prop::ZOrder:
        setZValue(layer->GetZOrder());
        emit propertyChange();
        break;
    case Nodes::BasicLayer::Prop::Visible:
        setVisible(layer->isVisible());
        break;
    default:
        break;
    }
}

// After changes made on another thread nobody knows which they were.
void ProxyLayer::takeAll()
{
    const Nodes::BasicLayer *layer = layerNode();
    if (!layer)
        return;
    setTransparency(isModeTransparent());
    setVisible(layer->isVisible());
    setZValue(layer->GetZOrder());
    emit propertyChange();
}

Nodes::BasicLayer *ProxyLayer::layerNode() const
{
    return dynamic_cast<Nodes::BasicLayer *>(getNode());
}

bool ProxyLayer::isModeTransparent() const
{
    const Nodes::BasicLayer *layer = layerNode();
    return layer && layer->GetMode() == Nodes::BasicLayer::ModeTransparent;
}

void ProxyLayer::setTransparency(bool on)
{
    if (m_isTransparent == on)
        return;
    m_isTransparent = on;
    emit transparencyChanged(on);
}

void ProxyLayer::setEnabledItems(bool on)
{
    m_isEnabled = on;
    const QList<ProxyWidget *> hosts = getWidgets();
    for (ProxyWidget *host : hosts)
        host->setPickable(on);
}

void ProxyLayer::setTypeFrame(int type)
{
    m_frameType = type;
    const QList<ProxyWidget *> hosts = getWidgets();
    for (ProxyWidget *host : hosts)
        host->setTypeFrame(static_cast<ProxyWidget::TypeFrame>(type));
}

void ProxyLayer::start()
{
    const QList<ProxyWidget *> hosts = getWidgets();
    for (ProxyWidget *host : hosts)
        host->start();
}

void ProxyLayer::stop()
{
    const QList<ProxyWidget *> hosts = getWidgets();
    for (ProxyWidget *host : hosts)
        host->stop();
}

void ProxyLayer::keyMove(const QRectF &delta)
{
    const QList<ProxyWidget *> hosts = getWidgets();
    for (ProxyWidget *host : hosts)
        host->keyMove(delta);
}

void ProxyLayer::updateSelection()
{
    const QList<ProxyWidget *> hosts = getWidgets();
    for (ProxyWidget *host : hosts)
        host->setFrame();
}

} // namespace Widgets
