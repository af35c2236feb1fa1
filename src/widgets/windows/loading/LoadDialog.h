#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/windows/frames/FrameDialog.h"

#include "nodes/serial/LoadReport.h"

#include <memory>

class QLabel;
class QProgressBar;
class QPushButton;

namespace Nodes {
class NodesCollection;
class Result;
} // namespace Nodes

namespace Widgets {

class LoadReportTable;
class NodeLoadingThread;

/// Shows how a project is loaded, lets the operator cancel, and lists what was found wrong. Shown
/// only when the load takes a moment or has findings to show.
class WIDGETS_EXPORT LoadDialog : public FrameDialog
{
    Q_OBJECT

public:
    static constexpr const char *Key = "loading";

    /// `path` as for NodeLoadingThread.
    explicit LoadDialog(const QString &path, QWidget *parent = nullptr);
    ~LoadDialog() override;

    /// Nobody is there to answer: findings neither show nor wait, a failure ends the dialog.
    void setUnattended(bool isUnattended) { m_isUnattended = isUnattended; }
    /// False keeps the dialog hidden while it loads; findings still show.
    void setShowsProgress(bool showsProgress) { m_showsProgress = showsProgress; }

    /// Loads, and returns once the operator is done with the dialog: true when there is a project
    /// to go on with. Runs an event loop.
    [[nodiscard]] bool load();

    std::unique_ptr<Nodes::NodesCollection> takeProject();
    /// File that was read; findings and outcome of the load, complete after load().
    QString file() const;
    const Nodes::LoadReport &report() const;
    const Nodes::Result &loadResult() const;

    /// Cancels a running load; afterwards closes without a project.
    void reject() override;

private:
    void build(const QString &projectName);
    void onLoaded();
    void onFailed();
    void showFindings(const QString &summary, bool mayContinue);

    NodeLoadingThread *m_thread;
    QLabel *m_projectLabel = nullptr;
    QLabel *m_stageLabel = nullptr;
    QProgressBar *m_progressBar = nullptr;
    LoadReportTable *m_table = nullptr;
    QPushButton *m_continueButton = nullptr;
    QPushButton *m_closeButton = nullptr;
    bool m_isUnattended = false;
    bool m_showsProgress = true;
    bool m_isCancelled = false;
};

} // namespace Widgets
