#pragma once

#include "widgets/scene/editing/NewElements.h"
#include "widgets/scene/editing/SelectionEdits.h"

#include "nodes/model/links/NodeLink.h"
#include "utils/relay/WatchedNode.h"

#include <QObject>
#include <QPointF>
#include <QTimer>

#include <memory>

class QAction;
class QGraphicsScene;
class QGraphicsSceneContextMenuEvent;
class QGraphicsSceneDragDropEvent;
class QKeyEvent;
class QMimeData;

namespace Nodes {
class BasicNode;
}

namespace Widgets {

class LayerStack;
class ProxyWidget;
class SceneMenu;

/// The tool that a scene hands its input to while it is edited: keys, context menu, what is
/// dropped from the element panel, clipboard. A scene at run time has none. GUI thread.
class SceneEditor : public QObject
{
    Q_OBJECT

public:
    /// All but `node`, which may be null, outlive the editor. `node` is what the scene stands for.
    SceneEditor(QGraphicsScene &scene, Utils::IUndo &undo, const LayerStack &layers,
                Nodes::BasicNode *node);
    ~SceneEditor() override;

    SelectionEdits &selection() { return m_selection; }
    QMenu *addMenu() const { return m_newElements.menu(); }
    QPointF pastePosition() const { return m_pastePosition; }
    void setPastePosition(QPointF position) { m_pastePosition = position; }

    /// The layers' order or visibility changed: which elements can be picked, what can be added.
    void takeOrder();
    void copy() const;
    void paste(QPointF point);

    /// Whether the key was meant for the editor.
    bool pressKey(const QKeyEvent &event);
    void releaseKey(const QKeyEvent &event);
    void openMenu(const QGraphicsSceneContextMenuEvent &event);
    static bool takesDrag(const QMimeData &data);
    /// False for what does not come from the element panel.
    bool drop(const QGraphicsSceneDragDropEvent &event);

signals:
    /// Of ProxyScene, which passes them on.
    void actionsChanged(QMenu *menu);
    void currentWidgetChange(Nodes::NodeLink link);
    void openWizardWindow(Nodes::NodeLink link);
    void addWidgetFromPanel();
    /// The selected elements are to be deleted.
    void removalAsked();
    /// The selection has not changed for a moment.
    void selectionSettled();

private:
    void createActions();
    void selectUnderMouse(const QList<ProxyWidget *> &hosts, Qt::KeyboardModifiers modifiers);
    void pasteAtPointer();

    QGraphicsScene &m_scene;
    Utils::IUndo &m_undo;
    const LayerStack &m_layers;
    Utils::WatchedNode<Nodes::BasicNode> m_node;
    SelectionEdits m_selection;
    NewElements m_newElements;
    QPointF m_pastePosition;
    QAction *m_deleteAction = nullptr; ///< the three are children; null where the host has none
    QAction *m_copyAction = nullptr;
    QAction *m_pasteAction = nullptr;
    QTimer m_selectionTimer;
    std::unique_ptr<SceneMenu> m_menu;
};

} // namespace Widgets
