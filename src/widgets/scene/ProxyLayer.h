#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/context/SceneContext.h"

#include "nodes/model/links/NodeLink.h"
#include "utils/relay/NodeRelay.h"
#include "utils/relay/WatchedNode.h"

#include <QGraphicsProxyWidget>
#include <QMultiHash>
#include <QPointer>

#include <memory>
#include <vector>

namespace Nodes {
class BasicLayer;
class BasicProperty;
class BasicWindow;
class ConfigNode;
} // namespace Nodes

namespace Widgets {

class BulkInsertion;
class ProxyWidget;

/// One layer of a scene: parent item of its elements' hosts, in scene coordinates. Follows the
/// node's order, visibility and transparency, and its children as they come and go. When the node
/// itself is taken out of the tree, alone or with a node above it, the hosts go too, their elements
/// stopped; they come back with the node. GUI thread.
class WIDGETS_EXPORT ProxyLayer : public QGraphicsProxyWidget
{
    Q_OBJECT

public:
    /// A null node gives an empty layer that follows nothing. With a scene the layer adds itself
    /// to it before its elements, which is much faster for many of them.
    explicit ProxyLayer(Nodes::BasicLayer *layer, QGraphicsScene *scene = nullptr,
                        SceneContextPtr context = SceneContext::process());
    /// The elements that stand in the window itself; order 0, always visible.
    explicit ProxyLayer(Nodes::BasicWindow *window, QGraphicsScene *scene = nullptr,
                        SceneContextPtr context = SceneContext::process());
    ~ProxyLayer() override;

    /// Null without a node, or when it was deleted.
    Nodes::ConfigNode *getNode() const { return m_node.get(); }
    /// False while the layer's node is gone or stands in another composition.
    bool isHome() const;
    /// Hosts of the elements, in stacking order.
    QList<ProxyWidget *> getWidgets() const;

    /// Hosts one element; null when the link leads to no visual element.
    ProxyWidget *addWidget(Nodes::NodeLink link);
    void onNodeRemoved(Nodes::NodeLink link);

    /// Whether the elements, also those that come later, can be picked and moved, as far as their
    /// nodes allow it.
    void setEnabledItems(bool on);
    /// Elements below a transparent layer can be picked in the editor.
    bool transparency() const { return m_isTransparent; }
    void setTypeFrame(int type);
    void start();
    void stop();
    /// Moves and grows the selected elements by that much, see ProxyWidget::keyMove.
    void keyMove(const QRectF &delta);

    // Layers compare by z-value only.
    bool operator==(const ProxyLayer &o) const { return zValue() == o.zValue(); }
    bool operator!=(const ProxyLayer &o) const { return zValue() != o.zValue(); }
    bool operator<(const ProxyLayer &o) const { return zValue() < o.zValue(); }
    bool operator>(const ProxyLayer &o) const { return zValue() > o.zValue(); }

signals:
    /// The order of the layers changed.
    void propertyChange();
    void transparencyChanged(bool transparency);
    /// An element asks to have the selection copied.
    void copyWidget();
    void nodeAdded(Nodes::NodeLink link);
    void propertyUpdated(Nodes::BasicProperty *property);
    void nodeRemoved(Nodes::NodeLink link);

public slots:
    /// Shows or hides the selection marks of every element.
    void updateSelection();
    void setTransparency(bool on);

private:
    ProxyLayer(Nodes::ConfigNode *node, QGraphicsScene *scene, Qt::WindowFlags flags,
               SceneContextPtr context);

    void addWidgets(const Nodes::NodeLinks &links);
    void insertWidget(const Nodes::NodeLink &link);
    void endBurst();
    void follow(bool withProperties);
    void followAncestors();
    void onAncestorMoved();
    void comeBack();
    void restackLater();
    void restack();
    void drop(ProxyWidget &host);
    void onPropertyChange(Nodes::BasicProperty *property);
    void takeAll();
    bool isModeTransparent() const;
    Nodes::BasicLayer *layerNode() const;

    Utils::WatchedNode<Nodes::ConfigNode> m_node;
    Nodes::NodeLink m_home;    // composition of a layer; empty for a window
    SceneContextPtr m_context; // for the elements
    int m_frameType = 1;
    bool m_isTransparent = true;
    bool m_isEnabled = true;
    bool m_isRestackDue = false;
    bool m_isBuilt = false; // the elements present at construction are hosted
    QMultiHash<unsigned long, QPointer<ProxyWidget>> m_hosts; // by id of the element's node
    // Of elements that come one after the other before anything else happens.
    std::unique_ptr<BulkInsertion> m_burst;
    bool m_isBursting = false;
    Utils::NodeRelay m_relay;
    std::vector<std::unique_ptr<Utils::NodeRelay>> m_ancestors;
};

} // namespace Widgets
