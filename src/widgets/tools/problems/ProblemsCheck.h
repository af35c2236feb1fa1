#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/tools/problems/Problem.h"

#include <QObject>
#include <QTimer>

#include <memory>
#include <vector>

namespace Nodes {
class ProjectCheck;
class systemCore;
} // namespace Nodes

namespace Widgets {

/// Checks a whole project, a slice at a time, so that the station stays usable meanwhile. The
/// project may change or go while it is checked. GUI thread.
class WIDGETS_EXPORT ProblemsCheck : public QObject
{
    Q_OBJECT

public:
    explicit ProblemsCheck(QObject *parent = nullptr);
    ~ProblemsCheck() override;

    /// Begins anew: first come the findings of loading. The core outlives the check; null: none.
    void start(const Nodes::systemCore *core);
    void stop() { m_timer.stop(); }
    bool isRunning() const { return m_timer.isActive(); }

signals:
    void found(const std::vector<Widgets::Problem> &problems);
    /// Nodes and rules that were looked at, and how many there are.
    void progressed(int done, int count);
    void finished();

private:
    void work();

    bool isProjectThere() const;

    std::unique_ptr<Nodes::ProjectCheck> m_check;
    unsigned long m_project = 0; // its token
    std::size_t m_told = 0;      // problems
    QTimer m_timer;
};

} // namespace Widgets
