#pragma once

#include "widgets/actions/running/ActionJournal.h"

#include "nodes/actions/kinds/actionLaunchProcess.h"

#include <QHash>
#include <QObject>

class QProcess;

namespace Widgets {

class ActionDispatcher;
struct ActionTrigger;

/// Programs started by actions, from start to end, both journalled. They are kept apart from
/// windows and action objects; those still running when the station ends are asked to end, given a
/// second, and then killed: none outlives the station unnoticed. GUI thread, never waits while the
/// station runs.
class LaunchedProcesses : public QObject
{
    Q_OBJECT

public:
    /// The one that lives as long as that dispatcher, made on first use.
    static LaunchedProcesses &of(ActionDispatcher &actions);
    explicit LaunchedProcesses(QObject *parent);
    ~LaunchedProcesses() override;

    static constexpr int MaximumRunning = 32;

    /// Starts the program without waiting; whether it could be started is journalled later, and
    /// told to the operator who triggered it. LimitExceeded when too many run.
    [[nodiscard]] Nodes::Result launch(const Nodes::actionLaunchProcess::Command &command,
                                       const ActionJournal &journal, const ActionTrigger &trigger);

private:
    void watch(QProcess *process, const ActionJournal &journal, const ActionTrigger &trigger);
    void forget(QProcess *process);

    QHash<QProcess *, ActionJournal> m_running;
};

} // namespace Widgets
