#include "editor/panel/ElementPanel.h"

#include "editor/panel/ElementModel.h"
#include "editor/panel/PaletteView.h"
#include "editor/project/ProjectSession.h"
#include "editor/workspace/DocumentView.h"
#include "editor/workspace/KeyboardAccess.h"
#include "editor/workspace/Workspace.h"

#include "nodes/visual/windows/BasicLayer.h"
#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyView.h"
#include "widgets/scene/editing/NewElements.h"

#include <QLineEdit>
#include <QSortFilterProxyModel>
#include <QTreeView>
#include <QVBoxLayout>

namespace Editor {

namespace {

void setUpView(QTreeView &view)
{
    view.setHeaderHidden(true);
    view.setIconSize(QSize(20, 20));
    view.setIndentation(12);
    view.setUniformRowHeights(true);
    view.setSelectionMode(QAbstractItemView::ExtendedSelection);
    view.setDragDropMode(QAbstractItemView::DragOnly);
    view.setEditTriggers(QAbstractItemView::NoEditTriggers);
    view.expandAll();
}

/// Middle of what is seen of the scene.
QPointF middleOf(const Widgets::ProxyScene &scene, const Widgets::ProxyView *view)
{
    QRectF seen = scene.sceneRect();
    if (view)
        seen &= view->mapToScene(view->viewport()->rect()).boundingRect();
    return (seen.isEmpty() ? scene.sceneRect() : seen).center();
}

} // namespace

ElementPanel::ElementPanel(Workspace &workspace, QWidget *parent)
    : QWidget(parent),
      m_workspace(workspace),
      m_model(new ElementModel(this)),
      m_filter(new QSortFilterProxyModel(this)),
      m_search(new QLineEdit(this)),
      m_view(new PaletteView<QTreeView>(this))
{
    m_filter->setRecursiveFilteringEnabled(true);
    m_filter->setFilterRole(ElementModel::SearchRole);
    m_filter->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_filter->setSourceModel(m_model);
    m_view->setModel(m_filter);
    setUpView(*m_view);
    KeyboardAccess::makeSearchLine(*m_search, QStringLiteral("Поиск"));
    m_view->setAccessibleName(QStringLiteral("Элементы"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->setSpacing(4);
    layout->addWidget(m_search);
    layout->addWidget(m_view, 1);
    setFocusProxy(m_view);

    connect(m_search, &QLineEdit::textChanged, this, [this](const QString &text) {
        m_filter->setFilterFixedString(text.simplified());
        m_view->expandAll();
    });
    connect(m_view, &QTreeView::activated, this, [this](const QModelIndex &index) {
        const Nodes::NodeType type = ElementModel::typeAt(index);
        if (!type.isEmpty())
            addToScene(type);
    });
    const ProjectSession &session = workspace.session();
    const auto follow = [this, &session] { setEnabled(session.isOpen()); };
    connect(&session, &ProjectSession::opened, this, follow);
    connect(&session, &ProjectSession::closed, this, follow);
    follow();
}

ElementPanel::~ElementPanel() = default;

void ElementPanel::setFilter(const QString &text)
{
    m_search->setText(text);
}

bool ElementPanel::addToScene(Nodes::NodeType type)
{
    const DocumentView *document = m_workspace.document();
    Widgets::ProxyScene *scene = document ? document->scene() : nullptr;
    if (!scene || !scene->isEditing()) {
        m_workspace.tell(Workspace::Info,
                         QStringLiteral("Откройте мнемосхему, в которую добавить элемент"));
        return false;
    }
    const QList<Widgets::ProxyLayer *> layers = scene->sortZOrder();
    Nodes::ConfigNode *layer = layers.isEmpty() ? nullptr : layers.last()->getNode();
    if (!layer) {
        m_workspace.tell(Workspace::Warning, QStringLiteral("Отсутствуют слои"));
        return false;
    }
    if (m_workspace.session().isReadOnly()) {
        m_workspace.tell(Workspace::Warning, m_workspace.session().readOnlyReason());
        return false;
    }
    const QPointF middle = middleOf(*scene, document->view());
    if (!Widgets::NewElements(*scene).add(type, layer, middle, true))
        return false;
    const Nodes::NodeLink made(layer->GetNodeAt(layer->GetNodeCount() - 1));
    m_workspace.selection().select({made}, this);
    return true;
}

} // namespace Editor
