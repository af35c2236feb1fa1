#pragma once

#include "widgets/actions/running/ActionJournal.h"
#include "widgets/actions/running/LastingWork.h"
#include "widgets/context/ActionTrigger.h"

#include "nodes/scripts/ScriptRunner.h"

#include <QObject>
#include <QSet>

#include <map>
#include <memory>

namespace Nodes {
class actionExecuteScript;
}

namespace Widgets {

class ActionDispatcher;

/// Scripts started by actions: runs them on the node model's thread for them, hands their calls to
/// this one, journals how they end. GUI thread.
class RunningScripts : public QObject, public LastingWork
{
    Q_OBJECT

public:
    /// The one that lives as long as that dispatcher, made on first use.
    static RunningScripts &of(ActionDispatcher &actions);
    explicit RunningScripts(ActionDispatcher &actions);
    ~RunningScripts() override;

    /// A script that waits or runs already is not started again; the first such refusal of a run is
    /// journalled.
    void run(const Nodes::actionExecuteScript &node, const ActionTrigger &trigger);
    /// No script waits or runs.
    bool isIdle() const override { return m_running.empty(); }
    /// Ends those that wait or run, and journals it.
    void abandon() override;

private:
    void finish(unsigned long owner, const Nodes::Result &result);

    struct Running
    {
        ActionJournal journal;
        ActionTrigger trigger;
    };

    std::map<unsigned long, Running> m_running; // by the node of the script
    QSet<unsigned long> m_refused;              // told of while their script runs
    std::unique_ptr<Nodes::ScriptRunner> m_runner;
};

} // namespace Widgets
