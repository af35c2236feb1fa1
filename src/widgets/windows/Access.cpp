#include "widgets/windows/Access.h"

#include "widgets/dialogs/PlainMessageBox.h"
#include "widgets/windows/WindowManager.h"

#include "nodes/auth/AccessCheck.h"
#include "nodes/system/systemCore.h"

#include <QApplication>

#include <algorithm>

namespace Widgets {

namespace {

constexpr int codeNoRights = 1320;
constexpr int codeSilent = 403;

} // namespace

bool HasPrivilege(Nodes::enPrivilegeType privilege, const Nodes::BasicNode *node)
{
    const auto *guarded = static_cast<const Nodes::ConfigNode *>(node);
    if (!guarded && g_pWindowManager)
        guarded = g_pWindowManager->getCore();
    return !guarded || Nodes::CheckAccess(privilege, *guarded);
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

void TellActionError(const QString &text, const QObject *owner)
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    const bool isTold = std::any_of(windows.begin(), windows.end(), [&text](const QWidget *window) {
        const auto *box = qobject_cast<const PlainMessageBox *>(window);
        return box && box->isVisible() && box->text() == text;
    });
    if (isTold)
        return;
    auto *box = new PlainMessageBox(QMessageBox::Warning, QStringLiteral("Ошибка"), text);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::ApplicationModal);
    QObject::connect(owner, &QObject::destroyed, box, [box] { delete box; });
    box->show();
}

} // namespace Widgets
