#include "widgets/actions/running/Refusals.h"

#include "widgets/actions/running/ActionTeller.h"
#include "widgets/windows/DesktopContext.h"

#include "nodes/values/Result.h"

#include <QString>

namespace Widgets {

namespace {

constexpr int codeNoRights = 1320;
constexpr int codeSilent = 403;

} // namespace

void ShowAccessDenied(const ActionTrigger &trigger)
{
    ShowActionError(QStringLiteral("Недостаточно прав для выполнения действия"), trigger);
}

void ShowActionResult(const Nodes::Result &result, const std::string &what,
                      const ActionTrigger &trigger)
{
    if (result || result.GetCode() == codeSilent)
        return;
    if (result.GetCode() == codeNoRights)
        ShowAccessDenied(trigger);
    else
        ShowActionError(QString::fromStdString(what + ": " + result.GetResultTranslated()),
                        trigger);
}

void ShowActionError(const QString &text, const ActionTrigger &trigger)
{
    if (trigger.isOperators() && !DesktopContext::isStationEnding())
        ActionTeller::instance().notify(QStringLiteral("Ошибка"), text, trigger.display);
}

} // namespace Widgets
