#include "widgets/scene/editing/SceneEditor.h"

#include "widgets/scene/LayerStack.h"
#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/editing/EditedScene.h"
#include "widgets/scene/editing/ElementClipboard.h"
#include "widgets/scene/editing/Locker.h"
#include "widgets/scene/editing/SceneMenu.h"
#include "widgets/scene/editing/guides/SnapSettings.h"
#include "widgets/scene/editing/paste/ScenePaste.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/visual/BasicWidget.h"
#include "utils/editing/ActionFactory.h"
#include "utils/undo/IUndo.h"

#include <QAction>
#include <QGraphicsScene>
#include <QMenu>

#include <algorithm>

namespace Widgets {

namespace {

constexpr int selectionDelay = 100; // ms

} // namespace

SceneEditor::SceneEditor(QGraphicsScene &scene, Utils::IUndo &undo, const LayerStack &layers,
                         Nodes::BasicNode *node)
    : m_scene(scene),
      m_undo(undo),
      m_layers(layers),
      m_node(node),
      m_selection(scene),
      m_groups(m_selection),
      m_overlay(std::make_unique<EditOverlay>(scene, m_selection, m_groups)),
      m_grabbers(std::make_unique<GrabberPlane>(scene, dynamic_cast<EditedScene *>(&scene),
                                                m_selection, m_groups)),
      m_snapper(scene, SnapSettings::process()),
      m_drag(m_selection, *m_overlay),
      m_edits(m_selection, undo),
      m_tableEdits(m_selection, m_groups, undo, node),
      m_newElements(undo),
      m_dropPreview(m_selection, m_snapper, *m_overlay)
{
    createActions();
    m_drag.addAdjuster(m_snapper);
    connect(&m_newElements, &NewElements::menuFilled, this, &SceneEditor::actionsChanged);
    connect(&m_newElements, &NewElements::chosen, this, [this](const Nodes::NodeType &type) {
        m_newElements.add(type, m_layers.topmostNode(), m_pastePosition, false);
    });
    m_menu = std::make_unique<SceneMenu>(
        SceneMenu::Actions{m_deleteAction, m_copyAction, m_pasteAction});
    connect(m_menu.get(), &SceneMenu::orderMoved, this,
            [this](int step) { m_edits.moveOrder(step); });
    connect(m_menu.get(), &SceneMenu::currentWidgetChange, this, &SceneEditor::currentWidgetChange);
    connect(m_menu.get(), &SceneMenu::openWizardWindow, this, &SceneEditor::openWizardWindow);
    connect(&m_drag, &DragInteraction::moved, this, &SceneEditor::refreshMarks);
    m_selectionTimer.setInterval(selectionDelay);
    m_selectionTimer.setSingleShot(true);
    m_regroupTimer.setInterval(0);
    m_regroupTimer.setSingleShot(true);
    connect(&m_regroupTimer, &QTimer::timeout, this, &SceneEditor::showSelection);
    m_marksTimer.setInterval(0);
    m_marksTimer.setSingleShot(true);
    connect(&m_marksTimer, &QTimer::timeout, this, &SceneEditor::refreshMarks);
    followSelection();
}

SceneEditor::~SceneEditor() = default;

void SceneEditor::followSelection()
{
    const auto restart = qOverload<>(&QTimer::start);
    const auto repaint = [this] { m_overlay->refresh(); };
    connect(&m_selection, &SceneSelection::changed, &m_selectionTimer, restart);
    connect(&m_selection, &SceneSelection::keyChanged, &m_selectionTimer, restart);
    connect(&m_selection, &SceneSelection::changed, this, repaint);
    connect(&m_selection, &SceneSelection::keyChanged, this, repaint);
    connect(&m_selectionTimer, &QTimer::timeout, this, &SceneEditor::settleSelection);
}

void SceneEditor::settleSelection()
{
    emit selectionSettled();
    showSelection();
}

void SceneEditor::showSelection()
{
    m_groups.settle();
    const QList<ProxyWidget *> hosts = m_selection.hosts();
    m_overlay->setFramed(std::any_of(hosts.begin(), hosts.end(), [this](const ProxyWidget *host) {
        return !hasGrabbers(*host);
    }));
    for (ProxyLayer *layer : m_layers.all())
        layer->updateSelection();
    refreshMarks();
}

void SceneEditor::takeScale()
{
    for (const ProxyLayer *layer : m_layers.all()) {
        for (ProxyWidget *host : layer->getWidgets()) {
            if (!host->isSelected() && !(host->locker() && host->locker()->isLocked()))
                continue;
            host->setCornerPositions(QRectF());
            host->setPositionItems(QRectF());
        }
    }
    refreshMarks();
}

void SceneEditor::refreshMarks()
{
    m_overlay->refresh();
    m_grabbers->refresh();
}

bool SceneEditor::hasGrabbers(const ProxyWidget &host) const
{
    if (m_selection.count() > GrabbersAtMost)
        return &host == m_selection.key();
    return !m_groups.isUnited(host); // the group has its own
}

void SceneEditor::commitGeometry()
{
    m_drag.finish();
    m_edits.commitGeometry();
}

void SceneEditor::cancelDrag()
{
    m_picked.clear();
    (void)m_drag.cancel();
}

void SceneEditor::createActions()
{
    const Utils::ActionFactory &factory = Utils::ActionFactory::getInstance();
    m_deleteAction = factory.createAction(Utils::ActionFactory::ActionDelete, this);
    m_copyAction = factory.createAction(Utils::ActionFactory::ActionCopy, this);
    m_pasteAction = factory.createAction(Utils::ActionFactory::ActionPaste, this);
    if (m_deleteAction)
        connect(m_deleteAction, &QAction::triggered, this, &SceneEditor::removalAsked);
    if (m_copyAction)
        connect(m_copyAction, &QAction::triggered, this, &SceneEditor::copy);
    if (m_pasteAction)
        connect(m_pasteAction, &QAction::triggered, this, [this] { paste(m_pastePosition); });
}

void SceneEditor::takeOrder()
{
    const QList<ProxyLayer *> sorted = m_layers.sorted();
    // Each is told once: what can be picked before and after stays selected.
    for (ProxyLayer *layer : m_layers.all()) {
        const int place = sorted.indexOf(layer);
        const bool isTop = place + 1 == sorted.size();
        layer->setEnabledItems(place >= 0 && (isTop || sorted[place + 1]->transparency()));
    }
    if (!sorted.isEmpty())
        m_newElements.fillMenu(*sorted.last()->getNode());
}

void SceneEditor::copy() const
{
    if (const Nodes::NodesCollection *project = m_node ? m_node->GetNodesCollection() : nullptr)
        ElementClipboard::put(*project, m_selection.links(), m_groups.scope().group);
}

void SceneEditor::cut()
{
    copy();
    emit removalAsked();
}

void SceneEditor::paste(QPointF point)
{
    const QList<ProxyLayer *> top = m_layers.highest();
    const Nodes::ConfigNode *layer = top.isEmpty() ? nullptr : top.first()->getNode();
    if (!layer)
        return;
    const PasteReport report =
        pasteElements(*layer, QPoint(int(point.x()), int(point.y())), m_selection, m_undo);
    if (!report.isClean())
        emit pasted(report);
}

} // namespace Widgets
