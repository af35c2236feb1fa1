#include "nodes/actions/kinds/actionExecuteScript.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo actionExecuteScript::Kind()
{
    return KindBuilder::For<actionExecuteScript>("actionExecuteScript", "Execute script",
                                                 "Выполнение сценария")
        .Property<&actionExecuteScript::m_script>(Prop::Script, "Script", "Сценарий")
        .Hint("script")
        .Property<&actionExecuteScript::m_signals>(Prop::Signals, "Signals by number",
                                                   "Сигналы по номерам")
        .Refers({NodeType::TypeSignal})
        .Property<&actionExecuteScript::m_timeLimit>(Prop::TimeLimit, "Time limit, ms",
                                                     "Предел времени, мс")
        .Range(10, 60000);
}

} // namespace Nodes
