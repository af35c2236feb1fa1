#pragma once

#include "editor/recovery/FileLook.h"

#include <QObject>
#include <QTimer>

#include <functional>

namespace Nodes {
class Result;
}

namespace Editor {

class Workspace;

/// Notices that another program has changed or removed the file of the open project: tells so
/// within seconds, asks when the user comes back to the window and before the file is replaced.
/// Nothing is overwritten and nothing read again before the user has decided. A disk that does not
/// answer is told too, and nothing is written to it. GUI thread.
class FileGuard : public QObject
{
    Q_OBJECT

public:
    enum enAnswer { Compare, Reload, KeepMine, Cancel };
    /// Asks the user; `isSaving`: about overwriting the file.
    /// Compare: in a document, after which the user decides again.
    using Asker = std::function<enAnswer(bool isSaving)>;

    FileGuard(Workspace &workspace, QObject *parent);

    /// Another way to ask than a message box.
    void setAsker(Asker asker) { m_asker = std::move(asker); }
    /// How long the disk may take to answer, ms.
    void setPatience(int milliseconds) { m_look.setPatience(milliseconds); }
    bool isLooking() const { return m_look.isRunning(); }
    /// Looks at the file now and asks what to do when it has changed; in the background.
    void look();
    /// The same, but tells only: the user is busy. By itself every few seconds.
    void watch();

private:
    void begin();
    void startLook();
    void onFound(Nodes::FileStamp::enState state, const Nodes::FileStamp &now);
    void onChanged();
    void tellThatItIsGone();
    bool mayAsk() const;
    bool isChanged(const QString &file, Nodes::Result &why);
    void checkSave(Nodes::Result &why);
    enAnswer ask(bool isSaving);
    enAnswer decide(bool isSaving);
    void reload();

    Workspace &m_workspace;
    Asker m_asker;
    Nodes::FileStamp m_known; // as it was opened or saved
    QString m_ours;           // digest of what was written last, or is being written
    Nodes::FileStamp m_seen;  // as the user was asked about it last
    FileLook m_look;
    QTimer m_timer;
    bool m_isAsking = false;
    bool m_isToAsk = false;     // when the look is over
    bool m_isUndecided = false; // the user knows of the change, and was not asked yet
};

} // namespace Editor
