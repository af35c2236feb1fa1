#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/context/SceneContext.h"

#include "widgets/scene/LayerStack.h"
#include "widgets/scene/editing/EditedScene.h"
#include "widgets/scene/marks/MarkedScene.h"

#include "nodes/model/links/NodeLink.h"
#include "utils/relay/NodeRelay.h"
#include "utils/relay/WatchedNode.h"
#include "utils/undo/IUndo.h"

#include <QGraphicsScene>
#include <QList>
#include <QPointF>
#include <QPointer>

#include <memory>

class QMenu;

namespace Nodes {
class BasicComposition;
class BasicLayer;
class BasicNode;
class BasicWindow;
class PropertyProxy;
} // namespace Nodes

namespace Widgets {

class AlarmMarks;
class ProxyLayer;
class ProxyWidget;
class SceneEditor;
struct PasteReport;

/// Scene of a composition, a window or a single layer: owns one item per layer, nothing of the
/// node model. Scene coordinates are the nodes' pixel coordinates. Whether it is edited, previewed
/// or run its context says. While editing, each edit is a step on the application's undo stack.
/// GUI thread.
class WIDGETS_EXPORT ProxyScene : public QGraphicsScene,
                                  public Utils::IUndo,
                                  public EditedScene,
                                  public MarkedScene
{
    Q_OBJECT

public:
    /// Goes by a copy of `context`, as if by setContext.
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
    /// Another mode, sink of actions or model for this scene alone: a preview that is operated in
    /// the configurator, a scene that is edited at a running station. Where that changes the mode,
    /// the elements are made anew.
    void setContext(const SceneContext &context);
    /// The same context with that mode; none: the model's again.
    void setMode(std::optional<Nodes::enWorkMode> mode);

    /// Start or stop every element, layer by layer.
    void start();
    void stop();
    /// The signs of alarms on its elements; null before it is started at run time.
    AlarmMarks *alarmMarks() const { return m_alarms; }
    /// Takes the scene rectangle from the node; content never changes it.
    void updateGeometry();
    QList<ProxyLayer *> getLayers() const { return m_layers.all(); }
    /// Visible layers, lowest first.
    QList<ProxyLayer *> sortZOrder() const;
    /// Frame type of every element (ProxyWidget::TypeFrame).
    void onFrameChange(int type);
    /// False makes a preview of it, for looking at: it shows all as at run time, whatever its mode,
    /// and takes no presses.
    void setEditingMode(bool on);
    /// True when neither the mode nor the flag forbids editing.
    bool isEditing() const;
    /// Properties of the selected elements as one object, the key one first and the others in the
    /// order of selection; made anew by each call, owned here. The application is told of a new
    /// selection 100 ms after its last change (Utils::NodeLinkEvent, empty without a selection) and
    /// asks for it here.
    Nodes::PropertyProxy *getSelectedItemsProxy();
    QString getNameUndo() override;

    /// The tool by which it is edited: selection, drags, guides. Null while it is not edited, and
    /// another one after that.
    SceneEditor *sceneEditor() const { return m_editor.get(); }

    /// A view shows it larger or smaller than before.
    void takeScale();

    /// Where new elements are put.
    QPointF pastePosition() const;
    void setPastePosition(QPointF position);
    /// Signals signalCheckLink, or calls slotWidgetDelete at once where nobody is connected to it.
    void removeWidget() override;
    void takeRefused(ProxyWidget &host) override;
    void onMoveFinished() override;
    void takeSelected(ProxyWidget &host, bool on) override;
    void takePressed(ProxyWidget &host) override;
    void takePicked(ProxyWidget &host) override;
    void takeEntered(ProxyWidget &host) override;
    void takePlaced(ProxyWidget &host) override;
    void takeRegrouped(ProxyWidget &host) override;
    bool hasGrabbers(const ProxyWidget &host) const override;
    void drag(const DragMotion &motion) override;
    void finishDrag() override;
    void cancelDrag() override;
    void markAlarms(ProxyWidget &element) override;
    void onPropertiesChange(ProxyWidget *widget, bool &movable, bool &push) override;

    /// Menu of the elements that the topmost layer takes; null before the first need.
    QMenu *addWidgetMenu() const;

signals:
    /// An element was double-clicked while it is edited.
    void elementEntered(const Nodes::NodeLink &link);
    /// The scene is edited, previewed or run now, other than before.
    void modeChanged();
    /// The add-widget menu was filled anew.
    void actionsChanged(QMenu *menu);
    /// The operator wants to see that node in the project's tree.
    void currentWidgetChange(Nodes::NodeLink link);
    /// The settings of that chart were asked for.
    void openWizardWindow(Nodes::NodeLink link);
    /// An element was dropped here from the element panel.
    void addWidgetFromPanel();
    /// Links of what was pasted need a look, or nothing was pasted and why.
    void pasted(const Widgets::PasteReport &report);
    /// These elements are about to be deleted. Whoever is connected looks after references to them
    /// and calls slotWidgetDelete with those that may go.
    void signalCheckLink(std::vector<Nodes::NodeLink> &vNodeLink);

public slots:
    /// Deletes those of the selected elements that are in the list, as one step.
    void slotWidgetDelete(std::vector<Nodes::NodeLink> links);
    /// Puts the selected elements on the clipboard, as hexadecimal text of their bytes.
    void onCopyToBuffer();
    /// The same, and asks to delete them.
    void onCutToBuffer();
    /// Puts the clipboard's elements into the top layer as one step, the upper left corner of
    /// their group to `point` (scene pixels). Does nothing when the clipboard holds none.
    void onPasteFromBuffer(QPointF point);
    /// One up, one down in the order of their layers: the selected elements, as one step.
    void upZValue();
    void downZValue();

protected:
    bool event(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void wheelEvent(QGraphicsSceneWheelEvent *event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void contextMenuEvent(QGraphicsSceneContextMenuEvent *event) override;
    void dragEnterEvent(QGraphicsSceneDragDropEvent *event) override;
    void dragMoveEvent(QGraphicsSceneDragDropEvent *event) override;
    void dragLeaveEvent(QGraphicsSceneDragDropEvent *event) override;
    void dropEvent(QGraphicsSceneDragDropEvent *event) override;

private:
    bool openRuntimeMenu(const QGraphicsSceneContextMenuEvent &event);
    ProxyScene(Nodes::BasicNode *node, int, QObject *parent, const SceneContext &context);

    void takeContext();
    /// Null while the scene is not edited.
    SceneEditor *editor();
    void makeEditor();
    void followLayers(Nodes::BasicComposition &composition);
    void onLayerAdded(const Nodes::NodeLink &link);
    void addLayers(const QList<ProxyLayer *> &layers);
    void updateZOrder();
    void onSelectionChanged();
    void forgetRefused();
    void commit(QUndoCommand *command) override { pushToUndoStack(command); }

    std::shared_ptr<SceneContext> m_context; ///< shared with the elements
    Utils::WatchedNode<Nodes::BasicNode> m_node;
    LayerStack m_layers;
    std::unique_ptr<SceneEditor> m_editor; ///< made when the scene is edited for the first time
    std::unique_ptr<Nodes::PropertyProxy> m_selected;
    QPointer<ProxyWidget> m_refused; ///< marked so while something is dragged over it
    AlarmMarks *m_alarms = nullptr;  ///< a child
    bool m_isEditable = true;
    Utils::NodeRelay m_relay; ///< layers that come and go
};

} // namespace Widgets
