#include "widgets/context/ProcessContext.h"

#include "widgets/context/UnheardActions.h"

namespace Widgets {

namespace {

const ProcessContext *installed = nullptr;

} // namespace

ProcessContext::ProcessContext(Nodes::systemCore *core, ActionSink &actions, QObject &gestures)
    : m_core(core), m_actions(actions), m_gestures(gestures)
{
    installed = this;
}

ProcessContext::~ProcessContext()
{
    if (installed == this)
        installed = nullptr;
}

Nodes::systemCore *ProcessContext::model()
{
    return installed ? installed->m_core : nullptr;
}

ActionSink &ProcessContext::actions()
{
    static UnheardActions unheard;
    return installed ? installed->m_actions : unheard;
}

QObject *ProcessContext::gestures()
{
    return installed ? &installed->m_gestures : nullptr;
}

} // namespace Widgets
