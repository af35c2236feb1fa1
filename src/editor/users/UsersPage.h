#pragma once

#include "nodes/model/links/NodeLink.h"

#include <QWidget>

class QFormLayout;
class QLabel;
class QListWidget;
class QLineEdit;
class QPushButton;
class QTableWidget;
class QVBoxLayout;

namespace Editor {

class PropertyForm;
class Workspace;

/// The users of a station and, below them, what is known of the one chosen: name, password (set or
/// not), roles. GUI thread.
class UsersPage : public QWidget
{
    Q_OBJECT

public:
    UsersPage(Workspace &workspace, const Nodes::NodeLink &authentication, QWidget *parent);
    ~UsersPage() override;

    /// Shows the project as it is now.
    void refresh();
    bool reveal(const Nodes::NodeLink &user);

private:
    Nodes::NodeLink chosen() const;
    void makeForm();
    void showUser();
    void showName(bool isAnew);
    void showRoles();
    void addUser();
    void removeUser();
    void rename();
    void askPassword();
    void dropPassword();

    Workspace &m_workspace;
    Nodes::NodeLink m_authentication;
    Nodes::NodeLink m_shown;
    QTableWidget *m_table; ///< children
    QWidget *m_form;
    QVBoxLayout *m_formLayout;
    QFormLayout *m_names;
    QLineEdit *m_name;
    QString m_shownName; ///< what m_name was filled with
    QLabel *m_password;
    QPushButton *m_drop;
    QListWidget *m_roles;
    PropertyForm *m_properties = nullptr;
};

} // namespace Editor
