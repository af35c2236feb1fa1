#pragma once

#include "nodes/project/FileStamp.h"

#include <QObject>

#include <functional>

namespace Nodes {
class Result;
}

namespace Editor {

class Workspace;

/// Notices that another program has changed or removed the file of the open project: when the user
/// comes back to the window, and before the file is replaced. Nothing is overwritten and nothing
/// read again before the user has decided. GUI thread.
class FileGuard : public QObject
{
    Q_OBJECT

public:
    enum enAnswer { Compare, Reload, KeepMine, Cancel };
    /// Asks the user; `isSaving`: about overwriting the file.
    using Asker = std::function<enAnswer(bool isSaving)>;

    FileGuard(Workspace &workspace, QObject *parent);

    /// Another way to ask than a message box.
    void setAsker(Asker asker) { m_asker = std::move(asker); }
    /// Looks at the file now.
    void look();

private:
    void begin();
    void checkSave(Nodes::Result &why);
    enAnswer ask(bool isSaving);
    enAnswer decide(bool isSaving);
    void reload();

    Workspace &m_workspace;
    Asker m_asker;
    Nodes::FileStamp m_known; // as it was opened or saved
    Nodes::FileStamp m_seen;  // as the user was asked about it last
    bool m_isAsking = false;
};

} // namespace Editor
