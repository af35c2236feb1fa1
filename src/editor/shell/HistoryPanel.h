#pragma once

#include <QUndoView>

namespace Editor {

class Workspace;

/// All steps of the project's history; a click goes there and back. GUI thread.
class HistoryPanel : public QUndoView
{
    Q_OBJECT

public:
    HistoryPanel(Workspace &workspace, QWidget *parent);
};

} // namespace Editor
