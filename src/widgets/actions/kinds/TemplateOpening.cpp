#include "widgets/actions/kinds/TemplateOpening.h"

#include "widgets/actions/kinds/WindowOpening.h"
#include "widgets/actions/running/ActionDispatcher.h"
#include "widgets/windows/DesktopContext.h"
#include "widgets/windows/OpenWindows.h"
#include "widgets/windows/TemplateInstances.h"
#include "widgets/windows/WindowBasic.h"

#include "nodes/actions/BasicTemplateAction.h"

#include <QPointer>

namespace Widgets {

using Nodes::BasicTemplateAction;

namespace {

void journalMissing(const BasicTemplateAction &action, const Nodes::BasicWindow &instance,
                    const Nodes::TemplateBinding &binding)
{
    for (const std::string &name : binding.GetMissing())
        action.StoreMessage(Nodes::LevelWarning,
                            "Экземпляр «" + instance.GetName() + "»: параметру «" + name +
                                "» не соответствует ни один узел",
                            action.GetNodeLink());
}

QWidget *findOpen(const BasicTemplateAction &action, const Nodes::BasicWindow &window,
                  const Nodes::TemplateBinding &binding, int display)
{
    if (action.GetOpenMode() == BasicTemplateAction::OpenAlways)
        return nullptr;
    const bool isAnywhere = action.GetOpenMode() == BasicTemplateAction::OpenReuseAnywhere;
    return TemplateInstances::of(DesktopContext::current()->dispatcher())
        .find(*action.GetTemplate(), window, binding, isAnywhere ? -1 : display);
}

} // namespace

bool TemplateOpening::run(const BasicTemplateAction &action, Nodes::BasicWindow &window,
                          int display, const qBasicAction &run)
{
    Nodes::ConfigNode *source = action.GetTemplate();
    if (!source || !WindowOpening::isAllowed(window, run.trigger()))
        return false;
    const Nodes::TemplateBinding binding(*source, action.GetArguments());
    if (QWidget *found = findOpen(action, window, binding, display)) {
        WindowOpening::bringForward(*found, run.createdAt());
        return false;
    }
    TemplateInstances &instances = TemplateInstances::of(DesktopContext::current()->dispatcher());
    Nodes::BasicWindow *instance = instances.make(*source, window, binding);
    if (!instance)
        return false;
    journalMissing(action, *instance, binding);
    WindowBasic *opened = WindowOpening::open(action, *instance, display, run.createdAt());
    instances.attach(*instance, opened, DesktopContext::current()->openWindows());
    return opened != nullptr;
}

} // namespace Widgets
