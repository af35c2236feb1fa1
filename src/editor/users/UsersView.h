#pragma once

#include "editor/workspace/DocumentView.h"

#include "nodes/values/Connection.h"

class QTabWidget;

namespace Nodes {
class ConfigNode;
}

namespace Editor {

class AccessMatrix;
class RolesPage;
class UsersPage;

/// Users of a station, their roles, the rules of these, and what comes of it. GUI thread.
class UsersView : public DocumentView
{
    Q_OBJECT

public:
    UsersView(Workspace &workspace, const Nodes::NodeLink &node, QWidget *parent);
    ~UsersView() override;

    static bool shows(const Nodes::ConfigNode &node);
    bool reveal(const Nodes::NodeLink &node) override;

private:
    void refreshLater();
    void refresh();

    QTabWidget *m_tabs; ///< children
    UsersPage *m_users;
    RolesPage *m_roles;
    AccessMatrix *m_matrix;
    bool m_isStale = false;
    Nodes::ScopedConnection m_connection;
};

} // namespace Editor
