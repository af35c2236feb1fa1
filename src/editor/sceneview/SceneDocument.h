#pragma once

#include "editor/sceneview/SceneViewMemory.h"
#include "editor/workspace/DocumentView.h"

#include <QRectF>

namespace Widgets {
class SceneEditor;
struct PasteReport;
} // namespace Widgets

namespace Editor {

class EditedView;
class Ruler;
class SceneStatusBar;
class SceneToolBar;

/// Tab with the scene of a window, a composition or a template: rulers, zoom, backdrop, preview. A
/// composed window without composition has no scene; the tab says so. GUI thread.
class SceneDocument : public DocumentView
{
    Q_OBJECT

public:
    SceneDocument(Workspace &workspace, const Nodes::NodeLink &node, QWidget *parent);
    ~SceneDocument() override;

    /// Nodes that have a scene of their own.
    static bool shows(const Nodes::ConfigNode &node);

    Widgets::ProxyScene *scene() const override;
    Widgets::ProxyView *view() const override;
    QIcon icon() const override;
    bool reveal(const Nodes::NodeLink &node) override;

    /// Null without a scene.
    EditedView *editedView() const { return m_view; }
    /// Null without a scene and in a preview.
    Widgets::SceneEditor *editor() const;

    bool isPreview() const;
    /// A preview shows all of it; what was seen before comes back after it.
    void setPreview(bool on);
    /// About what is selected, else about the middle of the view.
    void setPercent(int percent);
    void fitAll();
    /// All without a selection.
    void fitSelection();

protected:
    void showEvent(QShowEvent *event) override;

private:
    void build();
    void buildEmpty();
    void connectScene();
    void enter(const Nodes::NodeLink &link);
    void followSelection(const Nodes::NodeLinks &nodes, QObject *by);
    void select(const Nodes::NodeLinks &nodes);
    void showScale();
    void showSelection();
    void takeBackground();
    void recallPlace();
    SceneViewMemory::Place place() const;
    void showPlace(const SceneViewMemory::Place &place);
    void removeElements(Nodes::NodeLinks asked);
    void tellPaste(const Widgets::PasteReport &report);

    EditedView *m_view = nullptr;
    Ruler *m_across = nullptr;
    Ruler *m_down = nullptr;
    SceneToolBar *m_tools = nullptr;
    SceneStatusBar *m_status = nullptr;
    QRectF m_shownRect; ///< of the selection
    int m_shownCount = -1;
    SceneViewMemory::Place m_editedPlace; ///< in a preview: where editing goes on
    bool m_isPlaced = false;              ///< zoom and place were set when it was shown first
};

} // namespace Editor
