#include "editor/sceneview/SceneDocument.h"

#include "editor/project/ProjectSession.h"
#include "editor/sceneview/EditedView.h"
#include "editor/sceneview/PasteReportDialog.h"
#include "editor/sceneview/Ruler.h"
#include "editor/sceneview/SceneStatusBar.h"
#include "editor/sceneview/SceneToolBar.h"
#include "editor/templates/TemplateCommands.h"
#include "editor/usages/Removal.h"
#include "editor/workspace/Workspace.h"

#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/editing/SceneEditor.h"
#include "widgets/scene/editing/paste/PasteReport.h"

#include "nodes/visual/windows/BasicComposition.h"
#include "nodes/visual/windows/BasicWindow.h"
#include "nodes/visual/windows/windowComposed.h"
#include "utils/convert/MetaTypes.h"
#include "utils/convert/ValueConversions.h"

#include <QAction>
#include <QGridLayout>
#include <QLabel>
#include <QSet>
#include <QUndoStack>

namespace Editor {

namespace {

/// The node whose elements are shown; null for a composed window without composition.
Nodes::ConfigNode *shownNode(const Nodes::NodeLink &node)
{
    const auto *composed = dynamic_cast<const Nodes::windowComposed *>(node.GetNode());
    return composed && !composed->GetComposition() ? nullptr : node.GetNode();
}

} // namespace

SceneDocument::SceneDocument(Workspace &workspace, const Nodes::NodeLink &node, QWidget *parent)
    : DocumentView(workspace, node, parent)
{
    if (shownNode(node))
        build();
    else
        buildEmpty();
}

SceneDocument::~SceneDocument()
{
    const Nodes::ConfigNode *shown = node().GetNode();
    if (!m_view || !shown || !m_isPlaced)
        return;
    SceneViewMemory().keep(*shown, isPreview() ? m_editedPlace : place());
}

bool SceneDocument::shows(const Nodes::ConfigNode &node)
{
    return dynamic_cast<const Nodes::BasicWindow *>(&node) ||
           dynamic_cast<const Nodes::BasicComposition *>(&node);
}

void SceneDocument::buildEmpty()
{
    auto *grid = new QGridLayout(this);
    auto *text = new QLabel(QStringLiteral("Не задана композиция.\nЗадайте её в свойствах окна и "
                                           "откройте окно снова."),
                            this);
    text->setAlignment(Qt::AlignCenter);
    grid->addWidget(text);
}

void SceneDocument::build()
{
    m_view = new EditedView(node().GetNode(), this);
    (void)m_view->setScene(node().GetNode());
    m_view->setObjectName(QStringLiteral("scene")); // by which scripts find it
    m_across = new Ruler(Qt::Horizontal, this);
    m_down = new Ruler(Qt::Vertical, this);
    m_tools = new SceneToolBar(*m_view, this);
    m_status = new SceneStatusBar(workspace(), this);
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(0);
    grid->addWidget(m_tools, 0, 0, 1, 2);
    grid->addWidget(m_across, 1, 1);
    grid->addWidget(m_down, 2, 0);
    grid->addWidget(m_view, 2, 1);
    grid->addWidget(m_status, 3, 0, 1, 2);
    setFocusProxy(m_view);
    takeBackground();
    connect(m_view, &EditedView::viewChanged, this, &SceneDocument::showScale);
    connect(m_view, &EditedView::painted, this, &SceneDocument::showSelection);
    connect(m_view, &EditedView::updateProperty, this, &SceneDocument::takeBackground);
    connect(m_view, &EditedView::pointerMoved, this, [this](const QPointF &at) {
        m_across->setPointer(at.x());
        m_down->setPointer(at.y());
        m_status->showPointer(at);
    });
    connect(m_view, &EditedView::pointerLeft, this, [this] {
        m_across->clearPointer();
        m_down->clearPointer();
        m_status->clearPointer();
    });
    connect(m_tools, &SceneToolBar::editAsked, this, [this](const Widgets::SceneEditRow &edit) {
        if (Widgets::SceneEditor *tool = editor())
            tool->tableEdits().run(edit);
    });
    connect(m_tools, &SceneToolBar::percentAsked, this, &SceneDocument::setPercent);
    connect(m_tools, &SceneToolBar::fitAsked, this, &SceneDocument::fitAll);
    connect(m_tools, &SceneToolBar::fitSelectionAsked, this, &SceneDocument::fitSelection);
    connect(m_tools->previewAction(), &QAction::toggled, this, &SceneDocument::setPreview);
    connect(&workspace().selection(), &Selection::changed, this, &SceneDocument::followSelection);
    // What happens out of view paints nothing.
    connect(&workspace().session().undoStack(), &QUndoStack::indexChanged, this,
            &SceneDocument::showSelection);
    connectScene();
}

void SceneDocument::connectScene()
{
    Widgets::ProxyScene *shown = scene();
    if (!shown)
        return;
    connect(shown, &Widgets::ProxyScene::currentWidgetChange, &workspace(), &Workspace::reveal);
    connect(shown, &Widgets::ProxyScene::openWizardWindow, &workspace(), &Workspace::reveal);
    connect(shown, &Widgets::ProxyScene::elementEntered, this, &SceneDocument::enter,
            Qt::QueuedConnection); // the scene first takes the press to its end
    connect(shown, &Widgets::ProxyScene::signalCheckLink, this, &SceneDocument::removeElements);
    connect(shown, &Widgets::ProxyScene::pasted, this, &SceneDocument::tellPaste);
}

void SceneDocument::enter(const Nodes::NodeLink &link)
{
    TemplateCommands::enter(workspace(), link);
}

Widgets::ProxyScene *SceneDocument::scene() const
{
    return m_view ? m_view->proxyScene() : nullptr;
}

Widgets::ProxyView *SceneDocument::view() const
{
    return m_view;
}

Widgets::SceneEditor *SceneDocument::editor() const
{
    const Widgets::ProxyScene *shown = scene();
    return shown ? shown->sceneEditor() : nullptr;
}

QIcon SceneDocument::icon() const
{
    return QIcon(QStringLiteral(":/editor/icons/scene.svg"));
}

void SceneDocument::takeBackground()
{
    SceneBackdrop backdrop = m_view->backdrop();
    const auto *window = dynamic_cast<const Nodes::BasicWindow *>(node().GetNode());
    backdrop.projectColor =
        window ? Utils::NColorToQColor(window->GetBackgroundColor()) : QColor(0xf4, 0xf6, 0xf7);
    m_view->setBackdrop(backdrop);
}

bool SceneDocument::isPreview() const
{
    return m_tools && m_tools->previewAction()->isChecked();
}

void SceneDocument::setPreview(bool on)
{
    Widgets::ProxyScene *shown = scene();
    const bool isNews = shown && on == shown->isEditing();
    if (!isNews)
        return;
    if (on)
        m_editedPlace = place();
    m_tools->previewAction()->setChecked(on);
    shown->setEditingMode(!on);
    if (on) {
        fitAll();
    } else {
        select(workspace().selection().nodes()); // the panels beside it still show that
        showPlace(m_editedPlace);
    }
    m_shownCount = -1;
    showSelection();
    m_view->viewport()->update();
    emit workspace().commandsChanged();
}

void SceneDocument::setPercent(int percent)
{
    if (!m_view)
        return;
    m_view->setPercent(percent);
    Widgets::SceneEditor *tool = editor();
    if (tool && !tool->selection().isEmpty())
        m_view->centerOn(tool->selection().rect().center());
}

void SceneDocument::fitAll()
{
    if (m_view)
        m_view->fitPage(true);
}

void SceneDocument::fitSelection()
{
    Widgets::SceneEditor *tool = editor();
    if (!tool || tool->selection().isEmpty())
        fitAll();
    else
        m_view->fit(tool->selection().rect());
}

void SceneDocument::showEvent(QShowEvent *event)
{
    DocumentView::showEvent(event);
    if (!m_view || m_isPlaced)
        return;
    m_isPlaced = true;
    // Once the layout has given the view its size.
    QMetaObject::invokeMethod(this, &SceneDocument::recallPlace, Qt::QueuedConnection);
}

void SceneDocument::recallPlace()
{
    const Nodes::ConfigNode *shown = node().GetNode();
    const auto place = shown ? SceneViewMemory().recall(*shown) : std::nullopt;
    showPlace(place ? *place : SceneViewMemory::Place{0, {}});
}

SceneViewMemory::Place SceneDocument::place() const
{
    return {m_view->isPageFitted() ? 0 : m_view->percent(), m_view->centre()};
}

void SceneDocument::showPlace(const SceneViewMemory::Place &place)
{
    m_view->showPage();
    if (place.percent == 0)
        return m_view->fitPage(false); // no element is blown up before anybody asks for it
    m_view->setPercent(place.percent);
    m_view->centerOn(place.centre);
}

void SceneDocument::showScale()
{
    const QPointF origin = m_view->mapToScene(QPoint(0, 0));
    const double scale = m_view->transform().m11();
    m_across->setScale(origin.x(), scale);
    m_down->setScale(origin.y(), scale);
}

// Asked at each painting: drags, undo and the property grid change it, and none of them tells.
void SceneDocument::showSelection()
{
    Widgets::SceneEditor *tool = editor();
    const int count = tool ? tool->selection().count() : 0;
    const QRectF rect = count > 0 ? tool->selection().rect() : QRectF();
    if (count == m_shownCount && rect == m_shownRect)
        return;
    m_shownCount = count;
    m_shownRect = rect;
    emit workspace().commandsChanged(); // before the selection settles: keys may follow at once
    if (tool)
        m_status->showSelection(count, rect.toRect());
    else
        m_status->showPreview();
    m_tools->showPossible(tool && !workspace().session().isReadOnly() ? tool->tableEdits().edited()
                                                                      : Widgets::EditedElements());
    m_status->showHidden(
        dynamic_cast<const Nodes::ConfigNode *>(scene() ? scene()->getNode() : nullptr));
    if (count == 0) {
        m_across->clearExtent();
        m_down->clearExtent();
        return;
    }
    m_across->setExtent(rect.left(), rect.right());
    m_down->setExtent(rect.top(), rect.bottom());
}

bool SceneDocument::reveal(const Nodes::NodeLink &revealed)
{
    const Nodes::ConfigNode *asked = revealed.GetNode();
    Widgets::SceneEditor *tool = editor();
    if (!asked || !tool)
        return false;
    select({revealed});
    if (tool->selection().isEmpty())
        return false;
    m_view->ensureVisible(tool->selection().rect());
    return true;
}

void SceneDocument::followSelection(const Nodes::NodeLinks &nodes, QObject *by)
{
    if (by != scene() && isVisible())
        select(nodes);
    showSelection();
}

void SceneDocument::select(const Nodes::NodeLinks &nodes)
{
    Widgets::SceneEditor *tool = editor();
    if (!tool || tool->selection().links() == nodes)
        return;
    QSet<unsigned long> ids;
    for (const Nodes::NodeLink &link : nodes)
        ids.insert(link.GetNodeId());
    QList<Widgets::ProxyWidget *> hosts;
    for (Widgets::ProxyWidget *host : tool->selection().selectable()) {
        if (ids.contains(host->getNodeLink().GetNodeId()))
            hosts.append(host);
    }
    tool->selection().select(hosts);
}

void SceneDocument::removeElements(Nodes::NodeLinks asked)
{
    const std::optional<RemovalPlan> plan = askRemoval(workspace(), asked);
    if (!plan || !scene())
        return;
    if (plan->replacements.empty())
        scene()->slotWidgetDelete(plan->nodes);
    else
        workspace().push(makeRemoval(*plan)); // one step, with the links that lead elsewhere
}

void SceneDocument::tellPaste(const Widgets::PasteReport &report)
{
    PasteReportDialog::tell(workspace(), report);
}

} // namespace Editor
