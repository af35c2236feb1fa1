#include "editor/shell/DocumentTabs.h"

#include "editor/project/ProjectSession.h"
#include "editor/tables/DocumentTable.h"
#include "editor/workspace/DocumentView.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodeNotifications.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/visual/windows/BasicFrame.h"
#include "nodes/visual/windows/BasicWindow.h"
#include "utils/settings/Configurator.h"

#include <QJsonArray>
#include <QTabBar>
#include <QTimerEvent>

namespace Editor {

namespace {

constexpr int keptProjects = 20;
constexpr int longestTitle = 32; // letters

Utils::Configurator settings()
{
    return {QStringLiteral("ConfiguratorDocuments"), QStringLiteral("configurator.json")};
}

/// Both ends of a long name tell more than its middle.
QString shortened(const QString &title)
{
    return title.size() <= longestTitle ? title
                                        : title.left(longestTitle / 2) + QStringLiteral("…") +
                                              title.right(longestTitle / 2 - 1);
}

/// The largest of the windows that frames open with: the overview, not its head or foot.
Nodes::NodeLink largestWindow(const Nodes::NodesCollection &project)
{
    Nodes::NodeLinks frames;
    project.FindNodes(Nodes::NodeType::TypeFrame, &frames);
    Nodes::NodeLink largest;
    int area = 0;
    for (const Nodes::NodeLink &link : frames) {
        const auto *frame = dynamic_cast<const Nodes::BasicFrame *>(link.GetNode());
        for (const Nodes::NodeLink &shown : frame ? frame->GetWindows() : Nodes::NodeLinks()) {
            const auto *window = dynamic_cast<const Nodes::BasicWindow *>(shown.GetNode());
            const Nodes::NRect place = window ? window->GetGeometry() : Nodes::NRect();
            if (!window || place.width * place.height <= area)
                continue;
            area = place.width * place.height;
            largest = shown;
        }
    }
    return largest;
}

} // namespace

DocumentTabs::DocumentTabs(Workspace &workspace, QWidget *parent)
    : QTabWidget(parent), m_workspace(workspace)
{
    setDocumentMode(true);
    setTabsClosable(true);
    setMovable(true);
    setElideMode(Qt::ElideNone); // rather scrolled than cut to single letters
    setUsesScrollButtons(true);
    makeList();
    tabBar()->setContextMenuPolicy(Qt::CustomContextMenu);
    tabBar()->installEventFilter(this);
    connect(tabBar(), &QWidget::customContextMenuRequested, this, &DocumentTabs::openMenu);
    connect(this, &QTabWidget::tabCloseRequested, this, &DocumentTabs::closeAt);
    connect(this, &QTabWidget::currentChanged, this, &DocumentTabs::onCurrentChanged);
    connect(&workspace, &Workspace::openRequested, this, &DocumentTabs::open);
    connect(&workspace, &Workspace::showRequested, this, &DocumentTabs::showDocument);
    connect(&workspace, &Workspace::revealRequested, this, &DocumentTabs::onReveal);
    connect(&workspace.session(), &ProjectSession::opened, this, &DocumentTabs::watchProject);
    connect(&workspace.session(), &ProjectSession::opened, this, &DocumentTabs::reopen);
    connect(&workspace.session(), &ProjectSession::aboutToClose, this, [this] {
        keepOpen();
        closeAll();
    });
}

DocumentTabs::~DocumentTabs()
{
    closeAll();
}

DocumentView *DocumentTabs::at(int index) const
{
    return qobject_cast<DocumentView *>(widget(index));
}

DocumentView *DocumentTabs::find(const Nodes::NodeLink &node) const
{
    for (int i = 0; i < count(); ++i) {
        if (at(i)->isOfNode() && at(i)->node() == node)
            return at(i);
    }
    return nullptr;
}

bool DocumentTabs::open(const Nodes::NodeLink &node)
{
    for (const Nodes::ConfigNode *asked = node.GetNode(); asked; asked = asked->GetParent()) {
        const DocumentRow *row = FindDocument(*asked);
        if (!row)
            continue;
        const Nodes::NodeLink shown(asked);
        DocumentView *document = find(shown);
        if (!document) {
            document = row->make(m_workspace, shown, this);
            add(document);
        }
        setCurrentWidget(document);
        document->setFocus();
        if (asked != node.GetNode())
            document->reveal(node);
        return true;
    }
    return false;
}

void DocumentTabs::add(DocumentView *document)
{
    connect(document, &DocumentView::titleChanged, this, &DocumentTabs::refresh);
    addTab(document, document->icon(), QString());
    refresh();
}

void DocumentTabs::showDocument(DocumentView *document)
{
    for (int i = count() - 1; i >= 0; --i) {
        if (at(i)->metaObject() == document->metaObject())
            closeAt(i);
    }
    add(document);
    setCurrentWidget(document);
    document->setFocus();
}

void DocumentTabs::onReveal(const Nodes::NodeLink &node)
{
    for (const Nodes::ConfigNode *above = node.GetNode(); above; above = above->GetParent()) {
        DocumentView *document = find(Nodes::NodeLink(above));
        if (!document)
            continue;
        setCurrentWidget(document);
        document->reveal(node);
        return;
    }
}

void DocumentTabs::closeAt(int index)
{
    DocumentView *document = at(index);
    if (!document)
        return;
    if (document->isOfNode() && document->node().isValid())
        m_closed.push_back(document->node());
    removeTab(index);
    document->hide();
    document->deleteLater();
}

// At once: what the documents show goes with the project.
void DocumentTabs::closeAll()
{
    m_changes = {};
    m_seen.clear();
    m_closed.clear();
    m_workspace.setDocument(nullptr);
    const QSignalBlocker quiet(this);
    while (count() > 0) {
        DocumentView *document = at(count() - 1);
        removeTab(count() - 1);
        delete document;
    }
}

void DocumentTabs::keepOpen() const
{
    const Nodes::NodesCollection *project = m_workspace.session().project();
    const QString key = QString::fromStdString(project->GetUuid());
    QJsonArray open;
    int current = 0;
    for (int i = 0; i < count(); ++i) {
        if (!at(i)->isOfNode())
            continue;
        if (i == currentIndex())
            current = open.size();
        open.append(double(at(i)->node().GetNodeId()));
    }
    QJsonObject kept;
    (void)settings().load(kept);
    kept.remove(key);
    while (kept.size() >= keptProjects)
        kept.erase(kept.begin());
    kept.insert(key, QJsonObject{{"open", open}, {"current", current}});
    (void)settings().save(kept); // logged
}

void DocumentTabs::reopen()
{
    const Nodes::NodesCollection &project = *m_workspace.session().project();
    QJsonObject all;
    (void)settings().load(all);
    const QString key = QString::fromStdString(project.GetUuid());
    const QJsonObject kept = all.value(key).toObject();
    const QJsonArray nodes = kept.value(QStringLiteral("open")).toArray();
    for (const QJsonValue &id : nodes) {
        if (const Nodes::ConfigNode *node =
                project.FindNode(static_cast<unsigned long>(id.toDouble())))
            open(Nodes::NodeLink(node));
    }
    setCurrentIndex(kept.value(QStringLiteral("current")).toInt());
    if (count() == 0)
        open(largestWindow(project));
    if (const DocumentView *shown = at(currentIndex())) // not what the first of them has selected
        m_workspace.selection().select({shown->node()}, this);
}

void DocumentTabs::onCurrentChanged()
{
    noteSeen();
    m_workspace.setDocument(at(currentIndex()));
}

void DocumentTabs::watchProject()
{
    // A step may change thousands of nodes; titles and gone nodes are looked at once after it.
    m_changes =
        m_workspace.session().project()->ConnectChanged([this](const Nodes::NodeChange &change) {
            if (change.what != Nodes::NodeChange::Properties && !m_timer)
                m_timer = startTimer(0);
        });
}

void DocumentTabs::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_timer) {
        QTabWidget::timerEvent(event);
        return;
    }
    killTimer(m_timer);
    m_timer = 0;
    refresh();
}

void DocumentTabs::refresh()
{
    for (int i = count() - 1; i >= 0; --i) {
        const DocumentView *document = at(i);
        if (!document->node().isValid()) {
            closeAt(i);
            continue;
        }
        setTabText(i, shortened(document->title()));
        if (document->isOfNode())
            setTabToolTip(i, QString::fromStdString(document->node().GetLinkName(true)));
    }
}

} // namespace Editor
