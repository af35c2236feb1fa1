#include "editor/users/UsersView.h"

#include "editor/users/AccessMatrix.h"
#include "editor/users/RolesPage.h"
#include "editor/users/UsersPage.h"

#include "nodes/auth/systemAuthentication.h"
#include "nodes/model/NodeNotifications.h"
#include "nodes/model/NodesCollection.h"

#include <QTabWidget>
#include <QVBoxLayout>

namespace Editor {

UsersView::UsersView(Workspace &workspace, const Nodes::NodeLink &node, QWidget *parent)
    : DocumentView(workspace, node, parent),
      m_tabs(new QTabWidget(this)),
      m_users(new UsersPage(workspace, node, m_tabs)),
      m_roles(new RolesPage(workspace, node, m_tabs)),
      m_matrix(new AccessMatrix(workspace, m_tabs))
{
    m_tabs->setDocumentMode(true);
    m_tabs->addTab(m_users, tr("Пользователи"));
    m_tabs->addTab(m_roles, tr("Роли и правила"));
    m_tabs->addTab(m_matrix, tr("Кто что может"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_tabs);
    if (Nodes::NodesCollection *project = node.GetNodesCollection())
        m_connection =
            project->ConnectChanged([this](const Nodes::NodeChange &) { refreshLater(); });
    refresh();
}

UsersView::~UsersView() = default;

bool UsersView::shows(const Nodes::ConfigNode &node)
{
    return dynamic_cast<const Nodes::systemAuthentication *>(&node) != nullptr;
}

bool UsersView::reveal(const Nodes::NodeLink &node)
{
    const bool isUser = m_users->reveal(node);
    if (!isUser && !m_roles->reveal(node))
        return false;
    m_tabs->setCurrentIndex(isUser ? 0 : 1);
    return true;
}

void UsersView::refreshLater()
{
    if (m_isStale)
        return;
    m_isStale = true;
    QMetaObject::invokeMethod(this, &UsersView::refresh, Qt::QueuedConnection);
}

void UsersView::refresh()
{
    m_isStale = false;
    m_users->refresh();
    m_roles->refresh();
    m_matrix->refresh();
}

} // namespace Editor
