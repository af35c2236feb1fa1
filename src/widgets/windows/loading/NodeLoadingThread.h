#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/serial/LoadProgress.h"
#include "nodes/serial/LoadReport.h"
#include "nodes/values/Result.h"

#include <QString>
#include <QThread>
#include <QTimer>

#include <memory>

namespace Nodes {
class NodesCollection;
}

namespace Widgets {

/// Reads one project file off the GUI thread. Everything but the reading itself belongs to the
/// thread that made the object, signals included; outcome and project are there from loaded or
/// failed on. Destroying it cancels the reading and waits for its end.
class WIDGETS_EXPORT NodeLoadingThread : public QThread
{
    Q_OBJECT

public:
    /// `path` names a project file, or a directory holding "project.xml". start() begins.
    explicit NodeLoadingThread(const QString &path, QObject *parent = nullptr);
    ~NodeLoadingThread() override;

    const QString &file() const { return m_file; }
    /// failed follows soon, with the result Cancelled.
    void cancel() { m_progress.Cancel(); }

    const Nodes::Result &result() const { return m_result; }
    const Nodes::LoadReport &report() const { return m_report; }
    /// Hands the project over; null unless loaded was emitted, and from the second call on.
    std::unique_ptr<Nodes::NodesCollection> takeProject();

signals:
    /// At most every 50 ms. `percent` from 0 to 100; the stage is for the operator.
    void progress(int percent, const QString &stage);
    void loaded();
    void failed();

protected:
    void run() override;

private:
    void reportProgress();
    void reportOutcome();

    QString m_file;
    Nodes::LoadProgress m_progress;
    Nodes::LoadReport m_report;
    Nodes::Result m_result;
    std::unique_ptr<Nodes::NodesCollection> m_project;
    QTimer m_timer;
};

} // namespace Widgets
