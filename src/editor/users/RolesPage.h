#pragma once

#include "nodes/model/links/NodeLink.h"

#include <QWidget>

class QListWidget;
class QTableWidget;
class QTableWidgetItem;

namespace Editor {

class Workspace;

/// The roles of a project and the rules of the one chosen: a row a rule, a column a privilege.
/// GUI thread.
class RolesPage : public QWidget
{
    Q_OBJECT

public:
    RolesPage(Workspace &workspace, const Nodes::NodeLink &authentication, QWidget *parent);
    ~RolesPage() override;

    /// Shows the project as it is now.
    void refresh();
    bool reveal(const Nodes::NodeLink &node);

private:
    Nodes::NodeLink chosenRole() const;
    Nodes::NodeLink grantOf(int row) const;
    void makeHeader();
    void showRules();
    void showRule(int row, const Nodes::NodeLink &grant);
    void take(const QTableWidgetItem *item);
    void addRole();
    void renameRole();
    void removeRole();
    void addRule();
    void removeRule();
    void pickScope();
    void dropScope();

    Workspace &m_workspace;
    Nodes::NodeLink m_authentication;
    QListWidget *m_roles; ///< children
    QTableWidget *m_rules;
};

} // namespace Editor
