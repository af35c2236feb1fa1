#pragma once

#include "nodes/project/ProjectHold.h"

#include <QObject>
#include <QTimer>

namespace Editor {

class Workspace;

/// Holds the project that is open, so that nobody else edits it meanwhile; a project that somebody
/// holds opens for reading only, with his name. GUI thread.
class HoldKeeper : public QObject
{
    Q_OBJECT

public:
    HoldKeeper(Workspace &workspace, QObject *parent);
    /// Looks now whether anything has changed; by itself every 10 s.
    void look();

private:
    void take();
    void takeAgain();
    void checkSave(Nodes::Result &why);

    Workspace &m_workspace;
    Nodes::ProjectHold m_hold;
    QTimer m_timer;
    bool m_isTold = false;
    bool m_isWaiting = false; // for whoever holds it to leave
};

} // namespace Editor
