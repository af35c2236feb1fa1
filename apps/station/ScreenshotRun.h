#pragma once

#include "widgets/windows/WidgetLink.h"

#include <QDir>
#include <QObject>

#include <functional>

class QImage;

namespace Widgets {
class WindowManager;
}
namespace Nodes {
class ConfigNode;
class systemCore;
} // namespace Nodes

namespace Station {

struct PictureTarget;

/// Opens every window of the project, waits until its values are live and saves a picture of it;
/// one line a picture goes to stdout. Windows that stand in frames are taken as they are shown.
class ScreenshotRun : public QObject
{
    Q_OBJECT

public:
    enum ExitCode { AllLive = 0, WindowFailed = 1, ValuesMissing = 3 };

    ScreenshotRun(Widgets::WindowManager &manager, const QString &directory);

    /// After this time a picture is taken as it is. 10 s unless set.
    void setTimeout(int milliseconds) { m_timeout = milliseconds; }

    /// Runs event loops; ends early, as failed, when the application is told to quit.
    [[nodiscard]] ExitCode run();

private:
    void shoot(const PictureTarget &target);
    Widgets::WidgetLink open(const PictureTarget &target);
    void close(const Widgets::WidgetLink &link);
    bool showComposition(const PictureTarget &target, QWidget &widget);
    void shootAlarms();
    void shootInstance(const PictureTarget &target);
    void picture(const PictureTarget &target, const Nodes::ConfigNode &shown, QWidget &widget);
    bool waitFor(const std::function<bool()> &isDone, int milliseconds);
    void pause(int milliseconds);
    void dismissDialog();
    void fail(const PictureTarget &target, const char *reason);

    Widgets::WindowManager &m_manager;
    QDir m_directory;
    int m_timeout = 10000;
    int m_failures = 0;
    int m_timeouts = 0;
    bool m_isInterrupted = false;
};

} // namespace Station
