#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/dialogs/BasicDialog.h"

#include "nodes/model/links/NodeLink.h"
#include "nodes/values/Result.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace Nodes {
class BasicNode;
class systemAuthentication;
} // namespace Nodes

/// Lets an operator log in: a list of the project's users, a password, and the outcome in words.
/// Accepted shortly after a successful log-in; a refusal leaves it open. Tells who is logged in
/// already and lets them log out, which rejects it. GUI thread.
class WIDGETS_EXPORT AuthenticationDialog : public Widgets::BasicDialog
{
    Q_OBJECT

public:
    explicit AuthenticationDialog(QWidget *parent = nullptr);

    /// Lists the users of the node's project, whose core then authenticates. Node and project may
    /// go while the dialog is open; without the project nobody can log in any more.
    void setNode(Nodes::BasicNode *node);
    /// Those of the project; null once it has gone.
    Nodes::systemAuthentication *users() const;

protected:
    void showEvent(QShowEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void build();
    void arrange(QLabel *image, QLabel *userCaption, QLabel *passwordCaption);
    QWidget *makeCurrentUserRow();
    void showCurrentUser();
    Nodes::NodeLink selectedUser() const;
    bool needsPassword() const;
    void updateOk();
    void logOut();
    void logIn();
    Nodes::Result authenticate();
    QString messageFor(const Nodes::Result &result) const;
    void openNumpad();
    void openKeyboard();
    /// Runs an on-screen keyboard and takes its text as the password.
    template <class Keyboard> void enterOn(QString (*textOf)(Keyboard &));

    Nodes::NodeLink m_node; ///< only tells the project
    QWidget *m_currentRow = nullptr;
    QLabel *m_current = nullptr;
    bool m_isBusy = false;
    QComboBox *m_users = nullptr;
    QLineEdit *m_password = nullptr;
    QPushButton *m_numpadButton = nullptr;
    QPushButton *m_keyboardButton = nullptr;
    QLabel *m_outcome = nullptr;
    QPushButton *m_okButton = nullptr;
    QPushButton *m_cancelButton = nullptr;
};
