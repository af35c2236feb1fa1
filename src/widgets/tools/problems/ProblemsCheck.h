#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/tools/problems/Problem.h"

#include <QObject>
#include <QTimer>

#include <vector>

namespace Nodes {
class systemCore;
}

namespace Widgets {

/// Checks a whole project, a slice at a time, so that the station stays usable meanwhile. The
/// project may change or go while it is checked. GUI thread.
class WIDGETS_EXPORT ProblemsCheck : public QObject
{
    Q_OBJECT

public:
    explicit ProblemsCheck(QObject *parent = nullptr);

    /// Begins anew: first come the findings of loading. The core outlives the check; null: none.
    void start(const Nodes::systemCore *core);
    void stop() { m_timer.stop(); }
    bool isRunning() const { return m_timer.isActive(); }

signals:
    void found(const std::vector<Widgets::Problem> &problems);
    /// Nodes that were looked at, and how many there are.
    void progressed(int done, int count);
    void finished();

private:
    void work();

    Nodes::NodeLinks m_nodes;
    std::size_t m_next = 0;
    QTimer m_timer;
};

} // namespace Widgets
