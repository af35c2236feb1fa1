#pragma once

#include "widgets/actions/running/ActionJournal.h"
#include "widgets/actions/running/LastingWork.h"
#include "widgets/context/ActionTrigger.h"

#include <QObject>

#include <map>
#include <memory>

namespace Nodes {
class actionReport;
}

namespace Widgets {

class ActionDispatcher;
class ReportFiling;

/// Reports that actions print or save: makes them beside the operator's work, journals what came of
/// it and tells who asked. GUI thread.
class RunningReports : public QObject, public LastingWork
{
    Q_OBJECT

public:
    /// The one that lives as long as that dispatcher, made on first use.
    static RunningReports &of(ActionDispatcher &actions);
    explicit RunningReports(ActionDispatcher &actions);
    ~RunningReports() override;

    /// An action whose report is still being made is not begun again, and who asked is told.
    void run(const Nodes::actionReport &node, const ActionTrigger &trigger);
    bool isIdle() const override { return m_running.empty(); }
    void abandon() override;

private:
    struct Running
    {
        ActionJournal journal;
        ActionTrigger trigger;
        QString title;
        bool isPrinted;
        QString printer;
        std::unique_ptr<ReportFiling> filing;
    };

    void onFinished(unsigned long action, const QStringList &files, const QString &error,
                    const QString &faults);

    std::map<unsigned long, Running> m_running; // by the node of the action
};

} // namespace Widgets
