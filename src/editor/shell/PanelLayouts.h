#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

class QMainWindow;

namespace Editor {

class ProjectSession;

/// Where the panels of a window stand, kept for each project and between runs of the program. A
/// project that is opened for the first time has the layout that was used last. GUI thread.
class PanelLayouts : public QObject
{
    Q_OBJECT

public:
    /// The window has all its panels; as they stand now is how they stand by default. Both outlive
    /// the layouts.
    PanelLayouts(QMainWindow &window, ProjectSession &session);

    /// Place and size of the window and the layout used last; false when none is kept.
    bool restoreWindow();
    /// Before the window closes.
    void keepWindow();
    /// Back to the default; other projects keep theirs.
    void reset();

private:
    void restoreProject();
    void keepProject();

    QMainWindow &m_window;
    ProjectSession &m_session;
    QByteArray m_default;
};

} // namespace Editor
