#include "widgets/actions/kinds/qactionAuthUser.h"

#include "widgets/actions/running/Refusals.h"
#include "widgets/dialogs/AuthenticationDialog.h"
#include "widgets/dialogs/AuthenticationWindow.h"
#include "widgets/dialogs/Dialogs.h"
#include "widgets/windows/DesktopContext.h"

#include "nodes/auth/systemAuthentication.h"
#include "nodes/system/systemCore.h"

namespace Widgets {

namespace {

/// Keeps back what follows in the list, which is to be the doing of whoever logs in.
class ListHold
{
public:
    explicit ListHold(const ActionTrigger &trigger) : m_isHeldBack(trigger.isHeldBack)
    {
        if (m_isHeldBack)
            *m_isHeldBack = true;
    }
    ~ListHold()
    {
        if (m_isHeldBack)
            *m_isHeldBack = false;
    }
    ListHold(const ListHold &) = delete;
    ListHold &operator=(const ListHold &) = delete;

private:
    std::shared_ptr<bool> m_isHeldBack;
};

// The action, its node and the project may go while the operator is asked.
void askOperator(Nodes::actionAuthUser &node, int display, const ActionTrigger &trigger)
{
    const DesktopContext *desktop = DesktopContext::current();
    DialogRequest request;
    request.parent = desktop ? desktop->getFrame(display) : nullptr;
    request.display = display;
    request.node = &node;
    const OwnedDialog<AuthenticationWindow> window(request);
    if (!window)
        return;
    const AuthenticationDialog *dialog = window->dialog();
    QObject::connect(dialog, &QDialog::accepted, dialog, [dialog, user = trigger.user] {
        if (user && dialog->users())
            *user = dialog->users()->GetActingUser();
    });
    const ListHold hold(trigger);
    window->exec();
}

} // namespace

// What follows in the same list is the doing of whoever is logged in now.
void qactionAuthUser::passOn(const Nodes::systemAuthentication &users) const
{
    if (trigger().user)
        *trigger().user = users.GetActingUser();
}

void qactionAuthUser::Execute()
{
    auto *node = nodeAs<Node>();
    Nodes::systemCore *core = node ? node->GetCore() : nullptr;
    Nodes::systemAuthentication *users = core ? core->GetSystemAuthentication() : nullptr;
    if (!users)
        return;
    if (node->isLogout()) {
        users->Logout(); // what follows is still the doing of whoever triggered it
    } else if (node->GetUser().isValid()) {
        const Nodes::Result result = users->Authenticate(node->GetUser());
        passOn(*users);
        if (!result)
            ShowActionError(QStringLiteral("%1: вход не выполнен. Войти без пароля можно только "
                                           "пользователем, которому это разрешено в проекте.")
                                .arg(QString::fromStdString(node->GetUser()->GetName())),
                            trigger());
    } else {
        askOperator(*node, targetDisplay(0), trigger());
    }
}

} // namespace Widgets
