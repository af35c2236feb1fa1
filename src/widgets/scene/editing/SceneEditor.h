#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/scene/editing/DragInteraction.h"
#include "widgets/scene/editing/DropPreview.h"
#include "widgets/scene/editing/EditOverlay.h"
#include "widgets/scene/editing/GrabberPlane.h"
#include "widgets/scene/editing/HeldArrow.h"
#include "widgets/scene/editing/NewElements.h"
#include "widgets/scene/editing/SceneSelection.h"
#include "widgets/scene/editing/SelectionEdits.h"
#include "widgets/scene/editing/arrange/TableEdits.h"
#include "widgets/scene/editing/groups/SceneGroups.h"
#include "widgets/scene/editing/guides/Snapper.h"

#include "nodes/model/links/NodeLink.h"
#include "utils/relay/WatchedNode.h"

#include <QObject>
#include <QPointF>
#include <QPointer>
#include <QTimer>

#include <memory>

class QAction;
class QGraphicsScene;
class QGraphicsSceneContextMenuEvent;
class QGraphicsSceneDragDropEvent;
class QGraphicsSceneMouseEvent;
class QKeyEvent;
class QMimeData;

namespace Nodes {
class BasicNode;
class NodesCollection;
} // namespace Nodes

namespace Widgets {

class LayerStack;
class ProxyWidget;
class SceneMenu;
struct PasteReport;

/// The tool that a scene hands its input to while it is edited: selection, drags, keys, context
/// menu, what is dropped from the element panel, clipboard. A scene at run time has none. GUI
/// thread.
class WIDGETS_EXPORT SceneEditor : public QObject
{
    Q_OBJECT

public:
    /// All but `node`, which may be null, outlive the editor. `node` is what the scene stands for.
    SceneEditor(QGraphicsScene &scene, Utils::IUndo &undo, const LayerStack &layers,
                Nodes::BasicNode *node);
    ~SceneEditor() override;

    /// Of more selected elements than this only the key one has grabbers; the others are framed.
    static constexpr int GrabbersAtMost = SceneSelection::GrabbersAtMost;

    SceneSelection &selection() { return m_selection; }
    const SceneSelection &selection() const { return m_selection; }
    SceneGroups &groups() { return m_groups; }
    SelectionEdits &edits() { return m_edits; }
    TableEdits &tableEdits() { return m_tableEdits; }
    DragInteraction &drag() { return m_drag; }
    EditOverlay &overlay() { return *m_overlay; }
    bool hasGrabbers(const ProxyWidget &host) const;
    /// Selected elements belong to other groups: shows it, once for all that happen now.
    void showSelectionSoon() { m_regroupTimer.start(); }
    /// What is selected stands elsewhere now.
    void refreshMarks();
    /// The same, once for all that happen now.
    void refreshMarksSoon() { m_marksTimer.start(); }
    /// The scene is shown in another scale.
    void takeScale();
    /// Takes the selection over as it is, which happens by itself 100 ms after its last change.
    void settleSelection();
    QMenu *addMenu() const { return m_newElements.menu(); }
    QPointF pastePosition() const { return m_pastePosition; }
    void setPastePosition(QPointF position) { m_pastePosition = position; }

    /// The layers' order or visibility changed: which elements can be picked, what can be added.
    void takeOrder();
    void copy() const;
    void cut();
    void paste(QPointF point);

    /// Ends a drag that is under way and brings what was moved into the nodes.
    void commitGeometry();
    /// The pointer was lost: a drag under way is taken back.
    void cancelDrag();
    /// Alt with the left button picks what lies below; the others are left to the items.
    bool pressMouse(const QGraphicsSceneMouseEvent &event);
    /// Whether it dragged what was picked so, or let it go.
    bool moveMouse(const QGraphicsSceneMouseEvent &event);
    bool releaseMouse();
    /// Whether the key was meant for the editor.
    bool pressKey(const QKeyEvent &event);
    void releaseKey(const QKeyEvent &event);
    void openMenu(const QGraphicsSceneContextMenuEvent &event);
    /// Whether a drop of it makes new elements, see DroppedElements.
    bool takesDrag(const QMimeData &data) const;
    /// What it takes is dragged over the scene, or not any more.
    void followDrop(const QGraphicsSceneDragDropEvent &event);
    void endDrop() { m_dropPreview.end(); }
    /// False for what makes none.
    bool drop(const QGraphicsSceneDragDropEvent &event);

signals:
    /// Of ProxyScene, which passes them on.
    void actionsChanged(QMenu *menu);
    void currentWidgetChange(Nodes::NodeLink link);
    void openWizardWindow(Nodes::NodeLink link);
    void addWidgetFromPanel();
    /// What a paste leaves to be said; never clean.
    void pasted(const Widgets::PasteReport &report);
    /// The selected elements are to be deleted.
    void removalAsked();
    /// The selection has not changed for a moment.
    void selectionSettled();

private:
    void createActions();
    void showSelection();
    void followSelection();
    void pressEscape();
    void moveByArrow(const QKeyEvent &event);
    bool pressSelecting(const QKeyEvent &event);
    void selectUnderMouse(const QList<ProxyWidget *> &hosts, Qt::KeyboardModifiers modifiers);
    void pasteAtPointer();
    Nodes::NodesCollection *project() const;

    QGraphicsScene &m_scene;
    Utils::IUndo &m_undo;
    const LayerStack &m_layers;
    Utils::WatchedNode<Nodes::BasicNode> m_node;
    SceneSelection m_selection;
    SceneGroups m_groups;
    std::unique_ptr<EditOverlay> m_overlay;
    std::unique_ptr<GrabberPlane> m_grabbers;
    Snapper m_snapper;
    DragInteraction m_drag;
    HeldArrow m_heldArrow;
    SelectionEdits m_edits;
    TableEdits m_tableEdits;
    NewElements m_newElements;
    DropPreview m_dropPreview;
    QPointF m_pastePosition;
    QPointer<ProxyWidget> m_picked;    ///< by the press that is held
    QAction *m_deleteAction = nullptr; ///< the three are children; null where the host has none
    QAction *m_copyAction = nullptr;
    QAction *m_pasteAction = nullptr;
    QTimer m_selectionTimer;
    QTimer m_regroupTimer;
    QTimer m_marksTimer;
    std::unique_ptr<SceneMenu> m_menu;
};

} // namespace Widgets
