#include "widgets/windows/DesktopContext.h"

#include "widgets/context/ProcessContext.h"

#include "nodes/system/systemCore.h"

namespace Widgets {

namespace {

DesktopContext *entered = nullptr;

} // namespace

DesktopContext::~DesktopContext()
{
    leave();
}

void DesktopContext::enter()
{
    entered = this;
}

void DesktopContext::leave()
{
    if (entered == this)
        entered = nullptr;
}

DesktopContext *DesktopContext::current()
{
    return entered;
}

Nodes::systemAlarming *DesktopContext::alarming()
{
    const Nodes::systemCore *shown = ProcessContext::model();
    return shown ? shown->GetSystemAlarming() : nullptr;
}

Nodes::systemVisualization *DesktopContext::visualization()
{
    const Nodes::systemCore *shown = ProcessContext::model();
    return shown ? shown->GetSystemVisualization() : nullptr;
}

bool DesktopContext::isStationEnding()
{
    return entered && entered->isEnding();
}

} // namespace Widgets
