#include "nodes/actions/kinds/actionExecuteScript.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo actionExecuteScript::Kind()
{
    return KindBuilder::For<actionExecuteScript>(NodeType::enNodeSubtype(0x1000b),
                                                 "actionExecuteScript", "Execute script",
                                                 "Выполнение сценария")
        .Property<&actionExecuteScript::m_script>(16080, "script", "Script", "Сценарий")
        .Hint("lua")
        .Property<&actionExecuteScript::m_signals>(16082, "signals", "Signals by number",
                                                   "Сигналы по номерам")
        .Refers({NodeType::TypeSignal})
        .Property<&actionExecuteScript::m_timeLimit>(16081, "timeLimit", "Time limit, ms",
                                                     "Предел времени, мс")
        .Range(10, 60000);
}

} // namespace Nodes
