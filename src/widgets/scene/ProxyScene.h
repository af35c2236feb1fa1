#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/model/NodeType.h"
#include "utils/IUndo.h"
#include "utils/WatchedNode.h"

#include <QGraphicsScene>
#include <QList>
#include <QTimer>

#include <memory>

class QMenu;

namespace Nodes {
class BasicCollection;
class BasicComposition;
class BasicLayer;
class BasicNode;
class BasicWindow;
class PropertyProxy;
} // namespace Nodes

namespace Widgets {

class ProxyLayer;

/// Scene of a composition, a window or a single layer: owns one item per layer, nothing of the
/// node model. Scene coordinates are the nodes' pixel coordinates. GUI thread.
class WIDGETS_EXPORT ProxyScene : public QGraphicsScene, public Utils::IUndo
{
    Q_OBJECT

public:
    ProxyScene(Nodes::BasicComposition *composition, QObject *parent);
    /// Size and name are those of the layer's parent.
    ProxyScene(Nodes::BasicLayer *layer, QObject *parent);
    /// One layer with the window's own elements.
    ProxyScene(Nodes::BasicWindow *window, QObject *parent);
    ~ProxyScene() override;

    /// What the scene stands for; null without it and when it was deleted.
    Nodes::BasicNode *getNode() const { return m_node.get(); }

    /// Start or stop every element, layer by layer.
    void start();
    void stop();
    /// Takes the scene rectangle from the node; content never changes it.
    void updateGeometry();
    QList<ProxyLayer *> getLayers() const { return m_layers; }
    /// Visible layers, lowest first.
    QList<ProxyLayer *> sortZOrder() const;
    /// Frame type of every element (ProxyWidget::TypeFrame).
    void onFrameChange(int type);
    /// False makes a scene in the configurator take input as at run time: previews.
    void setEditingMode(bool on);
    /// True when neither the work mode nor the flag forbids editing.
    bool isEditing() const;
    /// Properties of the selected elements as one object, made anew by each call, owned here.
    Nodes::PropertyProxy *getSelectedItemsProxy();
    QString getNameUndo() override;

    /// Where new elements are put.
    QPointF pastePosition() const { return m_pastePosition; }
    void setPastePosition(QPointF position) { m_pastePosition = position; }
    /// Menu of the elements that the topmost layer takes; null before the first need.
    QMenu *addWidgetMenu() const { return m_addMenu.get(); }

signals:
    /// The add-widget menu was filled anew.
    void actionsChanged(QMenu *menu);

protected:
    void focusInEvent(QFocusEvent *event) override;
    void wheelEvent(QGraphicsSceneWheelEvent *event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;

private:
    ProxyScene(Nodes::BasicNode *node, int, QObject *parent);

    void addLayers(const QList<ProxyLayer *> &layers);
    QList<ProxyLayer *> getMaxZOrder() const;
    void updateZOrder();
    void fillAddMenu(const ProxyLayer &topmost);
    void fillAddGroup(const std::vector<Nodes::NodeType> &types);
    void addWidget(Nodes::NodeType type);
    void onSelectionChanged();

    Utils::WatchedNode<Nodes::BasicNode> m_node;
    std::unique_ptr<QMenu> m_addMenu;
    QPointF m_pastePosition;
    QTimer m_selectionTimer;
    QList<ProxyLayer *> m_layers;
    std::unique_ptr<Nodes::PropertyProxy> m_selected;
    bool m_isEditable = true;
};

} // namespace Widgets
