#include "widgets/actions/kinds/qactionAuthUser.h"

#include "widgets/dialogs/AuthenticationWindow.h"
#include "widgets/windows/Access.h"
#include "widgets/windows/WindowManager.h"
#include "widgets/windows/desktop/DesktopPlacement.h"

#include "nodes/actions/kinds/actionAuthUser.h"
#include "nodes/auth/systemAuthentication.h"
#include "nodes/system/systemCore.h"

namespace Widgets {

namespace {

// On the heap and guarded: the frame it belongs to may go while it waits for the operator. Whoever
// is asked already is not asked twice.
void askOperator(Nodes::actionAuthUser &node, int display)
{
    static QPointer<AuthenticationWindow> asking;
    if (asking)
        return DesktopPlacement::present(*asking);
    if (g_pWindowManager && g_pWindowManager->isEnding())
        return;
    QWidget *frame = g_pWindowManager ? g_pWindowManager->getFrame(display) : nullptr;
    const QPointer<AuthenticationWindow> window = new AuthenticationWindow(frame);
    asking = window;
    window->setNode(&node);
    DesktopPlacement::centre(*window, display);
    window->exec();
    asking = nullptr;
    if (window)
        window->deleteLater();
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
    auto *node = nodeAs<Nodes::actionAuthUser>();
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
        askOperator(*node, targetDisplay(0));
    }
}

} // namespace Widgets
