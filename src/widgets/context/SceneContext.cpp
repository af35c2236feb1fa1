#include "widgets/context/SceneContext.h"

#include "widgets/context/PreviewActions.h"
#include "widgets/context/ProcessContext.h"

#include "nodes/system/systemCore.h"

#include <utility>

namespace Widgets {

const SceneContextPtr &SceneContext::process()
{
    static const SceneContextPtr shared = std::make_shared<const SceneContext>();
    return shared;
}

Nodes::enWorkMode SceneContext::mode() const
{
    if (m_isPreview)
        return Nodes::WorkModeRuntime;
    if (m_mode)
        return *m_mode;
    const Nodes::systemCore *core = model();
    return core ? core->GetWorkMode() : Nodes::WorkModeNone;
}

ActionSink &SceneContext::actions() const
{
    static PreviewActions lookedAt;
    if (m_actions)
        return *m_actions;
    return m_isPreview ? lookedAt : ProcessContext::actions();
}

void SceneContext::setActions(std::shared_ptr<ActionSink> actions)
{
    m_actions = std::move(actions);
}

Nodes::systemCore *SceneContext::model() const
{
    return m_model ? m_model : ProcessContext::model();
}

QObject *SceneContext::gestures() const
{
    return ProcessContext::gestures();
}

} // namespace Widgets
