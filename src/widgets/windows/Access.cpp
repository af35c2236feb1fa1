#include "widgets/windows/Access.h"

#include "widgets/dialogs/PlainMessageBox.h"
#include "widgets/windows/WindowManager.h"

#include "nodes/auth/systemAuthentication.h"
#include "nodes/system/systemCore.h"

namespace Widgets {

namespace {

constexpr int codeNoRights = 1320;
constexpr int codeSilent = 403;

} // namespace

bool HasPrivilege(Nodes::enPrivilegeType privilege, const Nodes::BasicNode *node)
{
    const Nodes::systemCore *core = g_pWindowManager ? g_pWindowManager->getCore() : nullptr;
    const Nodes::systemAuthentication *users = core ? core->GetSystemAuthentication() : nullptr;
    return !users || Nodes::IsGranted(users->CheckAccess(privilege, Nodes::NodeLink(node)));
}

void ShowAccessDenied()
{
    ShowActionError(QStringLiteral("Недостаточно прав для выполнения действия"));
}

void ShowActionResult(const Nodes::Result &result, const std::string &what)
{
    if (result || result.GetCode() == codeSilent)
        return;
    if (result.GetCode() == codeNoRights)
        ShowAccessDenied();
    else
        ShowActionError(QString::fromStdString(what + ": " + result.GetResultTranslated()));
}

void ShowActionError(const QString &text)
{
    PlainMessageBox::ask(QMessageBox::Warning, QStringLiteral("Ошибка"), text);
}

} // namespace Widgets
