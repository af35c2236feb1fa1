#include "widgets/actions/kinds/RunningScripts.h"

#include "widgets/actions/running/ActionDispatcher.h"
#include "widgets/actions/running/Refusals.h"

#include "nodes/actions/kinds/actionExecuteScript.h"
#include "nodes/values/OperatorText.h"

#include <utility>

namespace Widgets {

RunningScripts &RunningScripts::of(ActionDispatcher &actions)
{
    auto *made = actions.findChild<RunningScripts *>(QString(), Qt::FindDirectChildrenOnly);
    return made ? *made : *new RunningScripts(actions);
}

RunningScripts::RunningScripts(ActionDispatcher &actions)
    : QObject(&actions),
      m_runner(std::make_unique<Nodes::ScriptRunner>([this](Nodes::ScriptRunner::Task task) {
          QMetaObject::invokeMethod(this, std::move(task), Qt::QueuedConnection);
      }))
{
    actions.track(*this);
}

RunningScripts::~RunningScripts() = default;

void RunningScripts::run(const Nodes::actionExecuteScript &node, const ActionTrigger &trigger)
{
    const ActionJournal journal(node, trigger);
    const unsigned long owner = node.GetId();
    Nodes::ScriptJob job;
    job.owner = owner;
    job.name = node.GetName();
    job.text = node.GetScript();
    job.inputs = node.GetSignals();
    if (trigger.user)
        job.user = *trigger.user;
    job.timeLimit = node.GetTimeLimit();
    job.journal = [journal](const std::string &text) {
        journal.write(Nodes::LevelInformation, text);
    };
    job.done = [this, owner](const Nodes::Result &result) { finish(owner, result); };
    const Nodes::Result started =
        m_runner ? m_runner->Run(std::move(job))
                 : Nodes::Result(Nodes::Result::NotAvailable, "the station stops");
    if (started)
        m_running.insert({owner, Running{journal, trigger}});
    if (started || m_refused.contains(owner))
        return;
    m_refused.insert(owner);
    journal.write(Nodes::LevelWarning, "Сценарий не запущен: " + Nodes::OperatorText(started));
}

void RunningScripts::finish(unsigned long owner, const Nodes::Result &result)
{
    const auto running = m_running.find(owner);
    if (running == m_running.end())
        return;
    const auto [journal, trigger] = running->second;
    m_running.erase(running);
    m_refused.remove(owner);
    journal.write(result ? Nodes::LevelAction : Nodes::LevelWarning,
                  result ? "Сценарий выполнен"
                         : "Сценарий прерван: " + Nodes::OperatorText(result));
    if (result == Nodes::Result::AccessDenied)
        ShowAccessDenied(trigger);
}

void RunningScripts::abandon()
{
    m_runner.reset();
    for (const auto &[owner, running] : std::exchange(m_running, {}))
        running.journal.write(Nodes::LevelWarning, "Сценарий прерван: станция завершается");
}

} // namespace Widgets
