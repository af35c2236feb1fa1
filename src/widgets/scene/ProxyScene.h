#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/context/SceneContext.h"

#include "nodes/model/NodeType.h"
#include "utils/relay/NodeRelay.h"
#include "utils/relay/WatchedNode.h"
#include "utils/undo/IUndo.h"

#include <QGraphicsScene>
#include <QList>
#include <QTimer>

#include <memory>

class QAction;
class QMenu;

namespace Nodes {
class BasicCollection;
class BasicComposition;
class BasicLayer;
class BasicNode;
class BasicWindow;
class NodesContainer;
class PropertyProxy;
} // namespace Nodes

namespace Widgets {

class ProxyLayer;
class ProxyWidget;

/// Scene of a composition, a window or a single layer: owns one item per layer, nothing of the
/// node model. Scene coordinates are the nodes' pixel coordinates. While editing, each edit is a
/// step on the application's undo stack. GUI thread.
class WIDGETS_EXPORT ProxyScene : public QGraphicsScene, public Utils::IUndo
{
    Q_OBJECT

public:
    /// Goes by a copy of `context`; see setMode.
    ProxyScene(Nodes::BasicComposition *composition, QObject *parent,
               const SceneContext &context = *SceneContext::process());
    /// Size and name are those of the layer's parent.
    ProxyScene(Nodes::BasicLayer *layer, QObject *parent,
               const SceneContext &context = *SceneContext::process());
    /// One layer with the window's own elements.
    ProxyScene(Nodes::BasicWindow *window, QObject *parent,
               const SceneContext &context = *SceneContext::process());
    ~ProxyScene() override;

    /// What the scene stands for; null without it and when it was deleted.
    Nodes::BasicNode *getNode() const { return m_node.get(); }

    /// What the scene and its elements go by.
    const SceneContext &context() const { return *m_context; }

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
    /// Properties of the selected elements as one object, made anew by each call, owned here. The
    /// application is told of a new selection 100 ms after its last change (Utils::NodeLinkEvent,
    /// empty without a selection) and asks for it here.
    Nodes::PropertyProxy *getSelectedItemsProxy();
    QString getNameUndo() override;

    /// Where new elements are put.
    QPointF pastePosition() const { return m_pastePosition; }
    void setPastePosition(QPointF position) { m_pastePosition = position; }
    /// Asks to delete the selected elements: signalCheckLink, or slotWidgetDelete at once where
    /// nobody is connected to it.
    void removeWidget();
    /// Commits the place and size of the selected elements as one step.
    void onMoveFinished();
    /// Makes the element movable or not: as a step with `push`, else at once and for good.
    void onPropertiesChange(ProxyWidget *widget, bool &movable, bool &push);

    /// Menu of the elements that the topmost layer takes; null before the first need.
    QMenu *addWidgetMenu() const { return m_addMenu.get(); }

signals:
    /// The add-widget menu was filled anew.
    void actionsChanged(QMenu *menu);
    /// The operator wants to see that node in the project's tree.
    void currentWidgetChange(Nodes::NodeLink link);
    /// The settings of that chart were asked for.
    void openWizardWindow(Nodes::NodeLink link);
    /// An element was dropped here from the element panel.
    void addWidgetFromPanel();
    /// These elements are about to be deleted. Whoever is connected looks after references to them
    /// and calls slotWidgetDelete with those that may go.
    void signalCheckLink(std::vector<Nodes::NodeLink> &vNodeLink);

public slots:
    /// Deletes those of the selected elements that are in the list, as one step.
    void slotWidgetDelete(std::vector<Nodes::NodeLink> links);
    /// Puts the selected elements on the clipboard, as hexadecimal text of their bytes.
    void onCopyToBuffer();
    /// Puts the clipboard's elements into the top layer as one step, the upper left corner of
    /// their group to `point` (scene pixels). Does nothing when the clipboard holds none.
    void onPasteFromBuffer(QPointF point);

protected:
    void focusInEvent(QFocusEvent *event) override;
    void wheelEvent(QGraphicsSceneWheelEvent *event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void contextMenuEvent(QGraphicsSceneContextMenuEvent *event) override;
    void dragEnterEvent(QGraphicsSceneDragDropEvent *event) override;
    void dragMoveEvent(QGraphicsSceneDragDropEvent *event) override;
    void dropEvent(QGraphicsSceneDragDropEvent *event) override;

private:
    ProxyScene(Nodes::BasicNode *node, int, QObject *parent, const SceneContext &context);

    void followLayers(Nodes::BasicComposition &composition);
    void onLayerAdded(const Nodes::NodeLink &link);
    void addLayers(const QList<ProxyLayer *> &layers);
    QList<ProxyLayer *> getMaxZOrder() const;
    void updateZOrder();
    void fillAddMenu(const ProxyLayer &topmost);
    void fillAddGroup(const std::vector<Nodes::NodeType> &types);
    /// New element in the topmost visible layer, its corner or its centre at the point; false, and
    /// told the operator, when there is none.
    bool addWidget(Nodes::NodeType type, QPointF point, bool isCentre);
    void onSelectionChanged();
    void createActions();
    QList<ProxyWidget *> selectedHosts() const;
    bool readClipboard(Nodes::NodesContainer &nodes) const;
    bool canPaste() const;
    void moveOrder(int step);
    void upZValue();
    void downZValue();
    void selectUnderMouse(const QList<ProxyWidget *> &hosts, Qt::KeyboardModifiers modifiers);
    void fillCanvasMenu(QMenu &menu);
    void fillSelectionMenu(QMenu &menu);
    void addItemActions(QMenu &menu, const QList<ProxyWidget *> &hosts);

    std::shared_ptr<SceneContext> m_context; ///< shared with the elements
    Utils::WatchedNode<Nodes::BasicNode> m_node;
    std::unique_ptr<QMenu> m_addMenu;
    QPointF m_pastePosition;
    QAction *m_deleteAction = nullptr; ///< the three are children; null outside the editor
    QAction *m_copyAction = nullptr;
    QAction *m_pasteAction = nullptr;
    QTimer m_selectionTimer;
    QList<ProxyLayer *> m_layers;
    std::unique_ptr<QMenu> m_contextMenu;
    std::unique_ptr<Nodes::PropertyProxy> m_selected;
    bool m_isEditable = true;
    Utils::NodeRelay m_relay; ///< layers that come and go
};

} // namespace Widgets
