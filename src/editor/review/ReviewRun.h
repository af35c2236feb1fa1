#pragma once

#include "editor/review/CallUpMeter.h"
#include "editor/review/ReviewFinding.h"

#include <QObject>
#include <QTimer>

#include <memory>

namespace Nodes {
class ConfigNode;
}

namespace Editor {

class ScreenClicks;

/// Reviews screens one after the other, when the application has nothing else to do. Between
/// building a screen for the first time, for the second and looking at it editing goes on. GUI
/// thread.
class ReviewRun : public QObject
{
    Q_OBJECT

public:
    explicit ReviewRun(QObject *parent = nullptr);
    ~ReviewRun() override;

    /// In place of a review that is under way. `root` is asked for the ways to the screens now.
    void start(const Nodes::NodeLinks &screens, const Nodes::ConfigNode &root);
    /// After those that are waiting; one that waits already is reviewed once.
    void add(const Nodes::NodeLinks &screens, const Nodes::ConfigNode &root);
    void stop();
    bool isRunning() const { return m_timer.isActive(); }

    /// All that is found on one screen but for its call-up.
    static ReviewFindings check(const Nodes::ConfigNode &screen, const ScreenClicks &clicks);

signals:
    void found(const Nodes::NodeLink &screen, const Editor::ReviewFindings &findings);
    void progressed(int done, int total);
    /// Also after a stop.
    void finished();

private:
    void reviewNext();

    QTimer m_timer;
    Nodes::NodeLinks m_screens;
    std::size_t m_next = 0;
    QVector<CallUpMeter::Times> m_times; ///< of the next screen, the first reads files and fonts
    std::unique_ptr<ScreenClicks> m_clicks;
};

} // namespace Editor
