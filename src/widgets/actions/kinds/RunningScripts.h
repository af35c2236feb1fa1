#pragma once

#include "widgets/actions/running/ActionJournal.h"
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

class WindowManager;

/// Scripts started by actions: runs them on the node model's thread for them, hands their calls to
/// this one, journals how they end. GUI thread.
class RunningScripts : public QObject
{
    Q_OBJECT

public:
    /// The window manager's one, made on first use; ends with it.
    static RunningScripts &of(WindowManager &manager);
    explicit RunningScripts(QObject *parent);
    ~RunningScripts() override;

    /// A script that waits or runs already is not started again; the first such refusal of a run is
    /// journalled.
    void run(const Nodes::actionExecuteScript &node, const ActionTrigger &trigger);
    /// No script waits or runs.
    bool isIdle() const { return m_running.empty(); }
    /// Ends those that wait or run, and journals it.
    void abandon();

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
