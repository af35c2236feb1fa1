#include "editor/problems/ProblemsPanel.h"

#include "editor/project/ProjectSession.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/NodeNotifications.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/system/systemCore.h"

#include <QVBoxLayout>

namespace Editor {

namespace {

constexpr int delay = 700; // ms; nobody reads while he types

} // namespace

ProblemsPanel::ProblemsPanel(Workspace &workspace, QWidget *parent)
    : QWidget(parent),
      m_workspace(workspace),
      m_view(new Widgets::ProblemsView(this, Widgets::ProblemsView::Compact))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(m_view);
    m_timer.setSingleShot(true);
    m_timer.setInterval(delay);
    connect(&m_timer, &QTimer::timeout, this, &ProblemsPanel::check);
    connect(&workspace.session(), &ProjectSession::opened, this, &ProblemsPanel::begin);
    connect(&workspace.session(), &ProjectSession::closed, this, &ProblemsPanel::end);
    connect(m_view, &Widgets::ProblemsView::nodeActivated, this, &ProblemsPanel::goTo);
    if (workspace.session().isOpen())
        begin();
}

void ProblemsPanel::begin()
{
    m_changes = m_workspace.session().project()->ConnectChanged(
        [this](const Nodes::NodeChange &) { m_timer.start(); });
    m_view->check(&m_workspace.session().core());
}

void ProblemsPanel::end()
{
    m_changes.Disconnect();
    m_timer.stop();
    m_view->check(nullptr);
}

void ProblemsPanel::check()
{
    m_view->checkAgain(&m_workspace.session().core());
}

void ProblemsPanel::goTo(const Nodes::NodeLink &node, const QString &property)
{
    m_workspace.open(node);
    m_workspace.revealProperty(node, property);
}

} // namespace Editor
